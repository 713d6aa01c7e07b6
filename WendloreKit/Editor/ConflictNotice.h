#pragma once

#include "Look/NoticeBar.h"

namespace wendlore {

class EditorView;

/// Tells above the note that somebody else had changed it, until the user has pressed OK and goes on writing.
class ConflictNotice final : public NoticeBar
{
    Q_OBJECT

public:
    explicit ConflictNotice(EditorView& editor, QWidget* parent = nullptr);

private:
    void showNotice();
    void dismiss();

    EditorView& m_editor;
};

} // namespace wendlore

#include "Editor/ConflictNotice.h"

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace wendlore {

ConflictNotice::ConflictNotice(EditorView& editor, QWidget* parent)
    : NoticeBar(u"exclamationmark.triangle"_s, parent)
    , m_editor(editor)
{
    connect(addButton(u"OK"_s), &QPushButton::clicked, this, &ConflictNotice::dismiss);
    connect(&editor.session(), &EditorSession::conflictNoticeChanged, this, &ConflictNotice::showNotice);
    showNotice();
}

void ConflictNotice::showNotice()
{
    if (const QString& notice = m_editor.session().conflictNotice(); notice.isEmpty())
        hide();
    else
        tell(u"Versionskonflikt"_s, notice);
}

void ConflictNotice::dismiss()
{
    m_editor.setFocus();
    m_editor.session().dismissConflictNotice();
}

} // namespace wendlore

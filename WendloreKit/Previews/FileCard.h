#pragma once

#include "Vault/FileURL.h"

#include <QWidget>

namespace wendlore {

class AppState;
class NoticeView;

/// A file that has no viewer of its own: its symbol, name, kind, size and date, and a button that opens it in
/// its application.
class FileCard final : public QWidget
{
    Q_OBJECT

public:
    explicit FileCard(AppState& state, QWidget* parent = nullptr);
    FileCard(AppState& state, const FileURL& file, QWidget* parent = nullptr)
        : FileCard(state, parent)
    {
        setFile(file);
    }

    void setFile(const FileURL& file);

private:
    FileURL m_file;
    NoticeView* m_notice;
};

} // namespace wendlore

#pragma once

#include "Vault/FileURL.h"

#include <QWidget>

namespace wendlore {

class NoticeView;

/// Stands in the main window for a file that has a window of its own, and takes it back at a click.
class FileOpenElsewhereView final : public QWidget
{
    Q_OBJECT

public:
    explicit FileOpenElsewhereView(QWidget* parent = nullptr);

    void setFile(const FileURL& file);

private:
    FileURL m_file;
    NoticeView* m_notice;
};

} // namespace wendlore

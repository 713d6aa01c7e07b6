#pragma once

#include <QWidget>

namespace wendlore {

class AppState;
class FileURL;

/// A file that has no viewer of its own: its symbol, name, kind, size and date, and a button that opens it in
/// its application.
class FileCard final : public QWidget
{
    Q_OBJECT

public:
    FileCard(AppState& state, const FileURL& file, QWidget* parent = nullptr);
};

} // namespace wendlore

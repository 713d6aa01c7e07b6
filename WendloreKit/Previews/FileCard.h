#pragma once

#include <QWidget>

namespace wendlore {

class AppState;
class FileURL;
class NoticeView;

/// A file that has no viewer of its own: its symbol, name, kind, size and date, and a button that opens it in
/// its application.
class FileCard final : public QWidget
{
    Q_OBJECT

public:
    FileCard(AppState& state, const FileURL& file, QWidget* parent = nullptr);

    /// Adds what the user can do to see more than the card.
    void setRemark(const QString& text);

private:
    NoticeView* m_notice;
    QString m_details;
};

} // namespace wendlore

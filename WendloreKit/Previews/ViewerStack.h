#pragma once

#include <QStackedWidget>

class QLabel;

namespace wendlore {

class NoticeView;

/// What a viewer shows: a progress indicator while its file is loading, then the content, or a short message
/// in its place.
class ViewerStack final : public QStackedWidget
{
    Q_OBJECT

public:
    /// Fills `viewer`, which has no layout yet, and takes the focus for it.
    explicit ViewerStack(QWidget* viewer);

    /// A turning indicator, with `label` below it.
    void showProgress(const QString& label = {});
    /// The warning symbol, `symbolSize` large, above `text`. Gives the view for those who add a button to it.
    NoticeView& showMessage(const QString& text, int symbolSize);
    /// Takes `content` over and shows it, alone.
    void showContent(QWidget* content);

    /// The content that is shown; null while there is progress or a message instead.
    [[nodiscard]] QWidget* content() const { return m_content; }

private:
    QWidget* m_progress;
    QLabel* m_label;
    QWidget* m_content = nullptr;
};

} // namespace wendlore

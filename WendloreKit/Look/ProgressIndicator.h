#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

namespace wendlore {

/// A turning arc while something is being waited for. It stays invisible for the first moments, so that what
/// comes at once does not flicker.
class ProgressIndicator final : public QWidget
{
    Q_OBJECT

public:
    explicit ProgressIndicator(QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QElapsedTimer m_shown;
    QBasicTimer m_frames;
};

} // namespace wendlore

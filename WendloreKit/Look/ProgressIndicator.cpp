#include "Look/ProgressIndicator.h"

#include "Look/Colors.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int extent = 24;
constexpr qreal stroke = 2.5;
constexpr int frame = 33;       // ms
constexpr int patience = 200;   // ms until it begins to show
constexpr int fading = 200;     // ms until it shows fully
constexpr int turn = 1000;      // ms
constexpr int arcLength = -100; // degrees

} // namespace

ProgressIndicator::ProgressIndicator(QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(extent, extent);
    setAccessibleName(u"Laddar"_s);
}

void ProgressIndicator::showEvent(QShowEvent*)
{
    m_shown.start();
    m_frames.start(frame, this);
}

void ProgressIndicator::hideEvent(QHideEvent*)
{
    m_frames.stop();
}

void ProgressIndicator::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_frames.timerId())
        update();
    else
        QWidget::timerEvent(event);
}

void ProgressIndicator::paintEvent(QPaintEvent*)
{
    const qint64 time = m_shown.isValid() ? m_shown.elapsed() : 0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(std::clamp((time - patience) / double(fading), 0.0, 1.0));
    const QRectF ring = QRectF(rect()).adjusted(stroke, stroke, -stroke, -stroke);
    const Colors& colors = Colors::of(palette());
    painter.setPen(QPen(colors.line, stroke));
    painter.drawEllipse(ring);
    painter.setPen(QPen(colors.muted, stroke, Qt::SolidLine, Qt::RoundCap));
    const double angle = 90.0 - 360.0 * double(time % turn) / turn;
    painter.drawArc(ring, int(angle * 16), arcLength * 16);
}

} // namespace wendlore

#include "Look/Separator.h"

#include "Look/Colors.h"
#include "Look/Metrics.h"

#include <QPainter>

namespace wendlore {

namespace {

constexpr int separatorWidth = 15;
constexpr int lineHeight = 18;

} // namespace

Separator::Separator(QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(separatorWidth, metrics::buttonHeight);
}

void Separator::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(width() / 2, (height() - lineHeight) / 2, 1, lineHeight,
                            Colors::of(palette()).line);
}

} // namespace wendlore

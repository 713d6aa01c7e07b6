#include "Look/FlatButton.h"

#include "Look/Colors.h"
#include "Look/Drawing.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"
#include "Look/ToolTip.h"

#include <QEvent>
#include <QMenu>
#include <QPainter>
#include <QStyle>

#include <cmath>

namespace wendlore {

FlatButton::FlatButton(QWidget* parent)
    : QToolButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAutoRaise(true);
    setPopupMode(QToolButton::InstantPopup);
    m_fade.setEasingCurve(QEasingCurve::OutQuad);
    connect(&m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_hover = value.toDouble();
        update();
    });
}

void FlatButton::describe(const QString& name, const QString& help)
{
    setAccessibleName(name);
    setToolTip(plainToolTip(help));
}

bool FlatButton::event(QEvent* event)
{
    if (event->type() == QEvent::Enter && isEnabled())
        fadeTo(1);
    else if (event->type() == QEvent::Leave || event->type() == QEvent::EnabledChange)
        fadeTo(isEnabled() && underMouse() && event->type() != QEvent::Leave ? 1 : 0);
    return QToolButton::event(event);
}

void FlatButton::fadeTo(double hover)
{
    m_fade.stop();
    const int duration = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this);
    if (duration == 0 || !isVisible()) {
        m_hover = hover;
        update();
        return;
    }
    m_fade.setDuration(duration);
    m_fade.setStartValue(m_hover);
    m_fade.setEndValue(hover);
    m_fade.start();
}

bool FlatButton::isShownPressed() const
{
    return isDown() || isChecked() || (menu() && menu()->isVisible());
}

void FlatButton::paintEvent(QPaintEvent*)
{
    const Colors& colors = Colors::of(palette());
    QPainter painter(this);
    QColor ground = isDown() ? colors.pressed : colors.hover;
    ground.setAlphaF(isShownPressed() ? 1.0F : static_cast<float>(m_hover));
    fillRounded(painter, rect(), ground, metrics::radius);
    paintContents(painter);
    if (hasFocus())
        drawFocusRing(painter, rect(), colors.accent);
}

IconButton::IconButton(QString symbol, const QString& name, const QString& help, QWidget* parent)
    : FlatButton(parent)
    , m_symbol(std::move(symbol))
{
    describe(name, help);
    setFixedSize(sizeHint());
}

QSize IconButton::sizeHint() const
{
    return {metrics::buttonWidth, metrics::buttonHeight};
}

void IconButton::paintContents(QPainter& painter)
{
    const Colors& colors = Colors::of(palette());
    const bool isStrong = m_tone == Tone::strong || isShownPressed();
    const QColor color = !isEnabled() ? colors.faint : isStrong ? colors.text : colors.muted;
    drawSymbol(painter, rect(), m_symbol, color, metrics::icon);
}

LabelButton::LabelButton(const QString& text, Tone tone, QWidget* parent)
    : FlatButton(parent)
    , m_tone(tone)
{
    setText(text);
}

void LabelButton::setLeadingSymbol(const QString& symbol, int size)
{
    m_leading = symbol;
    m_leadingSize = size;
    update();
}

int LabelButton::before() const
{
    return metrics::inset + (m_leading.isEmpty() ? 0 : m_leadingSize + metrics::inset);
}

int LabelButton::after() const
{
    return metrics::inset + (m_trailing.isEmpty() ? 0 : metrics::disclosure + metrics::gap);
}

QSize LabelButton::sizeHint() const
{
    // A width that was rounded down would cut the text.
    const double width = std::ceil(QFontMetricsF(font()).horizontalAdvance(text()));
    return {before() + static_cast<int>(width) + after(), metrics::buttonHeight};
}

QSize LabelButton::minimumSizeHint() const
{
    return {before() + after(), metrics::buttonHeight};
}

void LabelButton::paintContents(QPainter& painter)
{
    const Colors& colors = Colors::of(palette());
    const bool isStrong = m_tone == Tone::strong || hover() > 0 || isShownPressed();
    const QColor ink = !isEnabled() ? colors.faint : isStrong ? colors.text : colors.muted;
    QRect area = rect().adjusted(metrics::inset, 0, -metrics::inset, 0);
    if (!m_leading.isEmpty())
        drawSymbol(painter, QRect(area.left(), area.top(), m_leadingSize, area.height()), m_leading,
                   m_tone == Tone::strong ? colors.accent : colors.muted, m_leadingSize);
    if (!m_trailing.isEmpty())
        drawSymbol(
            painter,
            QRect(area.right() - metrics::disclosure + 1, area.top(), metrics::disclosure, area.height()),
            m_trailing, colors.faint, metrics::disclosure);
    area = rect().adjusted(before(), 0, -after(), 0);
    painter.setPen(ink);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text(), Qt::ElideRight, area.width()));
}

} // namespace wendlore

#include "Previews/TitleField.h"

#include "Look/Fonts.h"
#include "Look/Metrics.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFrame>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int narrowest = 56; // room for a few letters
constexpr int textMargin = 2; // which a line edit has by itself

} // namespace

TitleField::TitleField(QWidget* parent)
    : QLineEdit(parent)
{
    setFont(sized(font(), metrics::textSize, QFont::DemiBold));
    setFrame(false);
    setTextMargins(metrics::inset - textMargin, 0, metrics::inset - textMargin, 0);
    setAccessibleName(u"Titel"_s);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(this, &QLineEdit::textChanged, this, &QWidget::updateGeometry);
    connect(this, &QLineEdit::editingFinished, this, &TitleField::finish);
}

void TitleField::setTitle(const QString& title)
{
    m_title = title;
    setText(title);
    setCursorPosition(0);
}

QSize TitleField::sizeHint() const
{
    const int text = fontMetrics().horizontalAdvance(this->text()) + 2 * metrics::inset + 2;
    return {std::max(text, narrowest), metrics::buttonHeight};
}

QSize TitleField::minimumSizeHint() const
{
    return {narrowest, metrics::buttonHeight};
}

void TitleField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    setText(m_title);
    clearFocus();
}

void TitleField::paintEvent(QPaintEvent* event)
{
    const QRect area = rect().adjusted(metrics::inset, 0, -metrics::inset, 0);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, area.width());
    if (hasFocus() || shown == text()) {
        QLineEdit::paintEvent(event);
        return;
    }
    QPainter painter(this);
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &panel, &painter, this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

void TitleField::finish()
{
    const QString written = text();
    setCursorPosition(0);
    if (written != m_title)
        Q_EMIT renamed(written);
    else
        deselect();
}

} // namespace wendlore

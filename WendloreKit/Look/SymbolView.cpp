#include "Look/SymbolView.h"

#include "Look/Colors.h"
#include "Look/Symbols.h"

#include <QPainter>

namespace wendlore {

SymbolView::SymbolView(QString name, int size, QWidget* parent)
    : QWidget(parent)
    , m_name(std::move(name))
{
    setFixedSize(size, size);
}

void SymbolView::setName(const QString& name)
{
    m_name = name;
    update();
}

void SymbolView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawSymbol(painter, rect(), m_name, Colors::of(palette()).muted, width());
}

} // namespace wendlore

#include "Look/Symbols.h"

#include "Look/Colors.h"
#include "Look/Metrics.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

using namespace Qt::StringLiterals;

/// The drawings lie in a static library, from which nobody but us takes them.
static void takeDrawings()
{
    Q_INIT_RESOURCE(symbols);
}

namespace wendlore {

namespace {

/// Stroke of the drawings, which are 24 wide and high: small symbols need stronger lines, large ones finer.
double strokeOf(int size)
{
    if (size < metrics::icon)
        return 2.0;
    return size > 2 * metrics::icon ? 1.0 : 1.5;
}

QPixmap render(const QString& name, const QColor& color, int size, qreal pixelRatio)
{
    static const bool areThere = (takeDrawings(), true);
    Q_ASSERT(areThere);
    QFile file(u":/symbols/%1.svg"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray drawing = file.readAll();
    drawing.replace("currentColor", color.name().toLatin1());
    drawing.replace("stroke-width=\"2\"", "stroke-width=\"" + QByteArray::number(strokeOf(size)) + '"');

    drawing.replace("h.01", "h.2"); // dots: lines so short that the renderer would leave them out

    QPixmap pixmap(QSize(size, size) * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(drawing).render(&painter, QRectF(0, 0, size, size));
    return pixmap;
}

class SymbolIconEngine final : public QIconEngine
{
public:
    explicit SymbolIconEngine(QString name)
        : m_name(std::move(name))
    {}

    void paint(QPainter* painter, const QRect& area, QIcon::Mode, QIcon::State) override
    {
        drawSymbol(*painter, area, m_name, painter->pen().color(), std::min(area.width(), area.height()));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override
    {
        const QColor color = Colors::of(QGuiApplication::palette()).muted;
        return symbolPixmap(m_name, color, std::min(size.width(), size.height()), 1);
    }
    QString iconName() override { return m_name; }
    QIconEngine* clone() const override { return new SymbolIconEngine(m_name); }

private:
    QString m_name;
};

} // namespace

QPixmap symbolPixmap(const QString& name, const QColor& color, int size, qreal pixelRatio)
{
    const QString key = u"symbol %1 %2 %3 %4"_s.arg(name, color.name()).arg(size).arg(pixelRatio);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = render(name, color, size, pixelRatio);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

void drawSymbol(QPainter& painter, const QRectF& area, const QString& name, const QColor& color, int size)
{
    const qreal ratio = painter.device()->devicePixelRatio();
    const auto onPixel = [ratio](qreal position) { return std::round(position * ratio) / ratio; };
    const QPointF place(onPixel(area.center().x() - size / 2.0), onPixel(area.center().y() - size / 2.0));
    painter.drawPixmap(place, symbolPixmap(name, color, size, ratio));
}

QIcon symbolIcon(const QString& name)
{
    return QIcon(new SymbolIconEngine(name));
}

} // namespace wendlore

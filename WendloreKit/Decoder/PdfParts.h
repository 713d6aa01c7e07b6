#pragma once

#include <QDataStream>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QUrl>

namespace wendlore {

/// Whether a PDF file could be opened.
enum class PdfState : quint8 { ready, locked, damaged };

/// A part of a page's text: what it says, and the areas that it covers, in points from the page's top left.
struct PdfText final
{
    QString text;
    QList<QRectF> areas;
};

/// A point of a page, in points from its top left corner.
struct PdfPoint final
{
    int page = 0;
    QPointF point;
};

/// A place where a searched text was found.
struct PdfMatch final
{
    int page = 0;
    QList<QRectF> areas;
};

/// An area of a page that leads somewhere: to an address, or else to a place of the document.
struct PdfLink final
{
    QRectF area;
    QUrl address;
    PdfPoint target;
};

inline QDataStream& operator<<(QDataStream& stream, const PdfText& text)
{
    return stream << text.text << text.areas;
}
inline QDataStream& operator>>(QDataStream& stream, PdfText& text)
{
    return stream >> text.text >> text.areas;
}
inline QDataStream& operator<<(QDataStream& stream, const PdfPoint& point)
{
    return stream << point.page << point.point;
}
inline QDataStream& operator>>(QDataStream& stream, PdfPoint& point)
{
    return stream >> point.page >> point.point;
}
inline QDataStream& operator<<(QDataStream& stream, const PdfMatch& match)
{
    return stream << match.page << match.areas;
}
inline QDataStream& operator>>(QDataStream& stream, PdfMatch& match)
{
    return stream >> match.page >> match.areas;
}
inline QDataStream& operator<<(QDataStream& stream, const PdfLink& link)
{
    return stream << link.area << link.address << link.target;
}
inline QDataStream& operator>>(QDataStream& stream, PdfLink& link)
{
    return stream >> link.area >> link.address >> link.target;
}

} // namespace wendlore

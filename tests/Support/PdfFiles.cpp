#include "Support/PdfFiles.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

using namespace Qt::StringLiterals;

namespace wendlore {

QByteArray pdfOf(const QStringList& pages)
{
    constexpr int resolution = 72;
    constexpr int margin = 72;
    constexpr int lineHeight = 40;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(resolution);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins({});
    QPainter painter(&writer);
    painter.setFont(QFont(u"Inter"_s, 20));
    for (qsizetype page = 0; page < pages.size(); ++page) {
        if (page > 0)
            writer.newPage();
        int y = margin;
        for (const QString& line : pages.at(page).split(u'\n')) {
            painter.drawText(margin, y, line);
            y += lineHeight;
        }
    }
    painter.end();
    return bytes;
}

} // namespace wendlore

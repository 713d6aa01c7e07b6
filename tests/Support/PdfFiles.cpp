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

QByteArray pdfWithLinks(const QByteArray& address)
{
    const QByteArray page = "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]";
    return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
           "2 0 obj<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2>>endobj\n"
           "3 0 obj" +
           page + "/Annots[5 0 R 6 0 R]>>endobj\n4 0 obj" + page +
           ">>endobj\n"
           "5 0 obj<</Type/Annot/Subtype/Link/Rect[100 700 300 750]/A<</S/URI/URI(" +
           address +
           ")>>>>endobj\n"
           "6 0 obj<</Type/Annot/Subtype/Link/Rect[100 500 300 550]/Dest[4 0 R/XYZ 0 400 0]>>endobj\n"
           "trailer<</Root 1 0 R>>\n%%EOF\n";
}

QByteArray pdfOfSizes(const QList<QSize>& pages)
{
    constexpr int firstPage = 3;
    QByteArray kids;
    QByteArray objects;
    for (int page = 0; page < pages.size(); ++page) {
        const QByteArray number = QByteArray::number(firstPage + page);
        kids += number + " 0 R ";
        objects += number + " 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 " +
                   QByteArray::number(pages.at(page).width()) + ' ' +
                   QByteArray::number(pages.at(page).height()) + "]>>endobj\n";
    }
    return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n2 0 obj<</Type/Pages/Kids[" + kids +
           "]/Count " + QByteArray::number(pages.size()) + ">>endobj\n" + objects +
           "trailer<</Root 1 0 R>>\n%%EOF\n";
}

} // namespace wendlore

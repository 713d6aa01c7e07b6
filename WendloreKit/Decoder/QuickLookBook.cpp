#include "Decoder/QuickLookBook.h"

#include "Decoder/QuickLookArchive.h"
#include "Decoder/QuickLookMarkup.h"

#include <QDir>
#include <QRegularExpression>
#include <QUrl>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr qint64 maximumSize = 64'000'000;
/// Together, in bytes: what the engine can lay out at once.
constexpr qsizetype shownText = 4'000'000;

/// What the package file of a book says about it.
struct Book final
{
    QString title;
    QString author;
    QString cover;
    QStringList chapters;
};

QString resolved(const QString& base, const QString& address)
{
    const QString path = QUrl::fromPercentEncoding(address.section(u'#', 0, 0).toUtf8());
    return QDir::cleanPath(base.section(u'/', 0, -2) + u'/' + path).remove(QRegularExpression(u"^/"_s));
}

QString packagePath(const QByteArray& container)
{
    QXmlStreamReader reader(container);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == u"rootfile")
            return reader.attributes().value(u"full-path"_s).toString();
    }
    return {};
}

class PackageReader final
{
public:
    explicit PackageReader(QString path)
        : m_path(std::move(path))
    {}

    Book read(const QByteArray& package)
    {
        QXmlStreamReader reader(package);
        while (!reader.atEnd()) {
            if (reader.readNext() == QXmlStreamReader::StartElement)
                element(reader);
        }
        if (m_book.cover.isEmpty())
            m_book.cover = m_items.value(m_coverId);
        return m_book;
    }

private:
    void element(QXmlStreamReader& reader)
    {
        const QXmlStreamAttributes attributes = reader.attributes();
        const QStringView name = reader.name();
        if (name == u"title" && m_book.title.isEmpty()) {
            m_book.title = reader.readElementText(QXmlStreamReader::SkipChildElements).simplified();
        } else if (name == u"creator" && m_book.author.isEmpty()) {
            m_book.author = reader.readElementText(QXmlStreamReader::SkipChildElements).simplified();
        } else if (name == u"meta" && attributes.value(u"name"_s) == u"cover") {
            m_coverId = attributes.value(u"content"_s).toString();
        } else if (name == u"item") {
            const QString path = resolved(m_path, attributes.value(u"href"_s).toString());
            m_items.insert(attributes.value(u"id"_s).toString(), path);
            if (attributes.value(u"properties"_s).contains(u"cover-image"_s))
                m_book.cover = path;
        } else if (name == u"itemref") {
            m_book.chapters.append(m_items.value(attributes.value(u"idref"_s).toString()));
        }
    }

    QString m_path;
    Book m_book;
    QHash<QString, QString> m_items;
    QString m_coverId;
};

QByteArray imageType(const QString& path)
{
    static const QHash<QString, QByteArray> types{{u"png"_s, "image/png"},   {u"jpg"_s, "image/jpeg"},
                                                  {u"jpeg"_s, "image/jpeg"}, {u"gif"_s, "image/gif"},
                                                  {u"webp"_s, "image/webp"}, {u"svg"_s, "image/svg+xml"}};
    return types.value(path.section(u'.', -1).toLower());
}

/// Puts the page of one book together.
class Binder final
{
public:
    Binder(const Book& book, const QHash<QString, QByteArray>& files)
        : m_book(book)
        , m_files(files)
    {}

    QuickLookPage bind(const QuickLookLimits& limits)
    {
        QByteArray contents;
        QByteArray text;
        int number = 0;
        for (const QString& path : m_book.chapters) {
            if (text.size() > shownText || limits.areReached())
                break;
            const auto image = [this, &path](const QString& source) { return imageAddress(path, source); };
            const SafeMarkup chapter = safeMarkup(m_files.value(path), image, limits);
            if (chapter.body.trimmed().isEmpty())
                continue;
            const QByteArray anchor = "k" + QByteArray::number(++number);
            text += "<section id=\"" + anchor + "\">" + chapter.body + "</section>";
            if (!chapter.title.isEmpty())
                contents += "<li><a href=\"#" + anchor + "\">" + escaped(chapter.title) + "</a></li>";
        }
        m_page.body = front() + (contents.isEmpty() ? QByteArray() : "<nav><ol>" + contents + "</ol></nav>") +
                      text + "</article>";
        return std::move(m_page);
    }

private:
    QByteArray front()
    {
        QByteArray markup = "<article>";
        const QString cover = imageAddress(m_book.cover, m_book.cover.section(u'/', -1));
        if (!cover.isEmpty())
            markup += "<img class=\"cover\" alt=\"Omslag\" src=\"" + escaped(cover) + "\">";
        markup += "<h1>" + escaped(m_book.title) + "</h1>";
        return m_book.author.isEmpty() ? markup
                                       : markup + "<p class=\"muted\">" + escaped(m_book.author) + "</p>";
    }

    QString imageAddress(const QString& document, const QString& source)
    {
        const QString path = resolved(document, source);
        const QByteArray type = imageType(path);
        if (type.isEmpty() || !m_files.contains(path))
            return {};
        m_page.resources.insert(path, {m_files.value(path), type});
        return u"/r/"_s + QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
    }

    const Book& m_book;
    const QHash<QString, QByteArray>& m_files;
    QuickLookPage m_page;
};

} // namespace

std::optional<QuickLookPage> bookPage(const QuickLookFile& file, const QuickLookLimits& limits)
{
    const auto files = readArchive(
        file, [](const QString&) { return true; }, maximumSize, limits);
    const QString path = packagePath(files.value(u"META-INF/container.xml"_s));
    if (path.isEmpty() || !files.contains(path))
        return std::nullopt;
    const Book book = PackageReader(path).read(files.value(path));
    return Binder(book, files).bind(limits);
}

} // namespace wendlore

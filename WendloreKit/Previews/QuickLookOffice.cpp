#include "Previews/QuickLookOffice.h"

#include "Decoder/QuickLookTable.h"
#include "Previews/FileStatus.h"
#include "Previews/QuickLookOfficeProcess.h"

#include "Vault/ReadFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <mutex>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

using namespace std::chrono_literals;

constexpr auto conversionTime = 60s;
constexpr auto turnInterval = 100ms;
constexpr qint64 largestDocument = 200'000'000;

const QSet<QString> documents{u"docx"_s, u"doc"_s, u"rtf"_s,  u"odt"_s,   u"pptx"_s, u"ppt"_s,
                              u"odp"_s,  u"odg"_s, u"rtfd"_s, u"pages"_s, u"key"_s};
const QSet<QString> sheets{u"xlsx"_s, u"xls"_s, u"ods"_s, u"numbers"_s};

bool isSpreadsheet(const FileURL& file)
{
    return sheets.contains(file.pathExtension().toLower());
}

FileURL placeOf(const QuickLookCache& cache, const FileURL& file, bool isSheet)
{
    return cache.placeOf(file, isSheet ? u"html"_s : u"pdf"_s);
}

/// The file that the office program reads: of a package that is a directory, the text in it.
FileURL sourceOf(const FileURL& file)
{
    const FileURL text = file.appending(u"TXT.rtf"_s);
    return isOrdinaryFile(statusOf(text)) ? text : file;
}

/// Copies the file to `path`; false when it cannot be read, or is too large.
bool copyDocument(const FileURL& source, const QString& path)
{
    constexpr qint64 atATime = 1'000'000;
    const Descriptor opened = openRegularFile(source);
    QFile from;
    QFile to(path);
    if (!opened.isOpen() || !from.open(opened.get(), QIODevice::ReadOnly) || from.size() > largestDocument ||
        !to.open(QIODevice::WriteOnly))
        return false;
    while (!from.atEnd()) {
        const QByteArray part = from.read(atATime);
        if (part.isEmpty() || to.write(part) != part.size())
            return false;
    }
    return true;
}

/// When a file was written, as exactly as the system knows; of two in the same moment the first has mostly
/// the lower number.
std::array<qint64, 3> writtenAt(const QFileInfo& file)
{
    const auto status = statusOf(FileURL::file(file.filePath()));
    return status ? std::array{qint64(status->st_mtim.tv_sec), qint64(status->st_mtim.tv_nsec),
                               qint64(status->st_ino)}
                  : std::array<qint64, 3>();
}

/// The tables that the office program wrote, one file for each sheet, in their order.
QByteArray sheetsMarkup(const QDir& folder)
{
    QByteArray markup;
    QFileInfoList files = folder.entryInfoList({u"*.csv"_s}, QDir::Files);
    std::ranges::sort(files, {}, writtenAt);
    for (const QFileInfo& info : std::as_const(files)) {
        const auto beginning = readTextBeginning(FileURL::file(info.filePath()));
        if (!beginning || beginning->text.trimmed().isEmpty())
            continue;
        const QString title = info.completeBaseName().section(u'-', 1);
        markup += "<h2>" + escaped(title) + "</h2><div class=\"sheet\">" + tablePage(*beginning, u',').body +
                  "</div>";
    }
    return markup;
}

/// What the conversion gives, as it is kept: the pages, or the markup of the tables. Empty when it fails.
QByteArray converted(const FileURL& file, bool isSheet, const QuickLookLimits& limits)
{
    const FileURL source = sourceOf(file);
    const QTemporaryDir folder;
    const QString copy = folder.filePath(u"dokument."_s + source.pathExtension());
    if (!folder.isValid() || !copyDocument(source, copy))
        return {};
    const QString format =
        isSheet ? u"csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false,false,false,-1"_s
                : u"pdf"_s;
    if (!runOfficeProgram(officeProgram(), folder.path(), {copy}, format, limits))
        return {};
    if (isSheet)
        return sheetsMarkup(QDir(folder.path()));
    return readFile(FileURL::file(folder.filePath(u"dokument.pdf"_s))).value_or(QByteArray());
}

QuickLookContent shown(const FileURL& place, bool isSheet)
{
    if (!isSheet)
        return QuickLookPdf{place};
    QuickLookPage page;
    page.body = readFile(place).value_or(QByteArray());
    return page;
}

} // namespace

bool isOfficeDocument(const FileURL& file)
{
    const QString extension = file.pathExtension().toLower();
    return documents.contains(extension) || isSpreadsheet(file);
}

QString officeProgram()
{
    const QString program = QStandardPaths::findExecutable(u"soffice"_s);
    return program.isEmpty() ? QStandardPaths::findExecutable(u"libreoffice"_s) : program;
}

std::optional<QuickLookContent> keptDocument(const FileURL& file, const QuickLookCache& cache)
{
    const bool isSheet = isSpreadsheet(file);
    const FileURL place = placeOf(cache, file, isSheet);
    return cache.has(place) ? std::optional(shown(place, isSheet)) : std::nullopt;
}

QuickLookContent convertDocument(const FileURL& file, const QuickLookLimits& limits,
                                 const QuickLookCache& cache)
{
    static std::timed_mutex turn;
    if (auto kept = keptDocument(file, cache))
        return std::move(*kept);
    if (officeProgram().isEmpty())
        return QuickLookCard{u"Installera LibreOffice för att se dokumentet här."_s};
    std::unique_lock lock(turn, std::defer_lock);
    while (!lock.try_lock_for(turnInterval)) {
        if (limits.isStopped())
            return QuickLookCard();
    }
    const bool isSheet = isSpreadsheet(file);
    const FileURL place = placeOf(cache, file, isSheet);
    const QByteArray bytes = converted(file, isSheet, limits.withTime(conversionTime));
    if (bytes.isEmpty() || !cache.keep(place, bytes))
        return QuickLookCard{u"Dokumentet kan inte visas här."_s};
    return shown(place, isSheet);
}

} // namespace wendlore

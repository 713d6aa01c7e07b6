#include "Previews/QuickLookOffice.h"

#include "Previews/QuickLookOfficeProcess.h"

#include "Fakes/Bucket.h"
#include "Support/DamagedFiles.h"
#include "Support/OfficeDocuments.h"
#include "Support/Programs.h"
#include "Support/SampleFiles.h"

#include <QDateTime>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

constexpr auto limit = 60s;
/// For what ends a program that takes too long, on a machine that has other things to do.
constexpr auto patience = 30s;
/// How many documents one start of LibreOffice reads.
constexpr int together = 100;

bool isLong()
{
    return qEnvironmentVariableIsSet("LONG");
}

/// What is in a document that is a package.
SampleFiles unpacked(const QByteArray& package)
{
    const Bucket bucket;
    bucket.write(u"paket"_s, package);
    runProgram(u"unzip"_s, {u"-q"_s, bucket.file(u"paket"_s).path(), u"-d"_s, bucket.folder(u"ur"_s).path()});
    SampleFiles files;
    const QDir folder(bucket.folder(u"ur"_s).path());
    QDirIterator all(folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString name = folder.relativeFilePath(all.next());
        files.append({name, bucket.read(u"ur/"_s + name)});
    }
    std::ranges::sort(files);
    return files;
}

/// Values of attributes that no program would write there, in XML that is well formed still.
QByteArray withStrangeValues(QByteArray xml, QRandomGenerator& random)
{
    static const QRegularExpression attribute(u"=\"([^\"]*)\""_s);
    static const QByteArrayList strange{
        "", "-1", "0", "65536", "4294967296", "99999999999999999999", "1e308", "NaN", "../../x", "#"};
    for (int change = random.bounded(1, 10); change > 0; --change) {
        const auto found = attribute.match(QString::fromLatin1(xml), random.bounded(int(xml.size())));
        const auto other = attribute.match(QString::fromLatin1(xml), random.bounded(int(xml.size())));
        if (!found.hasMatch())
            continue;
        const bool isOther = other.hasMatch() && random.bounded(2) == 0;
        xml.replace(found.capturedStart(1), found.capturedLength(1),
                    isOther ? other.captured(1).toLatin1() : strange.at(random.bounded(int(strange.size()))));
    }
    return xml;
}

/// The document damaged: as a file, or where it is a package also within a part of it, so that the damage
/// gets past those who unpack it.
QByteArray damagedDocument(const QByteArray& whole, const SampleFiles& parts, QRandomGenerator& random)
{
    if (parts.isEmpty() || random.bounded(3) == 0)
        return damagedCopy(whole, random);
    SampleFiles damaged = parts;
    auto& [name, bytes] = damaged[random.bounded(int(damaged.size()))];
    bytes = name.endsWith(u".xml"_s) && random.bounded(3) > 0 ? withStrangeValues(bytes, random)
                                                              : damagedCopy(bytes, random);
    return packed(damaged, u"zip"_s);
}

/// Every file below `folder` but in `left`, with its size and its time.
QStringList listing(const QString& folder, const QString& left)
{
    QStringList files;
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        all.next();
        const QFileInfo info = all.fileInfo();
        if (!info.filePath().startsWith(left))
            files.append(u"%1 %2 %3"_s.arg(info.filePath())
                             .arg(info.size())
                             .arg(info.lastModified().toMSecsSinceEpoch()));
    }
    return files;
}

/// Documents that LibreOffice reads as the program has it read them.
class Worker final
{
public:
    Worker(const Bucket& bucket, const QString& format)
        : m_folder(bucket.folder(u"arbete"_s).path())
        , m_format(QStringList{u"xlsx"_s, u"ods"_s, u"xls"_s}.contains(format) ? u"csv"_s : u"pdf"_s)
    {}

    /// Reads all; where LibreOffice dies or is ended over one, that is counted, and it goes on after it.
    void read(QStringList documents)
    {
        while (!documents.isEmpty() && !readTogether(documents)) {
            const auto isDone = [this](const QString& document) { return QFile::exists(resultOf(document)); };
            const auto last = std::find_if(documents.crbegin(), documents.crend(), isDone);
            documents.erase(documents.cbegin(), last.base());
            bool isAlive = true;
            while (isAlive && !documents.isEmpty())
                isAlive = readTogether({documents.takeFirst()});
            m_deaths += isAlive ? 0 : 1;
        }
    }
    [[nodiscard]] QString resultOf(const QString& document) const
    {
        return m_folder + u'/' + QFileInfo(document).completeBaseName() + u'.' + m_format;
    }
    [[nodiscard]] int deaths() const { return m_deaths; }
    [[nodiscard]] std::chrono::milliseconds longest() const { return m_longest; }

private:
    bool readTogether(const QStringList& documents)
    {
        QElapsedTimer time;
        time.start();
        const bool isRead =
            runOfficeProgram(officeProgram(), m_folder, documents, m_format, QuickLookLimits(limit));
        m_longest = std::max(m_longest, std::chrono::milliseconds(time.elapsed()));
        return isRead;
    }

    QString m_folder;
    QString m_format;
    int m_deaths = 0;
    std::chrono::milliseconds m_longest{0};
};

} // namespace

/// Documents of every kind that LibreOffice reads, damaged again and again. With LONG set 2,000 of each.
class QuickLookOfficeDamageTests final : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

    /// Has the program itself convert damaged documents; says whether that took no longer than it may.
    static bool convertsInTime(const QString& format, const QByteArray& whole, int count)
    {
        const Bucket bucket;
        const QuickLookCache cache(bucket.folder(u"cache"_s));
        QRandomGenerator random(12);
        QElapsedTimer time;
        for (int left = count; left > 0; --left) {
            bucket.write(u"dokument."_s + format, damagedCopy(whole, random));
            time.start();
            static_cast<void>(
                convertDocument(bucket.file(u"dokument."_s + format), QuickLookLimits(), cache));
            if (std::chrono::milliseconds(time.elapsed()) > limit + patience)
                return false;
        }
        return true;
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("HOME", m_home.path().toLocal8Bit());
        if (officeProgram().isEmpty())
            QSKIP("there is no office program here");
    }

    void damagedDocumentsDoNoHarm_data()
    {
        QTest::addColumn<QString>("format");
        for (const QString& format : isLong() ? officeFormats() : QStringList{u"docx"_s})
            QTest::newRow(qPrintable(format)) << format;
    }

    void damagedDocumentsDoNoHarm()
    {
        QFETCH(const QString, format);
        const QByteArray whole = officeDocument(format);
        const bool isPackage = whole.startsWith("PK");
        const SampleFiles parts = isPackage ? unpacked(whole) : SampleFiles();
        const Bucket bucket{{"anteckningar/hemlig.md", "hemlig"}};
        const QString work = bucket.folder(u"arbete"_s).path();
        Worker worker(bucket, format);
        QRandomGenerator random(11);
        const QStringList before = listing(bucket.root().path(), work) + listing(QDir::homePath(), {});
        int shown = 0;

        for (int left = isLong() ? 2000 : 5; left > 0; left -= together) {
            QStringList documents;
            for (int number = 0; number < std::min(left, together); ++number) {
                const QString name = u"arbete/%1.%2"_s.arg(number).arg(format);
                bucket.write(name, number == 0 ? whole : damagedDocument(whole, parts, random));
                documents.append(bucket.file(name).path());
            }
            worker.read(documents);
            shown += int(std::ranges::count_if(documents, [&](const QString& document) {
                return QFile::exists(worker.resultOf(document));
            }));
            QVERIFY2(QFile::exists(worker.resultOf(documents.first())), "what is whole has a preview");
            QVERIFY(QDir(work).removeRecursively());
        }

        QVERIFY(convertsInTime(format, whole, isLong() ? 20 : 1));
        qInfo("%s: %d became pages; LibreOffice died over %d, its longest turn took %lld ms",
              qPrintable(format), shown, worker.deaths(), static_cast<long long>(worker.longest().count()));
        QVERIFY(worker.longest() < limit + patience);
        QCOMPARE(listing(bucket.root().path(), work) + listing(QDir::homePath(), {}), before);
    }
};

QTEST_GUILESS_MAIN(QuickLookOfficeDamageTests)
#include "QuickLookOfficeDamageTests.moc"

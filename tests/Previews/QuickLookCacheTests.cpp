#include "Previews/QuickLookCache.h"

#include "Fakes/Bucket.h"

#include <QDateTime>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

void setAge(const FileURL& file, int seconds)
{
    QFile opened(file.path());
    QVERIFY(opened.open(QIODevice::ReadWrite));
    QVERIFY(opened.setFileTime(QDateTime::currentDateTime().addSecs(-seconds),
                               QFileDevice::FileModificationTime));
}

} // namespace

class QuickLookCacheTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPreviewIsKeptForTheFileAsItIs()
    {
        const Bucket bucket{{"a.docx", "ett"}};
        const QuickLookCache cache(bucket.folder(u"cache"_s));
        const FileURL file = bucket.file(u"a.docx"_s);
        const FileURL place = cache.placeOf(file, u"pdf"_s);
        QVERIFY(!cache.has(place));

        QVERIFY(cache.keep(place, "pdf"));

        QVERIFY(cache.has(cache.placeOf(file, u"pdf"_s)));
        bucket.write(u"a.docx"_s, "ett till");
        QVERIFY(!cache.has(cache.placeOf(file, u"pdf"_s)));
    }

    void whatWasNotUsedForLongestGoes()
    {
        const Bucket bucket{{"a", "1"}, {"b", "1"}, {"c", "1"}};
        const QuickLookCache cache(bucket.folder(u"cache"_s), 8);
        const FileURL first = cache.placeOf(bucket.file(u"a"_s), u"pdf"_s);
        const FileURL second = cache.placeOf(bucket.file(u"b"_s), u"pdf"_s);
        const FileURL third = cache.placeOf(bucket.file(u"c"_s), u"pdf"_s);
        QVERIFY(cache.keep(first, "1234") && cache.keep(second, "1234"));
        setAge(first, 60);
        setAge(second, 30);
        QVERIFY(cache.has(first)); // used now

        QVERIFY(cache.keep(third, "1234"));

        QVERIFY(cache.has(first) && cache.has(third));
        QVERIFY(!cache.has(second));
    }

    void whatCannotBeKeptIsNot()
    {
        const Bucket bucket{{"a", "1"}, {"fil", "1"}};
        const QuickLookCache cache(bucket.folder(u"fil"_s), 8);

        QVERIFY(!cache.keep(cache.placeOf(bucket.file(u"a"_s), u"pdf"_s), "1"));
        QVERIFY(!cache.keep(cache.placeOf(bucket.file(u"saknas"_s), u"pdf"_s), "1"));
        QVERIFY(!QuickLookCache(bucket.root(), 2).keep(bucket.file(u"stor"_s), "123"));
    }
};

QTEST_GUILESS_MAIN(QuickLookCacheTests)
#include "QuickLookCacheTests.moc"

#include "Editor/PageRequests.h"

#include "Fakes/EditingFixture.h"

#include <QJsonObject>
#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// One red point.
const QString picture =
    u"iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg=="_s;

constexpr int patience = 30'000;

QJsonObject message(const QJsonValue& id, const QJsonValue& name, const QJsonValue& data)
{
    return {{u"id"_s, id}, {u"name"_s, name}, {u"data"_s, data}};
}

struct Fixture final
{
    EditingFixture editing{{"A.md", "a"}, {"Mapp/Å.md", "b"}, {"C.txt", "c"}};
    PageRequests requests{*editing.state, editing.state->editorController()};

    [[nodiscard]] QString said() const
    {
        return editing.page->scripts.isEmpty() ? QString() : editing.page->scripts.last();
    }
};

} // namespace

class PageRequestsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePageIsToldTheNamesOfAllNotes();
    void withoutABucketThereAreNoNames();
    void aPictureIsPutIntoTheBucketAndItsPathTold();
    void twoPicturesOfOneNameAreNumbered();
    void whatIsNoPictureIsRefused_data();
    void whatIsNoPictureIsRefused();
    void messagesOfOtherShapesDoNothing_data();
    void messagesOfOtherShapesDoNothing();
    void namesLeadNowhere_data();
    void namesLeadNowhere();
};

void PageRequestsTests::thePageIsToldTheNamesOfAllNotes()
{
    Fixture f;

    f.editing.page->post(u"noteNames"_s, QJsonObject());

    QTRY_COMPARE_WITH_TIMEOUT(f.said(), uR"(window.VaultEditor.setNoteNames(["A","Å"]))"_s, patience);
}

void PageRequestsTests::withoutABucketThereAreNoNames()
{
    FakeServices desktop;
    AppState state(desktop.services());
    const PageRequests requests(state, state.editorController());

    desktop.page->post(u"noteNames"_s, QJsonObject());
    desktop.page->post(u"importImage"_s, message(7, u"x.png"_s, picture));

    QTRY_COMPARE_WITH_TIMEOUT(desktop.page->scripts,
                              QStringList{u"window.VaultEditor.imageImported(7, null)"_s}, patience);
}

void PageRequestsTests::aPictureIsPutIntoTheBucketAndItsPathTold()
{
    Fixture f;

    f.editing.page->post(u"importImage"_s, message(3, u"Min bild.png"_s, picture));

    QTRY_COMPARE_WITH_TIMEOUT(f.said(), uR"(window.VaultEditor.imageImported(3, "assets\/Min%20bild.png"))"_s,
                              patience);
    QCOMPARE(f.editing.bucket.read(u"assets/Min bild.png"_s), QByteArray::fromBase64(picture.toLatin1()));
}

void PageRequestsTests::twoPicturesOfOneNameAreNumbered()
{
    Fixture f;

    f.editing.page->post(u"importImage"_s, message(1, u"a.png"_s, picture));
    f.editing.page->post(u"importImage"_s, message(2, u"a.png"_s, picture));

    QTRY_COMPARE_WITH_TIMEOUT(f.editing.page->scripts.size(), 2, patience);
    QCOMPARE(QDir(f.editing.bucket.file(u"assets"_s).path()).entryList(QDir::Files).size(), 2);
}

void PageRequestsTests::whatIsNoPictureIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("data");

    QTest::newRow("text") << u"a.txt"_s << QString::fromLatin1(QByteArray("hej").toBase64());
    QTest::newRow("program") << u"a"_s << QString::fromLatin1(QByteArray("#!/bin/sh\n").toBase64());
    QTest::newRow("no base64") << u"a.png"_s << u"%%%"_s;
    QTest::newRow("no name") << u"///"_s << picture;
    QTest::newRow("nothing") << u"a.png"_s << QString();
}

void PageRequestsTests::whatIsNoPictureIsRefused()
{
    QFETCH(const QString, name);
    QFETCH(const QString, data);
    Fixture f;

    f.editing.page->post(u"importImage"_s, message(5, name, data));

    QTRY_COMPARE_WITH_TIMEOUT(f.said(), u"window.VaultEditor.imageImported(5, null)"_s, patience);
    QVERIFY(!QFileInfo::exists(f.editing.bucket.file(u"assets"_s).path()));
}

void PageRequestsTests::messagesOfOtherShapesDoNothing_data()
{
    QTest::addColumn<QJsonValue>("body");

    QTest::newRow("nothing") << QJsonValue();
    QTest::newRow("text") << QJsonValue(u"x"_s);
    QTest::newRow("no number") << QJsonValue(message(u"1"_s, u"a.png"_s, picture));
    QTest::newRow("negative") << QJsonValue(message(-1, u"a.png"_s, picture));
}

void PageRequestsTests::messagesOfOtherShapesDoNothing()
{
    QFETCH(const QJsonValue, body);
    Fixture f;

    f.editing.page->post(u"importImage"_s, body);
    f.editing.page->post(u"something"_s, body);

    QVERIFY(!imageImportFrom(body));
    QVERIFY(f.editing.page->scripts.isEmpty());
}

void PageRequestsTests::namesLeadNowhere_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("name");

    QTest::newRow("plain") << u"Å b.png"_s << u"Å b.png"_s;
    QTest::newRow("upwards") << u"../../a.png"_s << u"a.png"_s;
    QTest::newRow("absolute") << u"/etc/passwd.png"_s << u"passwd.png"_s;
    QTest::newRow("backslashes") << u"C:\\bilder\\a.png"_s << u"a.png"_s;
    QTest::newRow("hidden") << u"..a.png"_s << u"a.png"_s;
    QTest::newRow("control characters") << u"a\n\u0007b.png"_s << u"ab.png"_s;
    QTest::newRow("long") << u"å"_s.repeated(300) + u".png"_s << u"å"_s.repeated(116) + u".png"_s;
}

void PageRequestsTests::namesLeadNowhere()
{
    QFETCH(const QString, given);
    QFETCH(const QString, name);

    const auto image = imageImportFrom(message(1, given, picture));

    QVERIFY(image);
    QCOMPARE(image->name, name);
}

} // namespace wendlore

QTEST_GUILESS_MAIN(wendlore::PageRequestsTests)
#include "PageRequestsTests.moc"

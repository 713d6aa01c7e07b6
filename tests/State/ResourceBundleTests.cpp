#include "State/ResourceBundle.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

const QString bundle = u"WendloreKit_WendloreKit.bundle/"_s;

struct Answer final
{
    bool hasExited = false;
    QString said;
    QString complained;
};

/// Runs a copy of this program at `program` in `folder`, which says what `question` asks for.
Answer ask(const Bucket& folder, const QString& program, const QString& question)
{
    const QString copy = folder.file(program).path();
    if (!QFile::exists(copy)) {
        folder.write(program.left(program.lastIndexOf(u'/') + 1), {});
        if (!QFile::copy(QCoreApplication::applicationFilePath(), copy))
            qFatal("cannot copy the test to %s", qPrintable(copy));
    }
    QProcess process;
    process.start(copy, {question});
    if (!process.waitForFinished(60000))
        qFatal("the copied test does not end");
    return {process.exitStatus() == QProcess::NormalExit, QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

/// What a copy of this program says that was asked for `question`.
QByteArray answer(const QString& question)
{
    if (question == "bundle"_L1)
        return resourceBundle().bytes();
    FakeServices desktop;
    return *AppState(desktop.services()).typographyTheme().toJson();
}

QByteArray themeOfSize(double size)
{
    TypographyTheme theme = TypographyTheme::standard();
    theme.body.fontSize = size;
    return *theme.toJson();
}

} // namespace

class ResourceBundleTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isFoundBesideTheProgram();
    void installedOneComesFirst();
    void isFoundByAProgramThatIsNotMeantForTheShell();
    void missingOneStopsTheProgram();
    void fileInItsPlaceDoesNotCount();
    void themeInTheBundleReplacesTheBuiltInOne();
    void unusableThemeInTheBundleIsIgnored_data();
    void unusableThemeInTheBundleIsIgnored();
};

void ResourceBundleTests::isFoundBesideTheProgram()
{
    const Bucket place;
    place.write(u"bin/"_s + bundle, {});

    QCOMPARE(ask(place, u"bin/test"_s, u"bundle"_s).said, place.folder(u"bin/"_s + bundle).path());
}

void ResourceBundleTests::installedOneComesFirst()
{
    const Bucket place;
    place.write(u"bin/"_s + bundle, {});
    place.write(u"share/wendlores/"_s + bundle, {});

    QCOMPARE(ask(place, u"bin/test"_s, u"bundle"_s).said,
             place.folder(u"share/wendlores/"_s + bundle).path());
}

void ResourceBundleTests::isFoundByAProgramThatIsNotMeantForTheShell()
{
    const Bucket place;
    place.write(u"share/wendlores/"_s + bundle, {});

    QCOMPARE(ask(place, u"libexec/wendlores/test"_s, u"bundle"_s).said,
             place.folder(u"share/wendlores/"_s + bundle).path());
}

void ResourceBundleTests::missingOneStopsTheProgram()
{
    const Bucket place;

    const Answer answer = ask(place, u"bin/test"_s, u"theme"_s);

    QVERIFY(!answer.hasExited);
    QVERIFY2(answer.complained.contains(u"unable to find bundle named WendloreKit_WendloreKit\n"_s),
             qPrintable(answer.complained));
}

void ResourceBundleTests::fileInItsPlaceDoesNotCount()
{
    const Bucket place;
    place.write(u"bin/"_s + bundle.chopped(1), "text");

    QVERIFY(!ask(place, u"bin/test"_s, u"bundle"_s).hasExited);
}

void ResourceBundleTests::themeInTheBundleReplacesTheBuiltInOne()
{
    const Bucket place;
    place.write(u"bin/"_s + bundle + u"wendlore-theme.json"_s, themeOfSize(33.5));

    QCOMPARE(ask(place, u"bin/test"_s, u"theme"_s).said.toUtf8(), themeOfSize(33.5));
}

void ResourceBundleTests::unusableThemeInTheBundleIsIgnored_data()
{
    QTest::addColumn<QByteArray>("file");

    QTest::newRow("broken off") << themeOfSize(33.5).chopped(4);
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no theme") << QByteArray("{}");
}

void ResourceBundleTests::unusableThemeInTheBundleIsIgnored()
{
    QFETCH(const QByteArray, file);
    const Bucket place;
    place.write(u"bin/"_s + bundle + u"wendlore-theme.json"_s, file);

    QCOMPARE(ask(place, u"bin/test"_s, u"theme"_s).said.toUtf8(), *TypographyTheme::standard().toJson());
}

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "bundle"_L1 || arguments.value(1) == "theme"_L1) {
        fputs(answer(arguments[1]).constData(), stdout);
        return 0;
    }
    ResourceBundleTests tests;
    return QTest::qExec(&tests, argc, argv);
}
#include "ResourceBundleTests.moc"

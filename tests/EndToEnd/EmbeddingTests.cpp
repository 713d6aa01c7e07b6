#include "Fakes/Bucket.h"

#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

constexpr int patience = 240'000; // a busy machine builds slowly

/// Runs a command to its end; gives what it said when it failed, else nothing.
QString failureOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit &&
        process.exitCode() == 0)
        return {};
    return program + u' ' + arguments.join(u' ') + u'\n' + QString::fromUtf8(process.readAll());
}

/// The switches that the library was built with, where a host needs the same to link it.
QString sanitizers()
{
#ifdef __SANITIZE_ADDRESS__
    return u"-fsanitize=address,undefined"_s;
#else
    return {};
#endif
}

/// Reads what the host writes, line by line.
class Host final
{
public:
    Host(const QString& program, const Bucket& bucket)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_DATA_HOME"_s, m_home.root().path());
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"QTWEBENGINE_DISABLE_SANDBOX"_s, u"1"_s);
        process.setProcessEnvironment(environment);
        process.start(program, {bucket.root().path()});
    }

    [[nodiscard]] QString nextLine()
    {
        while (!process.canReadLine()) {
            if (!process.waitForReadyRead(patience))
                return u"nothing, but: "_s + QString::fromUtf8(process.readAllStandardError());
        }
        return QString::fromUtf8(process.readLine()).trimmed();
    }

    QProcess process;

private:
    Bucket m_home;
};

} // namespace

/// A program outside of this project, built on what `cmake --install` laid down.
class EmbeddingTests final : public QObject
{
    Q_OBJECT

private:
    Bucket m_place;

    [[nodiscard]] QString place(const QString& name) const { return m_place.folder(name).path(); }

private Q_SLOTS:
    void initTestCase()
    {
        const QString build = QDir::cleanPath(qEnvironmentVariable("WENDLORE_BIN_DIR") + u"/.."_s);
        const QString source = qEnvironmentVariable("WENDLORE_SOURCE_DIR") + u"/examples/embedding"_s;
        const QString cmake = u"cmake"_s;
        const QString installed = failureOf(cmake, {u"--install"_s, build, u"--prefix"_s, place(u"prefix"_s),
                                                    u"--component"_s, u"library"_s});
        QVERIFY2(installed.isEmpty(), qPrintable(installed));
        const QString configured = failureOf(cmake, {u"-S"_s, source, u"-B"_s, place(u"host"_s),
                                                     u"-DCMAKE_PREFIX_PATH="_s + place(u"prefix"_s),
                                                     u"-DCMAKE_CXX_FLAGS="_s + sanitizers()});
        QVERIFY2(configured.isEmpty(), qPrintable(configured));
        const QString built = failureOf(cmake, {u"--build"_s, place(u"host"_s)});
        QVERIFY2(built.isEmpty(), qPrintable(built));
    }

    void theHostShowsABucketAndHearsWhatIsSelected()
    {
        const Bucket notes({{"A.md", "ett"}, {"Mapp/B.md", "två"}});
        Host host(place(u"host"_s) + u"/embedding"_s, notes);
        QCOMPARE(host.nextLine(), u"-"_s);

        host.process.write("Mapp/B.md\n");
        QCOMPARE(host.nextLine(), u"Mapp/B.md"_s);
        host.process.write("A.md\n");
        QCOMPARE(host.nextLine(), u"A.md"_s);

        host.process.closeWriteChannel();
        QVERIFY(host.process.waitForFinished(patience));
        QCOMPARE(host.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(host.process.exitCode(), 0);
        QCOMPARE(notes.read(u"A.md"_s), "ett");
    }

    void aHostWithoutABucketSaysHowItIsUsed()
    {
        QProcess host;
        host.start(place(u"host"_s) + u"/embedding"_s, {u"-platform"_s, u"offscreen"_s});

        QVERIFY(host.waitForFinished(patience));
        QCOMPARE(host.exitCode(), 2);
    }
};

QTEST_GUILESS_MAIN(EmbeddingTests)
#include "EmbeddingTests.moc"

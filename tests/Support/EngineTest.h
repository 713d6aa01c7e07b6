#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTest>
#include <QTimer>

class QWebEngineView;

namespace wendlore {

/// How long a test waits for the engine before it fails, in milliseconds: far longer than it should take.
constexpr int patience = 30'000;

/// Waits until `holds` is true; false when it is not within `milliseconds`. The tests' own waiting sleeps
/// between two looks, and meanwhile the engine, which lives on the same thread, stands still; here it goes
/// on.
template <typename Predicate>
[[nodiscard]] bool waitFor(const Predicate& holds, int milliseconds = patience)
{
    constexpr int interval = 2;
    QElapsedTimer time;
    time.start();
    while (!holds()) {
        if (time.hasExpired(milliseconds))
            return false;
        QEventLoop loop;
        QTimer::singleShot(interval, &loop, &QEventLoop::quit);
        loop.exec();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

/// What has to be done before the application object of a program that shows the editor page. Root has to go
/// without the web engine's sandbox; that is for tests to decide, never for the program.
void prepareEngine();

/// Presses the keys for `text`, whatever letters it has.
void pressKeys(QWidget& widget, const QString& text);

/// The text that the page of `view` shows, without blanks around it, as soon as there is some. The engine can
/// count a page as loaded before it has laid out any text.
[[nodiscard]] QString shownText(const QWebEngineView& view);

/// Runs the tests of `Test` with the web engine.
template <typename Test>
int runEngineTest(int argc, char** argv)
{
    prepareEngine();
    QApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace wendlore

// As the macros of QTest, but by `waitFor`.
// NOLINTBEGIN(cppcoreguidelines-macro-usage)
#define WAIT_VERIFY(expression)                                                                              \
    QVERIFY2(wendlore::waitFor([&] { return static_cast<bool>(expression); }), #expression)
#define WAIT_COMPARE(actual, expected)                                                                       \
    do {                                                                                                     \
        if (!wendlore::waitFor([&] { return (actual) == (expected); }))                                      \
            QCOMPARE(actual, expected);                                                                      \
    } while (false)
// NOLINTEND(cppcoreguidelines-macro-usage)

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage)
#define WENDLORE_ENGINE_TEST_MAIN(Test)                                                                      \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        return wendlore::runEngineTest<wendlore::Test>(argc, argv);                                          \
    }

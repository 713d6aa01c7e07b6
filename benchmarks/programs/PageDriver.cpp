#include "PageDriver.h"

#include "PageFolder.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonDocument>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

#include <functional>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

constexpr int answerLimit = 120'000;
constexpr auto answerPrefix = "bench:"_L1;
constexpr QSize windowSize{1000, 800};

/// A page that hands over what the probe answers and shows every other console message.
class ProbedPage final : public QWebEnginePage
{
public:
    ProbedPage(QWebEngineProfile* profile, std::function<void(QString)> answered, QObject* parent)
        : QWebEnginePage(profile, parent)
        , m_answered(std::move(answered))
    {}

protected:
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int line,
                                  const QString& source) override
    {
        if (message.startsWith(answerPrefix))
            m_answered(message.mid(answerPrefix.size()));
        else
            qWarning("%s (%s:%d)", qPrintable(message), qPrintable(source), line);
    }

private:
    std::function<void(QString)> m_answered;
};

QString readText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

QString quoted(const QString& text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

/// Lower-case words, as they are typed: the first `length` letters of an endless sentence.
QString wordsToType(int length)
{
    const QString sentence = u" och sedan skrev vi lite till om allt som blev sagt"_s;
    return sentence.repeated(length / sentence.size() + 1).first(length);
}

/// The first line of the note without its heading mark.
QString beginningOf(const QString& note)
{
    return note.section(u'\n', 0, 0).mid(2);
}

void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

PageDriver::PageDriver(const QString& pageFolder, const QString& probe, Reports reports)
    : m_check(reports == Reports::rewritten ? u"bench.checkRewritten"_s : u"bench.check"_s)
{
    m_profile.installUrlSchemeHandler("vault", new PageFolder(pageFolder, &m_profile));
    QWebEngineScript script;
    script.setSourceCode(readText(probe));
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::MainWorld);
    m_profile.scripts()->insert(script);
    m_view.setPage(new ProbedPage(
        &m_profile, [this](const QString& answer) { m_answer = answer; }, &m_view));
    m_view.resize(windowSize);
    m_view.show();
    m_view.activateWindow();
}

QJsonObject PageDriver::nextAnswer()
{
    QElapsedTimer waited;
    waited.start();
    while (m_answer.isEmpty()) {
        if (waited.elapsed() > answerLimit)
            qFatal("the page does not answer to %s", qPrintable(m_asked));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1000);
    }
    const QJsonObject answer = QJsonDocument::fromJson(std::exchange(m_answer, {}).toUtf8()).object();
    if (answer.contains("error"_L1))
        qFatal("%s", qPrintable(answer.value("error"_L1).toString()));
    return answer;
}

QJsonObject PageDriver::call(const QString& script)
{
    m_asked = script.section(u'(', 0, 0);
    m_view.page()->runJavaScript(u"void "_s + script);
    return nextAnswer();
}

void PageDriver::load()
{
    m_asked = u"loading"_s;
    m_view.load(QUrl(u"vault://app/index.html"_s));
    static_cast<void>(nextAnswer());
    static_cast<void>(call(u"bench.warmUp()"_s));
}

void PageDriver::clickAt(const QJsonObject& point)
{
    QWidget* target = m_view.focusProxy();
    target->setFocus();
    const QPointF position(point.value("x"_L1).toDouble(), point.value("y"_L1).toDouble());
    const QPointF global = target->mapToGlobal(position);
    QMouseEvent pressed(QEvent::MouseButtonPress, position, global, Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent released(QEvent::MouseButtonRelease, position, global, Qt::LeftButton, {}, {});
    QCoreApplication::sendEvent(target, &pressed);
    QCoreApplication::sendEvent(target, &released);
}

void PageDriver::press(int key, const QString& text)
{
    QKeyEvent pressed(QEvent::KeyPress, key, {}, text);
    QKeyEvent released(QEvent::KeyRelease, key, {}, text);
    QCoreApplication::sendEvent(m_view.focusProxy(), &pressed);
    QCoreApplication::sendEvent(m_view.focusProxy(), &released);
}

QJsonArray PageDriver::type(const QString& text, int pace)
{
    QJsonArray keys;
    for (const QChar letter : text) {
        static_cast<void>(call(u"bench.awaitKey()"_s));
        press(letter.toUpper().unicode(), letter);
        keys.append(nextAnswer());
        wait(pace);
    }
    return keys;
}

QJsonArray PageDriver::typeInMiddle(const QString& text, int pace)
{
    const QJsonObject point = call(u"bench.goToMiddle()"_s).value("point"_L1).toObject();
    clickAt(point);
    if (point.value("isLineEnd"_L1).toBool())
        press(Qt::Key_End);
    wait(pace);
    return type(text, pace);
}

QJsonObject PageDriver::measure(const QString& note, int keys, int pace)
{
    load();
    const QString arguments = u'(' + quoted(note) + u", "_s;
    QJsonObject result = call(u"bench.show"_s + arguments + quoted(beginningOf(note)) + u')');
    const QString typed = wordsToType(keys);
    result.insert("keys"_L1, typeInMiddle(typed, pace));
    static_cast<void>(call(m_check + arguments + quoted(typed) + u')'));
    result.insert("memory"_L1, call(u"bench.memory()"_s).value("memory"_L1));
    result.insert("frames"_L1, call(u"bench.scrollThrough(3)"_s).value("frames"_L1));
    result.insert("keysAfter"_L1, typeInMiddle(typed, pace));
    return result;
}

} // namespace wendlore

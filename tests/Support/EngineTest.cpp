#include "Support/EngineTest.h"

#include "Previews/WebSchemes.h"

#include <QWebEngineView>

#include <memory>
#include <unistd.h>

namespace wendlore {

void prepareEngine()
{
    if (::geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    registerWendloreSchemes();
}

void pressKeys(QWidget& widget, const QString& text)
{
    for (const QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key(letter.toUpper().unicode()), letter,
                            letter.isUpper() ? Qt::ShiftModifier : Qt::NoModifier);
}

QString shownText(const QWebEngineView& view)
{
    const auto text = std::make_shared<QString>(); // an answer can come when nobody waits any more
    const auto ask = [&view, text] {
        view.page()->toPlainText([text](const QString& answer) { *text = answer.trimmed(); });
        return !text->isEmpty();
    };
    static_cast<void>(waitFor(ask));
    return *text;
}

} // namespace wendlore

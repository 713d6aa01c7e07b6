#include "Support/EngineTest.h"

#include "Previews/WebSchemes.h"

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

} // namespace wendlore

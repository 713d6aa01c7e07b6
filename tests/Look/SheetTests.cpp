#include "Look/Sheet.h"

#include "Support/Window.h"

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

class Question final : public Sheet
{
public:
    explicit Question(QWidget* parent)
        : Sheet(u"Fråga"_s, parent)
        , field(makeField(u"Svar"_s))
        , cancel(addCancelButton())
        , save(addButton(u"Spara"_s))
    {
        contents().addWidget(field);
        save->setDefault(true);
    }

    QLineEdit* field;
    QPushButton* cancel;
    QPushButton* save;
};

} // namespace

class SheetTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void itBelongsToItsWindowAndGoesWhenItIsClosed()
    {
        QWidget window;
        const QPointer sheet = new Question(&window);
        sheet->open();
        QCOMPARE(sheet->windowTitle(), u"Fråga"_s);
        QCOMPARE(sheet->windowModality(), Qt::WindowModal);

        QTest::mouseClick(sheet->cancel, Qt::LeftButton);

        QTRY_VERIFY(!sheet);
    }

    void enterPressesTheDefaultButtonAndEscapeCancels()
    {
        QWidget window;
        const QPointer sheet = new Question(&window);
        sheet->open();
        const QSignalSpy saves(sheet->save, &QPushButton::clicked);

        QTest::keyClick(sheet->field, Qt::Key_Return);
        QCOMPARE(saves.count(), 1);
        QTest::keyClick(sheet->field, Qt::Key_Escape);

        QTRY_VERIFY(!sheet);
    }

    void enterPressesTheButtonThatHasTheFocus()
    {
        QWidget window;
        const QPointer sheet = new Question(&window);
        sheet->open();
        const QSignalSpy saves(sheet->save, &QPushButton::clicked);
        sheet->cancel->setFocus();

        QTest::keyClick(sheet->cancel, Qt::Key_Return);

        QCOMPARE(saves.count(), 0);
        QTRY_VERIFY(!sheet);
    }

    void aFieldIsNamedByWhatItAsksFor()
    {
        const Question sheet(nullptr);

        QCOMPARE(sheet.field->accessibleName(), u"Svar"_s);
        QCOMPARE(sheet.field->placeholderText(), u"Svar"_s);
    }
};

QTEST_MAIN(SheetTests)
#include "SheetTests.moc"

#include "Look/Sheet.h"

#include "Support/Window.h"

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

class Question final : public Sheet
{
public:
    Question()
        : Sheet(u"Fråga"_s, nullptr)
        , field(makeField(u"Svar"_s))
        , cancel(addCancelButton())
        , answer(addButton(u"Svara"_s))
    {
        contents().addWidget(field);
        answer->setDefault(true);
        connect(answer, &QPushButton::clicked, this, &QDialog::accept);
        showAt(*this, sizeHint());
    }

    QLineEdit* field;
    QPushButton* cancel;
    QPushButton* answer;
};

} // namespace

class SheetTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void enterPressesTheDefaultButton()
    {
        const QPointer<Question> sheet = new Question;

        QTest::keyClick(sheet->field, Qt::Key_Return);

        QCOMPARE(sheet->result(), int(QDialog::Accepted));
        QVERIFY(!sheet->isVisible());
    }

    void enterPressesTheButtonThatHasTheFocus()
    {
        const QPointer<Question> sheet = new Question;
        sheet->cancel->setFocus();

        QTest::keyClick(sheet->cancel, Qt::Key_Return);

        QCOMPARE(sheet->result(), int(QDialog::Rejected));
        QVERIFY(!sheet->isVisible());
    }

    void itGoesAwayOnceItIsClosed()
    {
        const QPointer<Question> sheet = new Question;

        QTest::keyClick(sheet, Qt::Key_Escape);

        QTRY_VERIFY(!sheet);
    }

    void aFieldIsNamedByWhatItAsksFor()
    {
        const QPointer<Question> sheet = new Question;

        QCOMPARE(sheet->field->accessibleName(), u"Svar"_s);
        QCOMPARE(sheet->field->placeholderText(), u"Svar"_s);
        delete sheet;
    }
};

QTEST_MAIN(SheetTests)
#include "SheetTests.moc"

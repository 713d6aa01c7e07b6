#include "Wendlores/SwedishTexts.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace wendlore;

class SwedishTextsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::installTranslator(&m_texts); }

    void standardButtonsAreSwedish()
    {
        QMessageBox box(QMessageBox::Warning, {}, {}, QMessageBox::Cancel | QMessageBox::Save);

        QCOMPARE(box.button(QMessageBox::Cancel)->text().remove(u'&'), u"Avbryt"_s);
        QCOMPARE(box.button(QMessageBox::Save)->text().remove(u'&'), u"Spara"_s);
    }

    void theMenuOfAFieldIsSwedish()
    {
        QLineEdit field;
        const std::unique_ptr<QMenu> menu(field.createStandardContextMenu());

        QStringList titles;
        for (const QAction* action : menu->actions()) {
            if (!action->isSeparator())
                titles.append(action->text().section(u'\t', 0, 0).remove(u'&'));
        }

        QCOMPARE(titles, QStringList({u"Ångra"_s, u"Gör om"_s, u"Klipp ut"_s, u"Kopiera"_s, u"Klistra in"_s,
                                      u"Ta bort"_s, u"Markera allt"_s}));
    }

    void theFileDialogComplainsInSwedish()
    {
        QFileDialog dialog;
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setFileMode(QFileDialog::ExistingFile);
        dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(u"/finns/inte.png"_s);
        QString said;
        QTimer::singleShot(0, &dialog, [&said] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                said = box->text();
                box->accept();
            }
        });

        QMetaObject::invokeMethod(&dialog, "accept");

        QVERIFY2(said.contains(u"Filen finns inte."_s), qPrintable(said));
    }

private:
    SwedishTexts m_texts;
};

QTEST_MAIN(SwedishTextsTests)
#include "SwedishTextsTests.moc"

#include "Wendlores/AboutSheet.h"

#include "Shell/SheetText.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

AboutSheet::AboutSheet(QWidget* parent)
    : Sheet(u"Om Wendlores"_s, parent)
{
    contents().addWidget(
        makeSheetText(u"Anteckningar som vanliga filer i vanliga mappar."_s, Qt::PlainText, this));
    contents().addWidget(
        makeSheetText(u"Version " WENDLORE_VERSION " · " WENDLORE_BUILD ""_s, Qt::PlainText, this));
    QPushButton* close = addButton(u"OK"_s);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

} // namespace wendlore

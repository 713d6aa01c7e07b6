#include "Shell/BucketSheets.h"

#include "Shell/SheetText.h"

#include "State/AppState.h"
#include "State/Panels.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

BucketInstructionsSheet::BucketInstructionsSheet(AppState& state, QWidget* parent)
    : Sheet(u"Lägg till bucket"_s, parent)
{
    contents().addWidget(makeSheetText(
        u"En bucket är en vanlig mapp på din enhet eller i molnet (iCloud, Dropbox). Välj den mapp du "
        "vill använda — tryck sedan på <b>Öppna</b> i filväljaren."_s,
        Qt::RichText, this));
    addCancelButton();
    QPushButton* choose = addButton(u"Välj mapp…"_s);
    choose->setDefault(true);
    connect(choose, &QPushButton::clicked, this, [this, &state] {
        accept();
        state.pickVault();
    });
}

PendingVaultSheet::PendingVaultSheet(AppState& state, const SyncedVaultEntry& entry, QWidget* parent)
    : Sheet(u"Länka bucket"_s, parent)
{
    contents().addWidget(
        makeSheetText(u'"' + entry.name + u"\" är tillgänglig från en annan enhet."_s, Qt::PlainText, this));
    contents().addWidget(
        makeSheetText(u"Välj mappen för att ge appen åtkomst på den här enheten."_s, Qt::PlainText, this));
    addCancelButton();
    QPushButton* choose = addButton(u"Välj mapp…"_s);
    choose->setDefault(true);
    connect(choose, &QPushButton::clicked, this, [this, &state, name = entry.name] {
        const auto folder =
            state.services().panels.chooseFolder(u"Välj bucket"_s, u"Välj mappen \"%1\"."_s.arg(name));
        if (!folder)
            return;
        accept();
        state.addVault(*folder);
    });
}

} // namespace wendlore

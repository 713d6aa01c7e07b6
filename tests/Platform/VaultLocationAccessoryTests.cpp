#include "Platform/VaultLocationAccessory.h"

#include "Fakes/Bucket.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

std::vector<CloudLocation> locations(const Bucket& home)
{
    const FileURL drive = home.folder(u"Drive"_s);
    const FileURL dropbox = home.folder(u"Dropbox"_s);
    return {{drive.path(), u"Google Drive · anna"_s, drive, 0}, {dropbox.path(), u"Dropbox"_s, dropbox, 3}};
}

} // namespace

class VaultLocationAccessoryTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void menuHoldsTheLastFolderAndTheLocations();
    void pickedLocationIsShownByThePanel();
    void lastFolderAndWhatIsNotThereChangeNothing_data();
    void lastFolderAndWhatIsNotThereChangeNothing();
    void panelMayBeGone();
};

void VaultLocationAccessoryTests::menuHoldsTheLastFolderAndTheLocations()
{
    const Bucket home;
    QFileDialog panel;

    const VaultLocationAccessory accessory(locations(home), &panel);

    const auto* menu = accessory.findChild<QComboBox*>();
    QCOMPARE(menu->count(), 4);
    QCOMPARE(menu->currentText(), u"Senast använda"_s);
    QCOMPARE(menu->itemData(1, Qt::AccessibleDescriptionRole).toString(), u"separator"_s);
    QCOMPARE(menu->itemText(2), u"Google Drive · anna"_s);
    QCOMPARE(menu->itemText(3), u"Dropbox"_s);
    QCOMPARE(accessory.findChild<QLabel*>()->text(), u"Plats:"_s);
}

void VaultLocationAccessoryTests::pickedLocationIsShownByThePanel()
{
    const Bucket home({{"Drive/", ""}, {"Dropbox/", ""}});
    QFileDialog panel;
    panel.setOption(QFileDialog::DontUseNativeDialog);
    const VaultLocationAccessory accessory(locations(home), &panel);
    auto* menu = accessory.findChild<QComboBox*>();

    menu->setCurrentIndex(3);
    Q_EMIT menu->activated(3);

    QCOMPARE(panel.directory().absolutePath(), home.folder(u"Dropbox"_s).path());
}

void VaultLocationAccessoryTests::lastFolderAndWhatIsNotThereChangeNothing_data()
{
    QTest::addColumn<int>("index");

    QTest::newRow("last folder") << 0;
    QTest::newRow("separator") << 1;
    QTest::newRow("after the last") << 4;
    QTest::newRow("nothing") << -1;
}

void VaultLocationAccessoryTests::lastFolderAndWhatIsNotThereChangeNothing()
{
    QFETCH(const int, index);
    const Bucket home({{"Drive/", ""}, {"Dropbox/", ""}});
    QFileDialog panel;
    panel.setOption(QFileDialog::DontUseNativeDialog);
    panel.setDirectory(home.root().path());
    VaultLocationAccessory accessory(locations(home), &panel);

    accessory.pick(index);

    QCOMPARE(panel.directory().absolutePath(), home.root().path());
}

void VaultLocationAccessoryTests::panelMayBeGone()
{
    const Bucket home({{"Drive/", ""}});
    auto panel = std::make_unique<QFileDialog>();
    VaultLocationAccessory accessory(locations(home), panel.get());
    const QString folder = QDir::currentPath();
    panel.reset();

    accessory.pick(2);

    QCOMPARE(QDir::currentPath(), folder);
}

QTEST_MAIN(VaultLocationAccessoryTests)
#include "VaultLocationAccessoryTests.moc"

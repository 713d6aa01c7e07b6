#include "Shell/TreeMenus.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// A line for each entry: its title and symbol, "-" for a divider, "!" after what destroys.
QStringList described(const std::vector<MacMenuItem>& items)
{
    QStringList lines;
    for (const MacMenuItem& item : items)
        lines.append(item.isDivider
                         ? u"-"_s
                         : item.title + u'|' + item.systemImage + (item.isDestructive ? u"!"_s : QString()));
    return lines;
}

} // namespace

class TreeMenusTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aFoldersEntriesAndTheirOrder()
    {
        const Bucket bucket({{"Arbete/", ""}});
        FakeServices services;
        AppState state(services.services());

        QCOMPARE(described(macFolderMenuItems(state, bucket.folder(u"Arbete"_s), {})),
                 (QStringList{u"Ny not här|square.and.pencil"_s, u"Ny undermapp|folder.badge.plus"_s, u"-"_s,
                              u"Byt namn|pencil"_s, u"Ta bort mapp|trash!"_s}));
    }

    void aFilesEntriesAndTheirOrder()
    {
        const Bucket bucket({{"Bild.png", ""}});
        FakeServices services;
        AppState state(services.services());
        const TreeMenuActions actions{{}, [](const FileURL&) {}};

        QCOMPARE(described(macFileMenuItems(state, bucket.file(u"Bild.png"_s), actions)),
                 (QStringList{u"Öppna i eget fönster|macwindow.on.rectangle"_s, u"-"_s, u"Byt namn|pencil"_s,
                              u"Ta bort not|trash!"_s}));
    }

    void theEntriesDoWhatTheySay()
    {
        const Bucket bucket({{"Arbete/Index.md", ""}, {"B.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        QList<FileURL> renamed;
        QList<FileURL> opened;
        const TreeMenuActions actions{[&](const FileURL& item) { renamed.append(item); },
                                      [&](const FileURL& file) { opened.append(file); }};
        const auto folder = macFolderMenuItems(state, bucket.folder(u"Arbete"_s), actions);
        const auto file = macFileMenuItems(state, bucket.file(u"B.md"_s), actions);

        folder.at(0).action();
        QCOMPARE(state.selectedFile(), bucket.file(u"Arbete/Ny not.md"_s));
        folder.at(1).action();
        QVERIFY(bucket.exists(u"Arbete/Ny mapp"_s));
        folder.at(3).action();
        file.at(2).action();
        QCOMPARE(renamed, (QList{bucket.folder(u"Arbete"_s), bucket.file(u"B.md"_s)}));
        file.at(0).action();
        QCOMPARE(opened, QList{bucket.file(u"B.md"_s)});
        file.at(3).action();
        QVERIFY(!bucket.exists(u"B.md"_s));
        folder.at(4).action();
        QVERIFY(!bucket.exists(u"Arbete"_s));
    }

    void aMenuIsMadeOfThem()
    {
        const Bucket bucket({{"Arbete/", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        QMenu menu;

        addItems(menu, macFolderMenuItems(state, bucket.folder(u"Arbete"_s), {}));

        QCOMPARE(menu.actions().size(), 5);
        QVERIFY(menu.actions().at(2)->isSeparator());
        QVERIFY(!menu.actions().at(0)->icon().isNull());
        menu.actions().at(1)->trigger();
        QVERIFY(bucket.exists(u"Arbete/Ny mapp"_s));
    }
};

QTEST_MAIN(TreeMenusTests)
#include "TreeMenusTests.moc"

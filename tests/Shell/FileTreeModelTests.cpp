#include "Shell/FileTreeModel.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace wendlore {

class FileTreeModelTests final : public QObject
{
    Q_OBJECT

private:
    /// The rows below `parent`, opened all the way: "Arbete/" with its contents, then "Idé".
    static QStringList rowsOf(const FileTreeModel& model, const QModelIndex& parent = {},
                              const QString& prefix = {})
    {
        QStringList rows;
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex index = model.index(row, 0, parent);
            const QString name = prefix + index.data().toString();
            rows.append(model.isFolder(index) ? name + u'/' : name);
            if (model.isFolder(index))
                rows.append(rowsOf(model, index, name + u'/'));
        }
        return rows;
    }

private Q_SLOTS:
    void showsFoldersAndFilesByTheirNames()
    {
        Bucket bucket({{"Arbete/Index.md", ""}, {"Idé.md", ""}, {"Recept.html", ""}});
        FakeServices services;
        AppState state(services.services());
        FileTreeModel model(state);
        QAbstractItemModelTester tester(&model);

        state.switchVault(bucket.root());

        QCOMPARE(rowsOf(model), QStringList({u"Arbete/"_s, u"Arbete/Index"_s, u"Idé"_s, u"Recept"_s}));
        QCOMPARE(model.index(0, 0).data(FileTreeModel::SymbolRole).toString(), u"folder"_s);
        QCOMPARE(model.index(2, 0).data(FileTreeModel::SymbolRole).toString(), u"globe"_s);
    }

    void aNameThatLooksLikeMarkupIsShownAsItIs()
    {
        Bucket bucket({{"Länk & <b>.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        const FileTreeModel model(state);

        QTextDocument shown;
        shown.setHtml(model.index(0, 0).data(Qt::ToolTipRole).toString());

        QCOMPARE(shown.toPlainText(), u"Länk & <b>.md"_s);
    }

    void findsTheRowOfALocation()
    {
        Bucket bucket({{"A/B/C.md", ""}, {"A/B.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        FileTreeModel model(state);

        const QModelIndex row = model.indexOf(bucket.file(u"A/B/C.md"_s));

        QCOMPARE(row.data().toString(), u"C"_s);
        QCOMPARE(row.parent().data().toString(), u"B"_s);
        QCOMPARE(model.urlAt(row), bucket.file(u"A/B/C.md"_s));
        QVERIFY(!model.indexOf(bucket.file(u"A/missing.md"_s)).isValid());
        QVERIFY(!model.indexOf(FileURL::file(u"/elsewhere/C.md"_s)).isValid());
    }

    void aRebuildKeepsTheRowsThatAreStillThere()
    {
        Bucket bucket({{"A/1.md", ""}, {"A/3.md", ""}, {"B/x.md", ""}, {"note.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        FileTreeModel model(state);
        QAbstractItemModelTester tester(&model);
        const QPersistentModelIndex kept = model.indexOf(bucket.file(u"A/3.md"_s));
        const QPersistentModelIndex gone = model.indexOf(bucket.file(u"A/1.md"_s));
        QVERIFY(kept.isValid() && gone.isValid());
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

        bucket.remove(u"A/1.md"_s);
        bucket.write(u"A/2.md"_s, "");
        bucket.write(u"AA/new.md"_s, "");
        state.reloadTree();

        QCOMPARE(rowsOf(model), QStringList({u"A/"_s, u"A/2"_s, u"A/3"_s, u"AA/"_s, u"AA/new"_s, u"B/"_s,
                                             u"B/x"_s, u"note"_s}));
        QCOMPARE(kept.data().toString(), u"3"_s);
        QCOMPARE(kept.row(), 1);
        QVERIFY(!gone.isValid());
        QCOMPARE(reset.count(), 0);
    }

    void aFolderThatBecomesAFileIsANewRow()
    {
        Bucket bucket({{"thing/x.md", ""}, {"note.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        FileTreeModel model(state);
        QAbstractItemModelTester tester(&model);
        QCOMPARE(rowsOf(model).size(), 3);

        bucket.remove(u"thing/x.md"_s);
        QVERIFY(QDir().rmdir(bucket.folder(u"thing"_s).path()));
        bucket.write(u"thing"_s, "now a file");
        state.reloadTree();

        QCOMPARE(rowsOf(model), QStringList({u"note"_s, u"thing"_s}));
    }

    void randomChangesEndInTheTreeThatIsOnDisk()
    {
        Bucket bucket;
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        FileTreeModel model(state);
        QAbstractItemModelTester tester(&model);
        QRandomGenerator random(7);

        for (int round = 0; round < 60; ++round) {
            for (int change = 0; change < 5; ++change) {
                const QString name = u"%1/%2.md"_s.arg(random.bounded(4)).arg(random.bounded(12));
                if (random.bounded(2) == 0)
                    bucket.remove(name);
                else
                    bucket.write(name, "");
            }
            state.reloadTree();

            const FileTreeModel fresh(state);
            QCOMPARE(rowsOf(model), rowsOf(fresh));
        }
    }

    void anotherBucketReplacesEverything()
    {
        Bucket first({{"A.md", ""}});
        Bucket second({{"B.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(first.root());
        FileTreeModel model(state);
        QAbstractItemModelTester tester(&model);
        QCOMPARE(rowsOf(model), QStringList({u"A"_s}));

        state.switchVault(second.root());

        QCOMPARE(rowsOf(model), QStringList({u"B"_s}));
    }

    void foldersThatWereNeverOpenedAreNotRead()
    {
        Bucket bucket({{"A/1.md", ""}, {"B/2.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        FileTreeModel model(state);
        QCOMPARE(model.rowCount(), 2);
        const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);

        bucket.write(u"A/3.md"_s, "");
        state.reloadTree();

        QCOMPARE(inserted.count(), 0);
        QCOMPARE(model.rowCount(model.index(0, 0)), 2);
    }
};

} // namespace wendlore

QTEST_MAIN(wendlore::FileTreeModelTests)
#include "FileTreeModelTests.moc"

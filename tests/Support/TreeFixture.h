#pragma once

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Shell/FileTreeModel.h"
#include "Shell/FileTreeView.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QApplication>
#include <QTest>

namespace wendlore {

/// A tree on screen over a real bucket.
class TreeFixture final
{
public:
    explicit TreeFixture(std::initializer_list<std::pair<const char*, const char*>> files,
                         QSize size = {240, 400})
        : bucket(files)
        , state(services.services())
    {
        state.switchVault(bucket.root());
        view = std::make_unique<FileTreeView>(state);
        showAt(*view, size);
        QApplication::setActiveWindow(view.get());
        view->setFocus();
    }

    [[nodiscard]] QModelIndex row(const QString& path) const
    {
        return static_cast<FileTreeModel*>(view->model())->indexOf(bucket.file(path));
    }
    [[nodiscard]] bool isExpanded(const QString& path) const { return view->isExpanded(row(path)); }
    [[nodiscard]] QString currentName() const { return view->currentIndex().data().toString(); }

    void click(const QString& path, int x = 100) const
    {
        const QRect area = view->visualRect(row(path));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, {x, area.center().y()});
    }
    void press(Qt::Key key) const { QTest::keyClick(view.get(), key); }

    Bucket bucket;
    FakeServices services;
    AppState state;
    std::unique_ptr<FileTreeView> view;
};

} // namespace wendlore

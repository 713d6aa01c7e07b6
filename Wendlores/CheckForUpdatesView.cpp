#include "Wendlores/CheckForUpdatesView.h"

#include "Wendlores/Updater.h"

#include "State/Workspace.h"

#include <QAction>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

QMessageBox* message(const QString& title, const QString& text, QWidget& window)
{
    auto* box = new QMessageBox(QMessageBox::NoIcon, title, title, QMessageBox::NoButton, &window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(text);
    return box;
}

} // namespace

CheckForUpdatesViewModel::CheckForUpdatesViewModel(Updater& updater, QObject* parent)
    : QObject(parent)
    , m_canCheckForUpdates(updater.canCheckForUpdates())
{
    connect(&updater, &Updater::canCheckForUpdatesChanged, this, [this, &updater] {
        m_canCheckForUpdates = updater.canCheckForUpdates();
        Q_EMIT canCheckForUpdatesChanged();
    });
}

CheckForUpdatesView::CheckForUpdatesView(QMenu& menu, Updater& updater, Workspace& workspace, QWidget& window)
    : QObject(&window)
    , m_viewModel(updater)
    , m_updater(updater)
    , m_workspace(workspace)
    , m_window(window)
{
    auto* action = new QAction(u"Sök efter uppdateringar…"_s, &menu);
    menu.insertAction(menu.actions().value(1), action);
    connect(action, &QAction::triggered, &updater, &Updater::checkForUpdates);
    const auto showWhetherPossible = [this, action] { action->setEnabled(m_viewModel.canCheckForUpdates()); };
    connect(&m_viewModel, &CheckForUpdatesViewModel::canCheckForUpdatesChanged, action, showWhetherPossible);
    showWhetherPossible();

    connect(&updater, &Updater::found, this, &CheckForUpdatesView::offer);
    connect(&updater, &Updater::downloaded, this, &CheckForUpdatesView::offerToOpen);
    connect(&updater, &Updater::upToDate, this,
            [this] { tell(u"Wendlores är uppdaterat"_s, u"Det finns ingen nyare version."_s); });
    connect(&updater, &Updater::failed, this, [this] {
        tell(u"Uppdateringen gick inte att hämta"_s,
             u"Servern svarade inte som den ska. Försök igen senare."_s);
    });
}

void CheckForUpdatesView::tell(const QString& title, const QString& text)
{
    QMessageBox* box = message(title, text, m_window);
    box->addButton(QMessageBox::Ok);
    box->open();
}

void CheckForUpdatesView::offer(const Release& release)
{
    QMessageBox* box = message(u"Wendlores %1 finns"_s.arg(release.version.toString()),
                               u"Vill du hämta den nya versionen?"_s, m_window);
    const auto* fetch = box->addButton(u"Hämta"_s, QMessageBox::AcceptRole);
    box->addButton(u"Inte nu"_s, QMessageBox::RejectRole);
    connect(fetch, &QAbstractButton::clicked, &m_updater, [this, release] { m_updater.download(release); });
    box->open();
}

void CheckForUpdatesView::offerToOpen(const FileURL& package)
{
    QMessageBox* box =
        message(u"Den nya versionen är hämtad"_s,
                u"Öppna %1 för att installera den."_s.arg(package.lastPathComponent()), m_window);
    const auto* open = box->addButton(u"Öppna"_s, QMessageBox::AcceptRole);
    box->addButton(u"Inte nu"_s, QMessageBox::RejectRole);
    connect(open, &QAbstractButton::clicked, this, [this, package] { m_workspace.open(package); });
    box->open();
}

} // namespace wendlore

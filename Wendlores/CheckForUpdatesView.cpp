#include "Wendlores/CheckForUpdatesView.h"

#include "Wendlores/Updater.h"

#include "Look/NoticeBar.h"
#include "State/Workspace.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace wendlore {

CheckForUpdatesViewModel::CheckForUpdatesViewModel(Updater& updater, QObject* parent)
    : QObject(parent)
    , m_canCheckForUpdates(updater.canCheckForUpdates())
{
    connect(&updater, &Updater::canCheckForUpdatesChanged, this, [this, &updater] {
        m_canCheckForUpdates = updater.canCheckForUpdates();
        Q_EMIT canCheckForUpdatesChanged();
    });
}

CheckForUpdatesView::CheckForUpdatesView(QMenu& menu, Updater& updater, Workspace& workspace,
                                         NoticeBar& notice)
    : QObject(&notice)
    , m_viewModel(updater)
    , m_updater(updater)
    , m_workspace(workspace)
    , m_notice(notice)
{
    auto* action = new QAction(u"Sök efter uppdateringar…"_s, &menu);
    menu.insertAction(menu.actions().value(1), action);
    connect(action, &QAction::triggered, &updater, &Updater::checkForUpdates);
    const auto showWhetherPossible = [this, action] { action->setEnabled(m_viewModel.canCheckForUpdates()); };
    connect(&m_viewModel, &CheckForUpdatesViewModel::canCheckForUpdatesChanged, action, showWhetherPossible);
    showWhetherPossible();

    connect(&updater, &Updater::found, this, &CheckForUpdatesView::offer);
    connect(&updater, &Updater::downloaded, this, &CheckForUpdatesView::offerToOpen);
    connect(&updater, &Updater::upToDate, this, [this] {
        tell(u"Wendlores är uppdaterat"_s, u"Det finns ingen nyare version."_s);
        addAnswer(u"OK"_s);
    });
    connect(&updater, &Updater::failed, this, [this] {
        tell(u"Uppdateringen gick inte att hämta"_s,
             u"Servern svarade inte som den ska. Försök igen senare."_s);
        addAnswer(u"OK"_s);
    });
}

void CheckForUpdatesView::offer(const Release& release)
{
    tell(u"Wendlores %1 finns"_s.arg(release.version.toString()), u"Vill du hämta den nya versionen?"_s);
    addAnswer(u"Hämta"_s, [this, release] { download(release); });
    addAnswer(u"Inte nu"_s);
}

void CheckForUpdatesView::download(const Release& release)
{
    tell(u"Hämtar Wendlores %1…"_s.arg(release.version.toString()), u"Du kan arbeta vidare under tiden."_s);
    m_updater.download(release);
}

void CheckForUpdatesView::offerToOpen(const FileURL& package)
{
    tell(u"Den nya versionen är hämtad"_s,
         u"Öppna %1 för att installera den."_s.arg(package.lastPathComponent()));
    addAnswer(u"Öppna"_s, [this, package] { m_workspace.open(package); });
    addAnswer(u"Inte nu"_s);
}

void CheckForUpdatesView::tell(const QString& title, const QString& text)
{
    m_notice.removeButtons();
    m_notice.tell(title, text);
}

void CheckForUpdatesView::addAnswer(const QString& text, const std::function<void()>& act)
{
    connect(m_notice.addButton(text), &QPushButton::clicked, this, [this, act] {
        m_notice.hide();
        if (act)
            act();
    });
}

} // namespace wendlore

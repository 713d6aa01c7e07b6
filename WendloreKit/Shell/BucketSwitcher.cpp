#include "Shell/BucketSwitcher.h"

#include "Shell/BucketSheets.h"
#include "Shell/ManageBucketsSheet.h"

#include "Look/FlatButton.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"
#include "Look/ToolTip.h"
#include "State/AppState.h"

#include <QMenu>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int switcherHeight = 36;

/// A name may hold the sign that marks a shortcut's letter.
QString withoutMnemonic(QString name)
{
    return name.replace(u'&', u"&&"_s);
}

} // namespace

BucketSwitcher::BucketSwitcher(AppState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_button(new LabelButton({}, Tone::strong, this))
    , m_menu(new QMenu(m_button))
{
    m_button->setFont(sized(font(), metrics::textSize, QFont::DemiBold));
    m_button->setTrailingSymbol(u"chevron.up.chevron.down"_s);
    m_menu->setToolTipsVisible(true); // two buckets can have one name
    m_button->setMenu(m_menu);
    m_button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_button->setFixedHeight(switcherHeight);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(metrics::inset, 0, metrics::inset, 0);
    layout->addWidget(m_button);

    connect(m_menu, &QMenu::aboutToShow, this, &BucketSwitcher::fillMenu);
    connect(&state, &AppState::vaultURLChanged, this, &BucketSwitcher::showBucket);
    showBucket();
}

void BucketSwitcher::showBucket()
{
    const auto& bucket = m_state.vaultURL();
    const QString name = bucket ? bucket->lastPathComponent() : u"Ingen bucket öppen"_s;
    m_button->setLeadingSymbol(bucket ? u"archivebox.fill"_s : u"archivebox"_s, metrics::icon);
    m_button->setText(name);
    m_button->describe(bucket ? u"Bucket: %1"_s.arg(name) : name, bucket ? bucket->path() : QString());
}

void BucketSwitcher::fillMenu()
{
    m_menu->clear();
    addBuckets();
    addPendingVaults();
    m_menu->addSeparator();
    QAction* add = m_menu->addAction(symbolIcon(u"plus"_s), u"Lägg till bucket…"_s);
    connect(add, &QAction::triggered, this, &BucketSwitcher::showInstructions);
    QAction* manage = m_menu->addAction(symbolIcon(u"slider.horizontal.3"_s), u"Hantera buckets…"_s);
    connect(manage, &QAction::triggered, this, &BucketSwitcher::showManageBuckets);
}

void BucketSwitcher::addBuckets()
{
    for (const FileURL& bucket : m_state.vaults()) {
        QAction* entry = m_menu->addAction(withoutMnemonic(bucket.lastPathComponent()));
        entry->setToolTip(plainToolTip(bucket.path()));
        if (bucket == m_state.vaultURL())
            entry->setIcon(symbolIcon(u"checkmark"_s));
        connect(entry, &QAction::triggered, &m_state, [this, bucket] { m_state.switchVault(bucket); });
    }
}

void BucketSwitcher::addPendingVaults()
{
    if (m_state.pendingVaults().empty())
        return;
    m_menu->addSeparator();
    m_menu->addAction(u"Tillgängliga på andra enheter"_s)->setEnabled(false);
    for (const SyncedVaultEntry& entry : m_state.pendingVaults()) {
        QAction* link = m_menu->addAction(withoutMnemonic(entry.name));
        connect(link, &QAction::triggered, this, [this, entry] { showPendingVault(entry); });
    }
}

void BucketSwitcher::showInstructions()
{
    (new BucketInstructionsSheet(m_state, window()))->open();
}

void BucketSwitcher::showPendingVault(const SyncedVaultEntry& entry)
{
    (new PendingVaultSheet(m_state, entry, window()))->open();
}

void BucketSwitcher::showManageBuckets()
{
    auto* sheet = new ManageBucketsSheet(m_state, window());
    connect(sheet, &ManageBucketsSheet::addRequested, this, &BucketSwitcher::showInstructions);
    connect(sheet, &ManageBucketsSheet::linkRequested, this, &BucketSwitcher::showPendingVault);
    sheet->open();
}

} // namespace wendlore

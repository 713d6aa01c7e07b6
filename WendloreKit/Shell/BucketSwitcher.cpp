#include "Shell/BucketSwitcher.h"

#include "Look/FlatButton.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"
#include "State/AppState.h"

#include <QMenu>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int switcherHeight = 36;

} // namespace

BucketSwitcher::BucketSwitcher(AppState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_button(new LabelButton({}, Tone::strong, this))
    , m_menu(new QMenu(m_button))
{
    m_button->setFont(sized(font(), metrics::textSize, QFont::DemiBold));
    m_button->setTrailingSymbol(u"chevron.up.chevron.down"_s);
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
    for (const FileURL& bucket : m_state.vaults()) {
        QAction* entry = m_menu->addAction(QString(bucket.lastPathComponent()).replace(u'&', u"&&"_s));
        entry->setToolTip(bucket.path());
        if (bucket == m_state.vaultURL())
            entry->setIcon(symbolIcon(u"checkmark"_s));
        connect(entry, &QAction::triggered, &m_state, [this, bucket] { m_state.switchVault(bucket); });
    }
    m_menu->addSeparator();
    QAction* add = m_menu->addAction(symbolIcon(u"plus"_s), u"Lägg till bucket…"_s);
    connect(add, &QAction::triggered, &m_state, &AppState::pickVault);
}

} // namespace wendlore

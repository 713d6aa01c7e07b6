#include "Shell/ManageBucketsSheet.h"

#include "Shell/SheetText.h"

#include "Look/Colors.h"
#include "Look/FlatButton.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"
#include "Look/ToolTip.h"
#include "State/AppState.h"
#include "State/CloudKeyValueStore.h"
#include "State/Panels.h"
#include "State/UserDefaults.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int listWidth = 380;
constexpr int listHeight = 220;
const QString cloudFolderKey = u"wendloreCloudFolder"_s;

/// A row's symbol, its name and, in small print, where it lies.
class BucketLabel final : public QWidget
{
public:
    BucketLabel(QString name, QString place, QWidget* parent)
        : QWidget(parent)
        , m_name(std::move(name))
        , m_place(std::move(place))
    {
        setAccessibleName(m_name);
        setToolTip(plainToolTip(m_place));
        setFixedHeight(m_place.isEmpty() ? metrics::rowHeight : 40);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const Colors& colors = Colors::of(palette());
        drawSymbol(painter, QRect(0, 0, metrics::icon, height()), u"archivebox"_s, colors.muted,
                   metrics::icon);
        QRect area = rect().adjusted(metrics::icon + metrics::inset, 0, 0, 0);
        if (!m_place.isEmpty()) {
            area.setHeight(height() / 2);
            drawLine(painter, area.translated(0, area.height()), metrics::smallSize, colors.muted, m_place,
                     Qt::ElideMiddle);
        }
        drawLine(painter, area, metrics::textSize, colors.text, m_name, Qt::ElideRight);
    }

private:
    void drawLine(QPainter& painter, const QRect& area, int size, const QColor& color, const QString& text,
                  Qt::TextElideMode elide) const
    {
        painter.setFont(sized(font(), size));
        painter.setPen(color);
        painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         painter.fontMetrics().elidedText(text, elide, area.width()));
    }

    QString m_name;
    QString m_place;
};

QWidget* makeRow(QWidget* label, QWidget* button, QWidget* parent)
{
    auto* row = new QWidget(parent);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, metrics::inset, 0);
    layout->addWidget(label, 1);
    layout->addWidget(button);
    return row;
}

} // namespace

ManageBucketsSheet::ManageBucketsSheet(AppState& state, QWidget* parent)
    : Sheet(u"Hantera buckets"_s, parent)
    , m_state(state)
    , m_lists(new QScrollArea(this))
{
    m_lists->setFrameShape(QFrame::NoFrame);
    m_lists->setWidgetResizable(true);
    m_lists->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_lists->setAccessibleName(u"Buckets"_s);
    m_lists->setFixedSize(listWidth, listHeight);
    m_lists->setBackgroundRole(QPalette::Base);
    contents().addWidget(m_lists);
    contents().addWidget(makeSheetText(
        u"Att ta bort en bucket tar bara bort den från menyn — mappen och filerna ligger kvar på disken."_s,
        Qt::PlainText, this));
    addCloudFolder();
    QPushButton* add = addButton(u"Lägg till bucket"_s);
    connect(add, &QPushButton::clicked, this, [this] {
        accept();
        Q_EMIT addRequested();
    });
    QPushButton* done = addButton(u"Klar"_s);
    done->setDefault(true);
    connect(done, &QPushButton::clicked, this, &QDialog::accept);

    connect(&state, &AppState::vaultsChanged, this, &ManageBucketsSheet::showLists);
    connect(&state, &AppState::pendingVaultsChanged, this, &ManageBucketsSheet::showLists);
    showLists();
}

void ManageBucketsSheet::addCloudFolder()
{
    m_cloudFolder = makeSheetText({}, Qt::PlainText, this);
    auto* choose = new QPushButton(u"Välj synkad mapp…"_s, this);
    choose->setAutoDefault(false);
    connect(choose, &QPushButton::clicked, this, &ManageBucketsSheet::chooseCloudFolder);
    contents().addWidget(m_cloudFolder);
    contents().addWidget(choose, 0, Qt::AlignLeft);
    showCloudFolder();
}

void ManageBucketsSheet::chooseCloudFolder()
{
    const auto folder = m_state.services().panels.chooseFolder(
        u"Välj mapp"_s, u"Välj en mapp som synkas mellan dina enheter."_s);
    if (!folder)
        return;
    m_state.services().defaults.setString(cloudFolderKey, folder->path());
    m_state.services().cloud.moveTo(*folder);
    showCloudFolder();
}

void ManageBucketsSheet::showCloudFolder()
{
    const auto folder = m_state.services().defaults.string(cloudFolderKey);
    m_cloudFolder->setText(
        folder && !folder->isEmpty()
            ? u"Listan delas med dina andra enheter genom mappen %1."_s.arg(*folder)
            : u"Välj en mapp som synkas mellan dina enheter, så följer listan över buckets med."_s);
}

void ManageBucketsSheet::showLists()
{
    // The button of a row may be what brought us here: the old rows go once its click is over.
    if (QWidget* old = m_lists->takeWidget()) {
        m_lists->setFocus(); // not on the next row's button, which the same key would press
        old->deleteLater();
    }
    m_lists->setWidget(makeLists());
    QWidget* previous = m_lists;
    for (auto* button : m_lists->widget()->findChildren<QAbstractButton*>()) {
        setTabOrder(previous, button);
        previous = button;
    }
}

QWidget* ManageBucketsSheet::makeLists()
{
    auto* lists = new QWidget;
    lists->setBackgroundRole(QPalette::Base);
    auto* layout = new QVBoxLayout(lists);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const FileURL& bucket : m_state.vaults())
        layout->addWidget(makeBucketRow(bucket, lists));
    if (!m_state.pendingVaults().empty()) {
        auto* heading = new QLabel(u"Tillgängliga på andra enheter"_s, lists);
        heading->setFont(sized(font(), metrics::noticeSize, QFont::Medium));
        heading->setForegroundRole(mutedRole);
        heading->setFixedHeight(metrics::rowHeight);
        layout->addWidget(heading);
    }
    for (const SyncedVaultEntry& entry : m_state.pendingVaults())
        layout->addWidget(makePendingRow(entry, lists));
    layout->addStretch();
    return lists;
}

QWidget* ManageBucketsSheet::makeBucketRow(const FileURL& bucket, QWidget* parent)
{
    const QString name = bucket.lastPathComponent();
    const QString help = u"Ta bort %1 från menyn"_s.arg(name);
    auto* remove = new IconButton(u"minus.circle.fill"_s, help, help, parent);
    connect(remove, &IconButton::clicked, &m_state, [this, bucket] { m_state.removeBucket(bucket); });
    return makeRow(new BucketLabel(name, bucket.path(), parent), remove, parent);
}

QWidget* ManageBucketsSheet::makePendingRow(const SyncedVaultEntry& entry, QWidget* parent)
{
    auto* link = new LabelButton(u"Länka…"_s, Tone::muted, parent);
    link->setFont(sized(font(), metrics::textSize));
    link->describe(u"Länka %1"_s.arg(entry.name), {});
    connect(link, &LabelButton::clicked, this, [this, entry] {
        accept();
        Q_EMIT linkRequested(entry);
    });
    return makeRow(new BucketLabel(entry.name, {}, parent), link, parent);
}

} // namespace wendlore

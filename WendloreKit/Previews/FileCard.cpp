#include "Previews/FileCard.h"

#include "Previews/FileKind.h"
#include "Previews/FileStatus.h"
#include "Previews/OpenExternally.h"

#include "Look/FileSymbol.h"
#include "Look/Metrics.h"
#include "Look/NoticeView.h"
#include "State/AppState.h"
#include "Vault/FileURL.h"

#include <QDateTime>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// "Kalkylark · 12 kB", and on a line of its own when it was changed; the kind alone for what cannot be read.
QString detailsOf(const FileURL& file)
{
    const auto status = statusOf(file);
    QString details = kindOf(file);
    if (!status)
        return details;
    const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
    if (S_ISREG(status->st_mode))
        details += u" · "_s + swedish.formattedDataSize(status->st_size, 1, QLocale::DataSizeSIFormat);
    return details + u"\nÄndrad "_s +
           swedish.toString(QDateTime::fromMSecsSinceEpoch(changeTime(*status)), u"d MMMM yyyy HH:mm"_s);
}

} // namespace

FileCard::FileCard(AppState& state, const FileURL& file, QWidget* parent)
    : QWidget(parent)
    , m_notice(new NoticeView(symbolOf(file), metrics::emptyIcon, this))
    , m_details(detailsOf(file))
{
    m_notice->setTitle(file.lastPathComponent());
    m_notice->setMessage(m_details);
    QPushButton* open = m_notice->addButton(u"Öppna"_s);
    connect(open, &QPushButton::clicked, &state, [&state, file] { openExternally(state.services(), file); });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_notice);
}

void FileCard::setRemark(const QString& text)
{
    m_notice->setMessage(m_details + u"\n\n"_s + text);
}

} // namespace wendlore

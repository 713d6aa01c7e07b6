#include "Previews/FileCard.h"

#include "Previews/FileKind.h"
#include "Previews/OpenExternally.h"

#include "Look/FileSymbol.h"
#include "Look/Metrics.h"
#include "Look/NoticeView.h"
#include "State/AppState.h"
#include "Vault/FileURL.h"

#include <QFileInfo>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// "Kalkylark · 12 kB", and on a line of its own when it was changed; the kind alone for what cannot be read.
QString detailsOf(const FileURL& file)
{
    const QFileInfo info(file.path());
    QString details = kindOf(file);
    if (!info.exists())
        return details;
    const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
    if (info.isFile())
        details += u" · "_s + swedish.formattedDataSize(info.size(), 1, QLocale::DataSizeSIFormat);
    return details + u"\nÄndrad "_s + swedish.toString(info.lastModified(), u"d MMMM yyyy HH:mm"_s);
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

#include "Previews/FileCard.h"

#include "Previews/FileKind.h"

#include "Look/FileSymbol.h"
#include "Look/Metrics.h"
#include "Look/NoticeView.h"
#include "State/AppState.h"
#include "State/Workspace.h"

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

FileCard::FileCard(AppState& state, QWidget* parent)
    : QWidget(parent)
    , m_notice(new NoticeView({}, metrics::emptyIcon, this))
{
    QPushButton* open = m_notice->addButton(u"Öppna"_s);
    connect(open, &QPushButton::clicked, this, [this, &state] { state.services().workspace.open(m_file); });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_notice);
}

void FileCard::setFile(const FileURL& file)
{
    m_file = file;
    m_notice->setSymbol(symbolOf(file));
    m_notice->setTitle(file.lastPathComponent());
    m_notice->setMessage(detailsOf(file));
}

} // namespace wendlore

#include "Previews/FileOpenElsewhereView.h"

#include "Look/NoticeView.h"
#include "State/OpenFileWindows.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int symbolSize = 36;

} // namespace

FileOpenElsewhereView::FileOpenElsewhereView(QWidget* parent)
    : QWidget(parent)
    , m_notice(new NoticeView(u"macwindow.on.rectangle"_s, symbolSize, this))
{
    m_notice->setSize(NoticeView::Size::small);
    m_notice->setTitle(u"Öppen i eget fönster"_s);
    QPushButton* fetch = m_notice->addButton(u"Hämta hit"_s);
    connect(fetch, &QPushButton::clicked, this,
            [this] { OpenFileWindows::shared().requestDismissal(m_file); });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_notice);
}

void FileOpenElsewhereView::setFile(const FileURL& file)
{
    m_file = file;
    m_notice->setMessage(file.lastPathComponent() +
                         u" redigeras i ett eget fönster. En fil kan bara ändras på ett ställe i taget."_s);
}

} // namespace wendlore

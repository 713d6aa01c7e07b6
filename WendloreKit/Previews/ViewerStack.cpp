#include "Previews/ViewerStack.h"

#include "Look/Colors.h"
#include "Look/NoticeView.h"
#include "Look/ProgressIndicator.h"

#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

ViewerStack::ViewerStack(QWidget* viewer)
    : QStackedWidget(viewer)
    , m_progress(new QWidget(this))
    , m_label(new QLabel(m_progress))
{
    m_label->setForegroundRole(mutedRole);
    auto* layout = new QVBoxLayout(m_progress);
    layout->addStretch();
    layout->addWidget(new ProgressIndicator(m_progress), 0, Qt::AlignHCenter);
    layout->addWidget(m_label, 0, Qt::AlignHCenter);
    layout->addStretch();
    addWidget(m_progress);
    showProgress();
    auto* whole = new QVBoxLayout(viewer);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addWidget(this, 1);
    viewer->setFocusProxy(this);
}

void ViewerStack::showProgress(const QString& label)
{
    m_label->setText(label);
    m_label->setVisible(!label.isEmpty());
    setCurrentWidget(m_progress);
}

NoticeView& ViewerStack::showMessage(const QString& text, int symbolSize)
{
    auto* notice = new NoticeView(u"exclamationmark.triangle"_s, symbolSize);
    notice->setMessage(text);
    showContent(notice);
    m_content = nullptr;
    return *notice;
}

void ViewerStack::showContent(QWidget* content)
{
    QWidget* const before = currentWidget();
    addWidget(content);
    setCurrentWidget(content);
    if (before != m_progress) {
        removeWidget(before);
        before->deleteLater(); // a button of it may be what brought us here
    }
    m_content = content;
    setFocusProxy(content);
}

} // namespace wendlore

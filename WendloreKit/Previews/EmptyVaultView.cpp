#include "Previews/EmptyVaultView.h"

#include "Look/Metrics.h"
#include "Look/NoticeView.h"
#include "State/AppState.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

EmptyVaultView::EmptyVaultView(AppState& state, QWidget* parent)
    : QWidget(parent)
{
    auto* notice = new NoticeView(u"folder"_s, metrics::emptyIcon, this);
    notice->setTitle(u"Ingen bucket öppen"_s);
    notice->setMessage(u"Välj en mapp som din bucket för att börja."_s);
    QPushButton* choose = notice->addButton(u"Öppna bucket…"_s);
    choose->setDefault(true);
    connect(choose, &QPushButton::clicked, &state, &AppState::pickVault);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(notice);
}

} // namespace wendlore

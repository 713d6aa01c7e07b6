#include "Platform/VaultLocationAccessory.h"

#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace wendlore {

VaultLocationAccessory::VaultLocationAccessory(std::vector<CloudLocation> locations, QFileDialog* panel)
    : m_panel(panel)
    , m_locations(std::move(locations))
{
    auto* menu = new QComboBox;
    menu->addItem(u"Senast använda"_s);
    menu->insertSeparator(1);
    for (const CloudLocation& location : m_locations)
        menu->addItem(location.name);
    connect(menu, &QComboBox::activated, this, &VaultLocationAccessory::pick);

    auto* label = new QLabel(u"Plats:"_s);
    label->setBuddy(menu);
    menu->setAccessibleName(u"Plats"_s);
    auto* row = new QHBoxLayout(this);
    row->setSpacing(8);
    row->setContentsMargins(16, 10, 16, 10);
    row->addWidget(label);
    row->addWidget(menu);
    row->addStretch();
}

void VaultLocationAccessory::pick(int index)
{
    const int location = index - 2;
    if (m_panel && location >= 0 && location < int(m_locations.size()))
        m_panel->setDirectory(QFile::decodeName(m_locations[size_t(location)].url.bytes()));
}

} // namespace wendlore

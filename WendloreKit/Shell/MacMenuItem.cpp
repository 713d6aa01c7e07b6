#include "Shell/MacMenuItem.h"

#include "Look/StyleMenus.h"
#include "Look/Symbols.h"

#include <QMenu>

namespace wendlore {

void addItems(QMenu& menu, const std::vector<MacMenuItem>& items)
{
    for (const MacMenuItem& item : items) {
        if (item.isDivider) {
            menu.addSeparator();
            continue;
        }
        QAction* entry = menu.addAction(item.title);
        if (!item.systemImage.isEmpty())
            entry->setIcon(symbolIcon(item.systemImage));
        entry->setProperty(destructiveProperty, item.isDestructive);
        QObject::connect(entry, &QAction::triggered, &menu, item.action);
    }
}

} // namespace wendlore

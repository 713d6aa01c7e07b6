#pragma once

#include <QString>

#include <functional>
#include <vector>

class QMenu;

namespace wendlore {

/// One entry of a context menu: a title with an action, or a divider, which has neither.
struct MacMenuItem final
{
    QString title;
    QString systemImage; ///< the symbol before the title; empty for none
    std::function<void()> action;
    bool isDestructive = false;
    bool isDivider = false;

    [[nodiscard]] static MacMenuItem divider() { return {{}, {}, {}, false, true}; }
};

/// Adds `items` to `menu`, in their order.
void addItems(QMenu& menu, const std::vector<MacMenuItem>& items);

} // namespace wendlore

#include "Wendlores/OpenLocation.h"

#include "State/AppState.h"

#include <algorithm>

namespace wendlore {

void openLocation(AppState& state, const FileURL& location)
{
    if (location.isDirectory()) {
        state.addVault(location);
        return;
    }
    const auto holdsIt = [&location](const FileURL& vault) { return location.isBelow(vault); };
    const auto& open = state.vaultURL();
    if (!open || !holdsIt(*open)) {
        const auto bucket = std::ranges::find_if(state.vaults(), holdsIt);
        state.addVault(bucket != state.vaults().end() ? FileURL(*bucket)
                                                      : location.deletingLastPathComponent());
    }
    state.setSelectedFile(location);
}

} // namespace wendlore

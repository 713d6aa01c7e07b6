#include "Wendlores/OpenLocation.h"

#include "State/AppState.h"

namespace wendlore {

void openLocation(AppState& state, const FileURL& location)
{
    if (location.isDirectory()) {
        state.addVault(location);
        return;
    }
    const auto bucket = state.bucketHolding(location);
    if (!bucket || bucket != state.vaultURL())
        state.addVault(bucket.value_or(location.deletingLastPathComponent()));
    state.setSelectedFile(location);
}

} // namespace wendlore

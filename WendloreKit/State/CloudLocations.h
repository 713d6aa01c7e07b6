#pragma once

#include "Vault/FileURL.h"

#include <QString>

#include <optional>
#include <vector>

namespace wendlore {

/// A folder in the user's home that a cloud service synchronises.
struct CloudLocation final
{
    QString id;   ///< the folder's path
    QString name; ///< as the user sees it
    FileURL url;
    int rank = 0; ///< the provider's place in the order, smallest first

    friend bool operator==(const CloudLocation&, const CloudLocation&) = default;
    friend size_t qHash(const CloudLocation& location, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, location.id, location.name, location.url, location.rank);
    }
};

/// Finds the folders of cloud services.
namespace CloudLocations {

/// How a provider's folder is shown.
struct Label final
{
    QString name;
    int rank = 0;

    friend bool operator==(const Label&, const Label&) = default;
};

/// The label of a folder named `folderName` among the providers' folders; nothing when no provider is known
/// by it.
[[nodiscard]] std::optional<Label> label(const QString& folderName);

/// The cloud folders below `home` whose contents can be listed, in the order to show them in.
[[nodiscard]] std::vector<CloudLocation> available(const FileURL& home);
/// Those of the user.
[[nodiscard]] std::vector<CloudLocation> available();

} // namespace CloudLocations

} // namespace wendlore

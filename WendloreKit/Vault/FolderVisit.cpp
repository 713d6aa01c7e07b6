#include "Vault/FolderVisit.h"

#include <filesystem>
#include <vector>

namespace wendlore {

std::size_t visitEverything(const FileURL& root)
{
    namespace fs = std::filesystem;
    std::size_t items = 0;
    std::vector<fs::path> waiting{root.bytes().toStdString()};
    while (!waiting.empty()) {
        const fs::path folder = std::move(waiting.back());
        waiting.pop_back();
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            ++items;
            std::error_code unknown;
            if (entry->symlink_status(unknown).type() == fs::file_type::directory)
                waiting.push_back(entry->path());
        }
    }
    return items;
}

} // namespace wendlore

#pragma once

#include "Editor/Scheduler.h"
#include "State/Services.h"
#include "Vault/FileURL.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <optional>

namespace wendlore {

class FileCoordinator;

/// What a viewer shows of `file`: a file that a cloud program has yet to bring is asked for first, and one
/// that is being written is waited for. Nothing when it cannot be read or is larger than `limit` bytes.
/// Blocks until the bytes are there: to be called in the background.
[[nodiscard]] std::optional<QByteArray> readForViewing(FileCoordinator& coordinator, const FileURL& file,
                                                       qint64 limit);

/// Reads `file` in the background as above, makes there of its bytes what `make` makes of them, and hands
/// that to `show`, unless the returned task is gone by then.
template <typename Make, typename Show>
[[nodiscard]] std::unique_ptr<ScheduledTask> readInBackground(const Services& services, const FileURL& file,
                                                              qint64 limit, Make make, Show show)
{
    return services.scheduler.inBackground([&coordinator = services.coordinator, file, limit,
                                            make = std::move(make),
                                            show = std::move(show)]() -> std::function<void()> {
        return [show, made = make(readForViewing(coordinator, file, limit))] { show(made); };
    });
}

} // namespace wendlore

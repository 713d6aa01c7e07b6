#pragma once

#include "Vault/FileURL.h"

#include <QtGlobal>

namespace wendlore {

/// Keeps other processes, and other locks in this one, from the same lock file while it lives.
class FileLock final
{
public:
    /// Waits for the lock; makes the file when it is missing.
    explicit FileLock(const FileURL& file);
    ~FileLock();
    Q_DISABLE_COPY_MOVE(FileLock)

    /// False when the file system does not let us lock.
    [[nodiscard]] bool isHeld() const { return m_isHeld; }

private:
    int m_descriptor = -1;
    bool m_isHeld = false;
};

} // namespace wendlore

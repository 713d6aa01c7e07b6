#pragma once

#include "Vault/FileSystemCalls.h"

#include <QByteArray>

namespace wendlore {

/// What of the file system a process is left with, by the kernel's Landlock: made beforehand, taken on by the
/// process itself, for good, with everything that it starts. Newer kernels keep it from the network and from
/// signals to others too. Does nothing where the kernel has none.
class FileRules final
{
public:
    enum class Access { read, readAndRun, makeSockets, everything };

    /// Rules that leave nothing.
    FileRules();

    /// Leaves the file, or what is in the folder. What is not there needs no rule.
    void leave(const QByteArray& path, Access access);
    /// Takes the rules on. Needs a process that can gain no rights any more; nothing but calls of the kernel,
    /// so it may stand between a fork and the start of a program.
    void apply() const;

private:
    quint64 m_rights = 0;
    Descriptor m_rules;
};

} // namespace wendlore

#pragma once

#include <QByteArray>

#include <functional>

namespace wendlore {

/// How a child process ended, and what it had to say.
struct ChildResult final
{
    bool hasExited = false; ///< false when a signal ended it
    QByteArray said;
};

/// A copy of the test's process that runs `work` and ends; `work` gives what the test wants to know. The test
/// goes on meanwhile and waits with `finish`.
class ChildProcess final
{
public:
    explicit ChildProcess(const std::function<QByteArray()>& work);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Waits for the child's end.
    ChildResult finish();
    [[nodiscard]] bool isRunning() const;
    void kill() const;

    /// Runs `work` in a child and waits.
    static ChildResult run(const std::function<QByteArray()>& work) { return ChildProcess(work).finish(); }

private:
    int m_process = -1;
    int m_pipe = -1;
};

/// Whether the tests run as the superuser, whom no permission stops.
[[nodiscard]] bool isSuperuser();

/// Makes this process, a child, an ordinary user for good.
void becomeOrdinaryUser();

/// The user and group that `becomeOrdinaryUser` turns the superuser into.
constexpr unsigned ordinaryUser = 65534;

/// Gives this process, a child, a file system of its own of `bytes` bytes at the folder `path`. False where
/// the system does not allow it.
[[nodiscard]] bool mountSmallFileSystem(const QByteArray& path, qint64 bytes);

/// Leaves this process, a child, `bytes` bytes of room at the folder `path`: by a small file system of its
/// own, or where that is not allowed by a limit on the size of every file.
void limitRoom(const QByteArray& path, qint64 bytes);

} // namespace wendlore

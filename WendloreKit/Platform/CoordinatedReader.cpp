#include "Platform/CoordinatedReader.h"

#include "Vault/FolderVisit.h"
#include "Vault/Log.h"
#include "Vault/ReadFile.h"

#include <QThread>
#include <QThreadPool>

#include <algorithm>
#include <chrono>

#include <fcntl.h>

namespace wendlore {

namespace {

using namespace std::chrono_literals;

constexpr int maximumReadings = 80;
/// Longer than the steps in which file systems count time: changes closer to each other can carry one stamp.
constexpr auto timeStep = 15ms;

std::chrono::nanoseconds duration(const timespec& time)
{
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

bool isSameVersion(const struct stat& left, const struct stat& right)
{
    return left.st_size == right.st_size && duration(left.st_mtim) == duration(right.st_mtim) &&
           duration(left.st_ctim) == duration(right.st_ctim);
}

/// Whether the file changed so shortly before that one more change would not show in its times.
bool isFresh(const struct stat& status)
{
    const std::chrono::nanoseconds now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::abs(now - duration(status.st_ctim)) < timeStep;
}

Descriptor openForReading(FileSystemCalls& calls, const FileURL& url)
{
    return Descriptor(calls, calls.openAt(AT_FDCWD, url.bytes().constData(), O_RDONLY | O_NONBLOCK));
}

} // namespace

CoordinatedReader::CoordinatedReader(FileSystemCalls& calls)
    : m_calls(calls)
{}

void CoordinatedReader::startDownloading(const FileURL& url)
{
    struct stat status = {};
    const bool isKnown = m_calls.statusAt(AT_FDCWD, url.bytes().constData(), &status) == 0;
    if (!isKnown || !S_ISREG(status.st_mode) || status.st_size == 0 || status.st_blocks > 0)
        return;
    QThreadPool::globalInstance()->start([url, &calls = m_calls] {
        const Descriptor file = openForReading(calls, url);
        char first = 0;
        if (!file.isOpen() || calls.read(file.get(), &first, 1, 0) == -1)
            qCWarning(filesLog) << "cannot ask for the download of" << url.path();
    });
}

std::optional<QByteArray> CoordinatedReader::readWhole(const FileURL& url)
{
    QByteArray bytes;
    for (int reading = 0; reading < maximumReadings; ++reading) {
        switch (readOnce(url, bytes)) {
        case Reading::Whole:
            return bytes;
        case Reading::Impossible:
            return std::nullopt;
        case Reading::Moving:
            QThread::usleep(std::chrono::microseconds(timeStep).count());
        }
    }
    qCWarning(filesLog) << url.path() << "keeps changing and was not read";
    return std::nullopt;
}

void CoordinatedReader::visitEverythingBelow(const FileURL& folder)
{
    visitEverything(folder);
}

CoordinatedReader::Reading CoordinatedReader::readOnce(const FileURL& url, QByteArray& bytes)
{
    const Descriptor file = openForReading(m_calls, url);
    struct stat before = {};
    if (!file.isOpen() || m_calls.status(file.get(), &before) == -1 || !S_ISREG(before.st_mode))
        return Reading::Impossible;
    const bool isSettled = !isFresh(before);

    auto read = readFile(file.get(), m_calls);
    if (!read)
        return Reading::Impossible;
    bytes = std::move(*read);

    struct stat after = {};
    if (m_calls.status(file.get(), &after) == -1)
        return Reading::Impossible;
    return isSettled && isSameVersion(before, after) && bytes.size() == after.st_size ? Reading::Whole
                                                                                      : Reading::Moving;
}

} // namespace wendlore

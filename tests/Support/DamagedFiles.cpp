#include "Support/DamagedFiles.h"

#include "Fakes/ChildProcess.h"

#include <QRandomGenerator>

#include <cstdio>
#include <sys/resource.h>
#include <unistd.h>

namespace wendlore {

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr rlim_t memoryLimit = RLIM_INFINITY; // the sanitizer maps terabytes for itself
#else
constexpr rlim_t memoryLimit = 4'000'000'000;
#endif
constexpr rlim_t fileLimit = 64'000'000;
constexpr int changesAtMost = 20;

} // namespace

QByteArray damagedCopy(QByteArray bytes, QRandomGenerator& random)
{
    for (int change = random.bounded(1, changesAtMost); change > 0; --change)
        bytes[random.bounded(int(bytes.size()))] = char(random.bounded(256));
    if (random.bounded(4) == 0)
        bytes.truncate(random.bounded(int(bytes.size())));
    return bytes;
}

bool survivesDamage(const QByteArray& file, const std::function<void(const QByteArray&)>& open)
{
    const bool isLong = qEnvironmentVariableIsSet("LONG");
    const ChildResult child = ChildProcess::run([&] {
        const rlimit memory{memoryLimit, memoryLimit};
        ::setrlimit(RLIMIT_DATA, &memory);
        const rlimit size{fileLimit, fileLimit};
        ::setrlimit(RLIMIT_FSIZE, &size);
        ::alarm(isLong ? 600 : 60);
        std::fclose(stderr); // decoders complain there, or to the toolkit
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        QRandomGenerator random(11);
        for (int left = isLong ? 2000 : 60; left > 0; --left)
            open(damagedCopy(file, random));
        return QByteArray("alive");
    });
    return child.hasExited && child.said == "alive";
}

} // namespace wendlore

#include "Decoder/OggTimes.h"

#include <QSet>
#include <QtEndian>

#include <array>
#include <numeric>

namespace wendlore {

namespace {

/// In samples; more than the beginnings of sounds take.
constexpr qint64 delay = 2048;

constexpr std::array<quint32, 256> checksumSteps()
{
    constexpr quint32 polynomial = 0x04c11db7;
    std::array<quint32, 256> steps = {};
    for (quint32 byte = 0; byte < steps.size(); ++byte) {
        quint32 step = byte << 24;
        for (int bit = 0; bit < 8; ++bit)
            step = (step << 1) ^ ((step >> 31) * polynomial);
        steps[byte] = step;
    }
    return steps;
}

quint32 checksum(QByteArrayView bytes)
{
    static constexpr auto steps = checksumSteps();
    return std::accumulate(bytes.begin(), bytes.end(), quint32(0), [](quint32 sum, char byte) {
        return (sum << 8) ^ steps[(sum >> 24) ^ uchar(byte)];
    });
}

/// A page of an Ogg file, which is changed where it lies.
class Page final
{
public:
    /// The page that `bytes` begin with; `isThere` tells whether they do, with a whole one.
    Page(char* bytes, qsizetype size)
        : m_bytes(bytes)
    {
        const QByteArrayView view(bytes, size);
        if (!view.startsWith("OggS") || size < fixedSize)
            return;
        const qsizetype segments = uchar(bytes[fixedSize - 1]);
        m_start = fixedSize + segments;
        if (m_start > size)
            return;
        const auto lengths = view.sliced(fixedSize, segments);
        const qsizetype end = std::accumulate(lengths.begin(), lengths.end(), m_start,
                                              [](qsizetype sum, char length) { return sum + uchar(length); });
        m_size = end <= size ? end : 0;
    }

    [[nodiscard]] bool isThere() const { return m_size > 0; }
    [[nodiscard]] qsizetype size() const { return m_size; }
    [[nodiscard]] quint32 stream() const { return qFromLittleEndian<quint32>(m_bytes + 14); }
    /// Whether a stream of sound of the kinds that begin too early begins here.
    [[nodiscard]] bool beginsSound() const
    {
        const QByteArrayView contents(m_bytes + m_start, m_size - m_start);
        return contents.startsWith("\1vorbis") || contents.startsWith("OpusHead");
    }

    void delaySound()
    {
        constexpr char isLast = 4; // what is last is cut by its time, which is no longer right
        char* const time = m_bytes + 6;
        char* const sum = m_bytes + 22;
        if (const auto samples = qFromLittleEndian<qint64>(time); samples > 0)
            qToLittleEndian<quint64>(quint64(samples) + delay, time);
        m_bytes[5] = char(m_bytes[5] & ~isLast);
        qToLittleEndian<quint32>(0, sum);
        qToLittleEndian(checksum({m_bytes, m_size}), sum);
    }

private:
    static constexpr qsizetype fixedSize = 27;

    char* m_bytes;
    qsizetype m_start = 0;
    qsizetype m_size = 0;
};

} // namespace

QByteArray oggWithLaterSound(QByteArray file)
{
    QSet<quint32> sounds;
    for (qsizetype at = 0; at < file.size();) {
        Page page(file.data() + at, file.size() - at);
        if (!page.isThere())
            break;
        if (page.beginsSound())
            sounds.insert(page.stream());
        if (sounds.contains(page.stream()))
            page.delaySound();
        at += page.size();
    }
    return file;
}

} // namespace wendlore

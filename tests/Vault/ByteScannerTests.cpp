#include "Vault/ByteScanner.h"

#include <QRandomGenerator>
#include <QTest>

#include <string>

using namespace wendlore;

namespace {

BytePattern pattern(std::uint8_t offset1, char value1, std::uint8_t mask1, std::uint8_t offset2, char value2,
                    std::uint8_t mask2)
{
    return {{offset1, static_cast<std::uint8_t>(value1), mask1},
            {offset2, static_cast<std::uint8_t>(value2), mask2}};
}

bool stands(const BytePattern::Probe& probe, const std::string& text, std::size_t at)
{
    return (static_cast<std::uint8_t>(text[at + probe.offset]) | probe.mask) == probe.value;
}

bool begins(const BytePattern& pattern, const std::string& text, std::size_t at)
{
    return pattern.beginsAt(reinterpret_cast<const std::uint8_t*>(text.data()) + at);
}

/// The same, one byte at a time.
std::size_t plainFind(const std::vector<BytePattern>& patterns, const std::string& text, std::size_t size,
                      std::size_t from)
{
    for (std::size_t at = from; at < size; ++at) {
        for (const BytePattern& each : patterns) {
            if (stands(each.first, text, at) && stands(each.second, text, at) && begins(each, text, at))
                return at;
        }
    }
    return size;
}

} // namespace

class ByteScannerTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutPatternsNothingIsFound();
    void thePatternsFirstBytesAreCompared();
    void findsWhatAPlainScanFinds_data();
    void findsWhatAPlainScanFinds();
};

void ByteScannerTests::withoutPatternsNothingIsFound()
{
    const ByteScanner scanner;
    const std::string text(10 + ByteScanner::padding, 'x');

    QVERIFY(scanner.isEmpty());
    QCOMPARE(scanner.find(reinterpret_cast<const std::uint8_t*>(text.data()), 10, 0), 10U);
}

void ByteScannerTests::thePatternsFirstBytesAreCompared()
{
    BytePattern wanted = pattern(0, 'm', 0x20, 3, 'e', 0x20);
    const auto beginsAt = [&](const std::string& text) {
        return begins(wanted, text + std::string(8, ' '), 0);
    };
    QVERIFY(beginsAt("xyz"));

    wanted.setBeginning("m\xC3\xB6te", std::string_view(" \0   ", 5));

    QVERIFY(beginsAt("M\xC3\x96TE igen"));
    QVERIFY(beginsAt("m\xC3\xB6te"));
    QVERIFY(!beginsAt("m\xC3\xB6ta"));
    QVERIFY(!beginsAt("m\xE3\xB6te"));

    wanted.setBeginning("anteckningsbok", std::string(14, ' '));
    QVERIFY(beginsAt("ANTECKNING"));
}

void ByteScannerTests::findsWhatAPlainScanFinds_data()
{
    QTest::addColumn<int>("patterns");
    QTest::addColumn<bool>("isWidest");
    for (int patterns = 1; patterns <= int(ByteScanner::maximumPatterns); ++patterns) {
        QTest::addRow("%d patterns, widest", patterns) << patterns << true;
        QTest::addRow("%d patterns, base", patterns) << patterns << false;
    }
}

void ByteScannerTests::findsWhatAPlainScanFinds()
{
    QFETCH(int, patterns);
    QFETCH(bool, isWidest);
    QRandomGenerator random(quint32(patterns) * 7U + (isWidest ? 1U : 0U));
    const auto letter = [&] { return "abABåäÖ"[random.bounded(9)]; };

    for (int round = 0; round < 300; ++round) {
        std::vector<BytePattern> wanted;
        for (int i = 0; i < patterns; ++i) {
            wanted.push_back(pattern(std::uint8_t(random.bounded(4)), letter(), 0,
                                     std::uint8_t(random.bounded(int(ByteScanner::maximumOffset))),
                                     char(letter() | 0x20), 0x20));
            if (random.bounded(2) == 0)
                wanted.back().setBeginning(std::string(1, char(letter() | 0x20)), " ");
        }
        const ByteScanner scanner(wanted, isWidest ? ByteScanner::Width::widest : ByteScanner::Width::base);
        std::string text;
        const std::size_t size = random.bounded(200U);
        while (text.size() < size + ByteScanner::padding)
            text += letter();
        const std::size_t from = random.bounded(quint32(size) + 1U);

        QCOMPARE(scanner.find(reinterpret_cast<const std::uint8_t*>(text.data()), size, from),
                 plainFind(wanted, text, size, from));
    }
}

QTEST_APPLESS_MAIN(ByteScannerTests)
#include "ByteScannerTests.moc"

#include "State/NavigationHistory.h"

#include <QRandomGenerator>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

FileURL note(const QString& name)
{
    return FileURL::file(u"/bucket/"_s + name + u".md"_s);
}

/// A history and the files that exist, driven as the selection drives it.
class Visits final
{
public:
    void select(const QString& name) { show(note(name)); }
    void clear() { m_current.reset(); }
    void remove(const QString& name) { m_deleted.insert(note(name)); }
    void back() { step(history.back(exists())); }
    void forward() { step(history.forward(exists())); }

    [[nodiscard]] QString current() const
    {
        return m_current ? m_current->nameWithoutExtension() : QString();
    }
    [[nodiscard]] QString entries() const
    {
        QStringList names;
        for (const FileURL& entry : history.entries())
            names.append(entry.nameWithoutExtension());
        return names.join(u' ');
    }

    NavigationHistory history;

private:
    [[nodiscard]] NavigationHistory::Exists exists() const
    {
        return [this](const FileURL& file) { return !m_deleted.contains(file); };
    }
    void show(const FileURL& file)
    {
        const auto previous = std::exchange(m_current, file);
        history.record(previous, m_current);
    }
    void step(const std::optional<FileURL>& entry)
    {
        if (entry)
            m_current = entry;
    }

    std::optional<FileURL> m_current;
    QSet<FileURL> m_deleted;
};

/// The same rules told in another way: what lies behind (the current entry last) and what lies ahead.
struct TwoStacks final
{
    void record(const std::optional<FileURL>& previous, const std::optional<FileURL>& current)
    {
        if (!current || previous == current)
            return;
        ahead.clear();
        if (behind.isEmpty() || behind.last() != *current)
            behind.append(*current);
    }
    std::optional<FileURL> back(const QSet<FileURL>& existing)
    {
        if (behind.size() < 2)
            return std::nullopt;
        ahead.prepend(behind.takeLast());
        while (!behind.isEmpty() && !existing.contains(behind.last()))
            behind.removeLast();
        return behind.isEmpty() ? std::nullopt : std::optional(behind.last());
    }
    std::optional<FileURL> forward(const QSet<FileURL>& existing)
    {
        if (behind.isEmpty())
            return std::nullopt;
        while (!ahead.isEmpty()) {
            const FileURL next = ahead.takeFirst();
            if (!existing.contains(next))
                continue;
            behind.append(next);
            return next;
        }
        return std::nullopt;
    }
    [[nodiscard]] QList<FileURL> entries() const { return behind + ahead; }
    [[nodiscard]] int index() const { return static_cast<int>(behind.size()) - 1; }

    QList<FileURL> behind;
    QList<FileURL> ahead;
};

} // namespace

class NavigationHistoryTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void selectingAfterGoingBackDropsTheForwardPart();
    void onlyAnImmediateRepeatIsSuppressed();
    void selectingTheSameFileTwiceAddsItOnce();
    void clearingTheSelectionAddsNothing();
    void selectingTheLastEntryAfterClearingAddsNothing();
    void goingBackSkipsDeletedFiles();
    void goingBackSkipsSeveralDeletedFilesInARow();
    void goingForwardSkipsDeletedFiles();
    void goingForwardToDeletedFilesOnlyStaysWhereItIs();
    void goingBackToADeletedFileLeavesNoPlaceToGo();
    void nextSelectionStartsAfreshWhenNoPlaceIsLeft();
    void stepsAtTheEndsDoNothing();
    void agreesWithANaiveModelInRandomUse();
};

void NavigationHistoryTests::startsEmpty()
{
    const NavigationHistory history;

    QVERIFY(history.entries().empty());
    QCOMPARE(history.index(), -1);
    QVERIFY(!history.canGoBack());
    QVERIFY(!history.canGoForward());
}

void NavigationHistoryTests::selectingAfterGoingBackDropsTheForwardPart()
{
    Visits visits;
    visits.select(u"A"_s);
    visits.select(u"B"_s);
    visits.select(u"C"_s);

    visits.back();
    visits.back();
    QCOMPARE(visits.current(), u"A"_s);
    QCOMPARE(visits.history.index(), 0);

    visits.select(u"D"_s);
    QCOMPARE(visits.entries(), u"A D"_s);
    QCOMPARE(visits.history.index(), 1);
}

void NavigationHistoryTests::onlyAnImmediateRepeatIsSuppressed()
{
    Visits visits;
    visits.select(u"A"_s);
    visits.select(u"B"_s);
    visits.select(u"A"_s);

    QCOMPARE(visits.entries(), u"A B A"_s);
}

void NavigationHistoryTests::selectingTheSameFileTwiceAddsItOnce()
{
    Visits visits;
    visits.select(u"A"_s);
    visits.select(u"A"_s);

    QCOMPARE(visits.entries(), u"A"_s);
    QCOMPARE(visits.history.index(), 0);
}

void NavigationHistoryTests::clearingTheSelectionAddsNothing()
{
    NavigationHistory history;
    QVERIFY(history.record(std::nullopt, note(u"A"_s)));

    QVERIFY(!history.record(note(u"A"_s), std::nullopt));

    QCOMPARE(history.entries().size(), 1);
    QCOMPARE(history.index(), 0);
}

void NavigationHistoryTests::selectingTheLastEntryAfterClearingAddsNothing()
{
    Visits visits;
    visits.select(u"A"_s);
    visits.clear();
    visits.select(u"A"_s);

    QCOMPARE(visits.entries(), u"A"_s);
}

void NavigationHistoryTests::goingBackSkipsDeletedFiles()
{
    Visits visits;
    visits.select(u"A"_s);
    visits.select(u"B"_s);
    visits.select(u"C"_s);
    visits.remove(u"B"_s);

    visits.back();

    QCOMPARE(visits.current(), u"A"_s);
    QCOMPARE(visits.entries(), u"A C"_s);
    QCOMPARE(visits.history.index(), 0);
}

void NavigationHistoryTests::goingBackSkipsSeveralDeletedFilesInARow()
{
    Visits visits;
    for (const QString& name : {u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s})
        visits.select(name);
    visits.remove(u"B"_s);
    visits.remove(u"C"_s);
    visits.remove(u"D"_s);

    visits.back();

    QCOMPARE(visits.current(), u"A"_s);
    QCOMPARE(visits.entries(), u"A E"_s);
}

void NavigationHistoryTests::goingForwardSkipsDeletedFiles()
{
    Visits visits;
    visits.select(u"A"_s);
    visits.select(u"B"_s);
    visits.select(u"C"_s);
    visits.back();
    visits.back();
    visits.remove(u"B"_s);

    visits.forward();

    QCOMPARE(visits.current(), u"C"_s);
    QCOMPARE(visits.entries(), u"A C"_s);
    QCOMPARE(visits.history.index(), 1);
}

void NavigationHistoryTests::goingForwardToDeletedFilesOnlyStaysWhereItIs()
{
    Visits visits;
    visits.select(u"A"_s);
    visits.select(u"B"_s);
    visits.select(u"C"_s);
    visits.back();
    visits.back();
    visits.remove(u"B"_s);
    visits.remove(u"C"_s);

    visits.forward();

    QCOMPARE(visits.current(), u"A"_s);
    QCOMPARE(visits.entries(), u"A"_s);
    QCOMPARE(visits.history.index(), 0);
}

void NavigationHistoryTests::goingBackToADeletedFileLeavesNoPlaceToGo()
{
    Visits visits;
    visits.select(u"A"_s);
    visits.select(u"B"_s);
    visits.remove(u"A"_s);

    visits.back();

    QCOMPARE(visits.current(), u"B"_s);
    QCOMPARE(visits.entries(), u"B"_s);
    QCOMPARE(visits.history.index(), -1);
    QVERIFY(!visits.history.canGoBack());
    QVERIFY(!visits.history.canGoForward());
}

void NavigationHistoryTests::nextSelectionStartsAfreshWhenNoPlaceIsLeft()
{
    Visits visits;
    visits.select(u"A"_s);
    visits.select(u"B"_s);
    visits.remove(u"A"_s);
    visits.back();

    visits.select(u"C"_s);

    QCOMPARE(visits.entries(), u"C"_s);
    QCOMPARE(visits.history.index(), 0);
}

void NavigationHistoryTests::stepsAtTheEndsDoNothing()
{
    Visits visits;
    visits.back();
    visits.forward();
    QCOMPARE(visits.history.index(), -1);

    visits.select(u"A"_s);
    visits.select(u"B"_s);
    visits.forward();
    QCOMPARE(visits.history.index(), 1);
    visits.back();
    visits.back();
    QCOMPARE(visits.history.index(), 0);
    QCOMPARE(visits.current(), u"A"_s);
}

void NavigationHistoryTests::agreesWithANaiveModelInRandomUse()
{
    QRandomGenerator random(20240517);
    QSet<FileURL> existing;
    for (int number = 0; number < 8; ++number)
        existing.insert(note(QString::number(number)));
    const auto exists = [&](const FileURL& file) { return existing.contains(file); };
    NavigationHistory history;
    TwoStacks model;
    std::optional<FileURL> current;
    int steps = 0;

    for (int operation = 0; operation < 10000; ++operation) {
        const FileURL file = note(QString::number(random.bounded(8)));
        const int kind = random.bounded(10);
        if (kind < 3) {
            const auto previous = std::exchange(
                current, kind == 0 && random.bounded(4) == 0 ? std::nullopt : std::optional(file));
            history.record(previous, current);
            model.record(previous, current);
        } else if (kind < 8) {
            const bool isBack = kind < 6;
            const auto entry = isBack ? history.back(exists) : history.forward(exists);
            QCOMPARE(entry, isBack ? model.back(existing) : model.forward(existing));
            current = entry ? entry : current;
            steps += entry ? 1 : 0;
        } else if (kind == 8) {
            existing.remove(file);
        } else {
            existing.insert(file);
        }

        QCOMPARE(QList<FileURL>(history.entries().begin(), history.entries().end()), model.entries());
        QCOMPARE(history.index(), model.index());
        QCOMPARE(history.canGoBack(), model.behind.size() > 1);
        QCOMPARE(history.canGoForward(), !model.behind.isEmpty() && !model.ahead.isEmpty());
    }

    QVERIFY2(steps > 1000, "the random use has to reach the interesting states");
}

QTEST_GUILESS_MAIN(NavigationHistoryTests)
#include "NavigationHistoryTests.moc"

#include "Platform/UndoStackRegistrar.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QTest>
#include <QUndoStack>

using namespace wendlore;
using namespace Qt::StringLiterals;

/// Moves in a real undo stack.
class UndoStackRegistrarTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aMoveIsOfferedForUndoByName();
    void undoAndRedoGoBackAndForth();
    void severalMovesAreUndoneInOrder();
    void aMoveAfterAnUndoReplacesTheRedo();
    void aMoveThatDoesNothingIsNotOffered();
    void anUndoThatFailsIsNotOfferedAgain();

private:
    void move(const QString& item, const QString& folder)
    {
        m_state->moveFile(m_bucket->file(item), m_bucket->folder(folder), m_undo.get());
    }
    [[nodiscard]] bool lies(const QString& path) const { return m_bucket->exists(path); }

    std::unique_ptr<FakeServices> m_services;
    std::unique_ptr<Bucket> m_bucket;
    std::unique_ptr<AppState> m_state;
    std::unique_ptr<QUndoStack> m_stack;
    std::unique_ptr<UndoStackRegistrar> m_undo;
};

void UndoStackRegistrarTests::init()
{
    m_state.reset();
    m_services = std::make_unique<FakeServices>();
    m_bucket = std::make_unique<Bucket>(std::initializer_list<std::pair<const char*, const char*>>{
        {"Plan.md", "text"}, {"Idé.md", "idé"}, {"A/", ""}, {"B/", ""}});
    m_state = std::make_unique<AppState>(m_services->services());
    m_state->addVault(m_bucket->root());
    m_stack = std::make_unique<QUndoStack>();
    m_undo = std::make_unique<UndoStackRegistrar>(*m_stack);
}

void UndoStackRegistrarTests::aMoveIsOfferedForUndoByName()
{
    move(u"Plan.md"_s, u"A"_s);

    QVERIFY(lies(u"A/Plan.md"_s));
    QCOMPARE(m_stack->undoText(), u"Flytta"_s);
    QVERIFY(!m_stack->canRedo());
}

void UndoStackRegistrarTests::undoAndRedoGoBackAndForth()
{
    move(u"Plan.md"_s, u"A"_s);
    for (int round = 0; round < 3; ++round) {
        m_stack->undo();
        QVERIFY(lies(u"Plan.md"_s));
        QVERIFY(!m_stack->canUndo());
        QCOMPARE(m_stack->redoText(), u"Flytta"_s);

        m_stack->redo();
        QVERIFY(lies(u"A/Plan.md"_s));
        QVERIFY(!m_stack->canRedo());
        QCOMPARE(m_stack->undoText(), u"Flytta"_s);
    }
    QCOMPARE(m_bucket->read(u"A/Plan.md"_s), "text");
}

void UndoStackRegistrarTests::severalMovesAreUndoneInOrder()
{
    move(u"Plan.md"_s, u"A"_s);
    move(u"Idé.md"_s, u"A"_s);
    move(u"A/Plan.md"_s, u"B"_s);

    m_stack->undo();
    QVERIFY(lies(u"A/Plan.md"_s));
    m_stack->undo();
    QVERIFY(lies(u"Idé.md"_s));
    m_stack->undo();
    QVERIFY(lies(u"Plan.md"_s));

    m_stack->redo();
    m_stack->redo();
    m_stack->redo();
    QVERIFY(lies(u"B/Plan.md"_s));
    QVERIFY(lies(u"A/Idé.md"_s));
}

void UndoStackRegistrarTests::aMoveAfterAnUndoReplacesTheRedo()
{
    move(u"Plan.md"_s, u"A"_s);
    m_stack->undo();
    move(u"Idé.md"_s, u"A"_s);

    QVERIFY(!m_stack->canRedo());
    QCOMPARE(m_stack->count(), 1);
}

void UndoStackRegistrarTests::aMoveThatDoesNothingIsNotOffered()
{
    m_state->moveFile(m_bucket->file(u"Plan.md"_s), m_bucket->root(), m_undo.get());

    QCOMPARE(m_stack->count(), 0);
}

void UndoStackRegistrarTests::anUndoThatFailsIsNotOfferedAgain()
{
    move(u"Plan.md"_s, u"A"_s);
    m_bucket->write(u"Plan.md"_s, "någon annans");

    m_stack->undo();

    QCOMPARE(m_bucket->read(u"Plan.md"_s), "någon annans");
    QCOMPARE(m_bucket->read(u"A/Plan.md"_s), "text");
    QVERIFY(!m_stack->canUndo());
    QVERIFY(!m_stack->canRedo());
}

QTEST_GUILESS_MAIN(UndoStackRegistrarTests)
#include "UndoStackRegistrarTests.moc"

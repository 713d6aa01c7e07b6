#include "Shell/SearchView.h"

#include "Shell/SearchField.h"
#include "Shell/SearchResultDelegate.h"
#include "Shell/SearchResultsModel.h"

#include "Look/Colors.h"
#include "Look/Metrics.h"
#include "State/AppState.h"
#include "Vault/Blanks.h"

#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

SearchView::SearchView(AppState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_field(new SearchField(this))
    , m_stack(new QStackedWidget(this))
    , m_results(new QListView(m_stack))
    , m_nothing(new QLabel(u"Inga träffar"_s, m_stack))
    , m_model(new SearchResultsModel(state, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(metrics::inset);
    auto* fieldRow = new QHBoxLayout;
    fieldRow->setContentsMargins(metrics::inset, 0, metrics::inset, 0);
    fieldRow->addWidget(m_field);
    layout->addLayout(fieldRow);
    layout->addWidget(m_stack, 1);
    addResults();

    connect(m_field, &QLineEdit::textChanged, this, &SearchView::search);
    connect(m_field, &SearchField::endRequested, this, &SearchView::endRequested);
    connect(m_field, &SearchField::resultsRequested, this, &SearchView::goToResults);
    connect(m_field, &QLineEdit::returnPressed, this, &SearchView::openCurrentResult);
    connect(&state, &AppState::vaultURLChanged, this, &SearchView::search);
    connect(&state, &AppState::searchResultsChanged, this, &SearchView::showResults);
    connect(&state, &AppState::isSearchingChanged, this, &SearchView::showResults);
    connect(&state, &AppState::isSearchingChanged, this, &SearchView::openAwaitedResult,
            Qt::QueuedConnection);
    connect(&state, &AppState::selectedFileChanged, m_results->viewport(), qOverload<>(&QWidget::update));
    showResults();
}

void SearchView::addResults()
{
    m_results->setModel(m_model);
    m_results->setItemDelegate(new SearchResultDelegate(m_results));
    m_results->setAccessibleName(u"Sökresultat"_s);
    m_results->setFrameShape(QFrame::NoFrame);
    m_results->setUniformItemSizes(true);
    m_results->setSelectionMode(QAbstractItemView::NoSelection);
    m_results->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_results->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_results->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_results->setMouseTracking(true);
    m_results->viewport()->setAutoFillBackground(false);
    m_results->installEventFilter(this);
    m_nothing->setForegroundRole(mutedRole);
    m_nothing->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_nothing->setContentsMargins(metrics::inset, metrics::inset, metrics::inset, 0);
    m_stack->addWidget(m_results);
    m_stack->addWidget(m_nothing);
    connect(m_results, &QListView::clicked, this, &SearchView::open);
    connect(m_results, &QListView::activated, this, &SearchView::open);
}

void SearchView::start()
{
    m_field->setFocus();
    m_field->selectAll();
}

void SearchView::end()
{
    m_field->clear();
}

void SearchView::search()
{
    m_isResultAwaited = false;
    m_state.setSearchQuery(m_field->text());
    m_state.performSearchInBackground();
    showResults();
}

/// While a search runs, what the one before found stays where it is.
void SearchView::showResults()
{
    const bool isWanted = !withoutOuterBlanks(m_state.searchQuery()).isEmpty();
    const bool isNothingFound = isWanted && m_state.searchResults().empty() && !m_state.isSearching();
    m_stack->setCurrentWidget(isNothingFound ? static_cast<QWidget*>(m_nothing) : m_results);
}

void SearchView::goToResults()
{
    if (m_model->rowCount() == 0)
        return;
    if (!m_results->currentIndex().isValid())
        m_results->setCurrentIndex(m_model->index(0));
    m_results->setFocus(Qt::TabFocusReason);
}

/// The keys that lead away from the results.
bool SearchView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_results || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape)
        Q_EMIT endRequested();
    else if (key == Qt::Key_Up && m_results->currentIndex().row() <= 0)
        start();
    else
        return false;
    return true;
}

void SearchView::openCurrentResult()
{
    m_isResultAwaited = m_state.isSearching();
    if (m_isResultAwaited)
        return; // what is listed holds something else than what is looked for now
    const QModelIndex current = m_results->currentIndex();
    open(current.isValid() ? current : m_model->index(0));
}

void SearchView::openAwaitedResult()
{
    if (m_isResultAwaited && !m_state.isSearching())
        openCurrentResult();
}

void SearchView::open(const QModelIndex& result)
{
    if (result.isValid())
        m_state.openSearchHit(m_model->noteAt(result));
}

} // namespace wendlore

#pragma once

#include <QWidget>

class QLabel;
class QListView;
class QStackedWidget;

namespace wendlore {

class AppState;
class SearchField;
class SearchResultsModel;

/// The search through the open bucket: a field, and below it the notes that hold what stands there.
class SearchView final : public QWidget
{
    Q_OBJECT

public:
    explicit SearchView(AppState& state, QWidget* parent = nullptr);

    /// Puts the caret into the field.
    void start();
    /// Empties the field and the results.
    void end();

Q_SIGNALS:
    /// The user wants to see the tree again.
    void endRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addResults();
    void search();
    void showResults();
    void goToResults();
    void openCurrentResult();
    void openAwaitedResult();
    void open(const QModelIndex& result);

    AppState& m_state;
    SearchField* m_field;
    QStackedWidget* m_stack;
    QListView* m_results;
    QLabel* m_nothing;
    SearchResultsModel* m_model;
    /// Enter was pressed before the search for what stands in the field was over.
    bool m_isResultAwaited = false;
};

} // namespace wendlore

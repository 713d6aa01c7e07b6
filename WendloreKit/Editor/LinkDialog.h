#pragma once

#include "Look/Sheet.h"

#include <QStringList>

class QLineEdit;
class QListView;
class QModelIndex;
class QPushButton;
class QStackedWidget;
class QStringListModel;

namespace wendlore {

class SegmentedPicker;
class WebEditorController;

/// Asks for a link, which goes into the note: to one of the bucket's notes, or to an address.
class LinkDialog final : public Sheet
{
    Q_OBJECT

public:
    enum class Mode { note, url };

    LinkDialog(WebEditorController& controller, QStringList noteNames, QWidget* parent = nullptr);

    [[nodiscard]] Mode mode() const;
    void setMode(Mode mode);

protected:
    /// The search field keeps the keys while the arrow keys walk through the list.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget* makeNotePart();
    [[nodiscard]] QWidget* makeAddressPart();
    void showMode();
    void showNotes();
    /// The note names that hold the query, in their order.
    [[nodiscard]] QStringList filtered() const;
    void insertNote(const QModelIndex& row);
    void insertURL();

    WebEditorController& m_controller;
    QStringList m_noteNames;
    SegmentedPicker* m_picker;
    QStackedWidget* m_parts;
    QLineEdit* m_query = nullptr;
    QLineEdit* m_urlText = nullptr;
    QStackedWidget* m_list = nullptr;
    QListView* m_names = nullptr;
    QStringListModel* m_shown = nullptr;
    QPushButton* m_insert = nullptr;
};

} // namespace wendlore

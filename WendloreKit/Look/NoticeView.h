#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace wendlore {

class SymbolView;

/// Something to say in the middle of an empty pane: a large symbol, a title, a sentence, and perhaps a
/// button.
class NoticeView final : public QWidget
{
    Q_OBJECT

public:
    NoticeView(const QString& symbol, int symbolSize, QWidget* parent = nullptr);

    /// How loud it is: a whole empty window, or a part of the work.
    enum class Size { large, small };
    void setSize(Size size);
    void setSymbol(const QString& symbol);
    void setTitle(const QString& title);
    void setMessage(const QString& message);
    /// Adds the one button below; a default button stands in the accent colour.
    QPushButton* addButton(const QString& text);

private:
    SymbolView* m_symbol;
    QLabel* m_title;
    QLabel* m_message;
    QVBoxLayout* m_stack;
};

} // namespace wendlore

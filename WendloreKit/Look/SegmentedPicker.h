#pragma once

#include <QWidget>

#include <vector>

class QHBoxLayout;
class QRadioButton;

namespace wendlore {

/// A few alternatives side by side, one of which is chosen: by a click, or by the arrow keys.
class SegmentedPicker final : public QWidget
{
    Q_OBJECT

public:
    explicit SegmentedPicker(const QString& name, QWidget* parent = nullptr);

    /// Adds an alternative behind the others; the first one is chosen at first.
    void add(const QString& text);
    [[nodiscard]] int chosen() const;
    void choose(int index);

Q_SIGNALS:
    void chosenChanged(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    class Segment;

    QHBoxLayout* m_row;
    std::vector<QRadioButton*> m_segments;
};

} // namespace wendlore

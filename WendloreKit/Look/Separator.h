#pragma once

#include <QWidget>

namespace wendlore {

/// A short upright hairline between groups of buttons.
class Separator final : public QWidget
{
    Q_OBJECT

public:
    explicit Separator(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace wendlore

#pragma once

#include <QLabel>

namespace wendlore {

/// Plain text in the middle of a width of its own, as high as its lines need. A layout gives an ordinary
/// label that stands in the middle of it the height of another width.
class WrappedLabel final : public QLabel
{
public:
    explicit WrappedLabel(int width, QWidget* parent = nullptr)
        : QLabel(parent)
    {
        setTextFormat(Qt::PlainText);
        setAlignment(Qt::AlignCenter);
        setWordWrap(true);
        setFixedWidth(width);
    }

    [[nodiscard]] int heightForWidth(int) const override { return QLabel::heightForWidth(width()); }
};

} // namespace wendlore

#include "Shell/SheetText.h"

#include "Look/Colors.h"

namespace wendlore {

namespace {

constexpr int textWidth = 380;

} // namespace

QLabel* makeSheetText(const QString& text, Qt::TextFormat format, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(format);
    label->setText(text);
    label->setWordWrap(true);
    label->setFixedWidth(textWidth);
    label->setForegroundRole(mutedRole);
    return label;
}

} // namespace wendlore

#include "Look/Sheet.h"

#include "Look/Fonts.h"
#include "Look/Metrics.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int margin = 20;
constexpr int spacing = 14;
constexpr int headingSize = 15;
constexpr int fieldMargin = 6;

} // namespace

Sheet::Sheet(const QString& title, QWidget* parent)
    : QDialog(parent)
    , m_contents(new QVBoxLayout)
    , m_buttons(new QHBoxLayout)
{
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setBackgroundRole(QPalette::Base);
    auto* heading = new QLabel(title, this);
    heading->setFont(sized(font(), headingSize, QFont::DemiBold));
    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(margin, margin, margin, margin);
    stack->setSpacing(spacing);
    m_contents->setSpacing(spacing);
    m_buttons->setSpacing(metrics::inset);
    m_buttons->addStretch();
    stack->addWidget(heading);
    stack->addLayout(m_contents, 1);
    stack->addLayout(m_buttons);
}

QLineEdit* Sheet::makeField(const QString& placeholder)
{
    auto* field = new QLineEdit(this);
    field->setPlaceholderText(placeholder);
    field->setAccessibleName(placeholder);
    field->setTextMargins(fieldMargin, 0, fieldMargin, 0);
    return field;
}

QPushButton* Sheet::addButton(const QString& text)
{
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    m_buttons->addWidget(button);
    return button;
}

QPushButton* Sheet::addCancelButton()
{
    QPushButton* button = addButton(u"Avbryt"_s);
    connect(button, &QPushButton::clicked, this, &QDialog::reject);
    return button;
}

void Sheet::keyPressEvent(QKeyEvent* event)
{
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && button)
        button->click();
    else
        QDialog::keyPressEvent(event);
}

} // namespace wendlore

#include "Previews/FindBar.h"

#include "Look/Colors.h"
#include "Look/FlatButton.h"
#include "Look/Metrics.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int fieldWidth = 240;
constexpr int margin = 8;

} // namespace

FindBar* FindBar::seenIn(const QWidget& window)
{
    for (auto* bar : window.findChildren<FindBar*>()) {
        if (bar->parentWidget()->isVisible())
            return bar;
    }
    return nullptr;
}

FindBar::FindBar(QWidget* parent)
    : QWidget(parent)
    , m_field(new QLineEdit)
    , m_count(new QLabel)
{
    auto* previous = new IconButton(u"chevron.left"_s, u"Föregående träff"_s, u"Föregående träff (⇧↩)"_s);
    auto* next = new IconButton(u"chevron.right"_s, u"Nästa träff"_s, u"Nästa träff (↩)"_s);
    auto* done = new IconButton(u"xmark.circle.fill"_s, u"Stäng sökningen"_s, u"Stäng sökningen (Esc)"_s);
    m_field->setPlaceholderText(u"Sök i dokumentet"_s);
    m_field->setAccessibleName(u"Sök i dokumentet"_s);
    m_field->setMaximumWidth(fieldWidth);
    m_count->setForegroundRole(mutedRole);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(metrics::toolbarMargin, margin, metrics::toolbarMargin, margin);
    layout->addWidget(m_field);
    layout->addWidget(previous);
    layout->addWidget(next);
    layout->addWidget(m_count);
    layout->addStretch();
    layout->addWidget(done);
    connect(m_field, &QLineEdit::textChanged, this, [this] { search(words()); });
    connect(previous, &QToolButton::clicked, this, [this] { step(-1); });
    connect(next, &QToolButton::clicked, this, [this] { step(1); });
    connect(done, &QToolButton::clicked, this, &FindBar::close);
    hide();
}

QString FindBar::words() const
{
    return m_field->text().trimmed();
}

void FindBar::open()
{
    const bool isNew = isHidden();
    show();
    raise();
    m_field->setFocus();
    m_field->selectAll();
    if (isNew)
        search(words());
}

void FindBar::close()
{
    search({});
    hide();
    Q_EMIT closed();
}

void FindBar::showPlace(int current, int count, bool isAtItsEnd)
{
    if (count > 0)
        m_count->setText(u"%1 av %2"_s.arg(current).arg(count));
    else
        m_count->setText(isAtItsEnd && !words().isEmpty() ? u"Inga träffar"_s : QString());
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        step(event->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
    else
        QWidget::keyPressEvent(event);
}

} // namespace wendlore

#include "Previews/PdfFindBar.h"

#include "Editor/Scheduler.h"
#include "Look/Colors.h"
#include "Look/FlatButton.h"
#include "Look/Metrics.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Few enough that the first matches show at once.
constexpr int pagesAtATime = 8;
/// Nobody steps through more, and all of them are drawn.
constexpr int maximumMatches = 5000;
constexpr int fieldWidth = 240;
constexpr int margin = 8;

} // namespace

PdfFindBar::PdfFindBar(Scheduler& scheduler, std::shared_ptr<PdfDocument> document, int pageCount,
                       QWidget* parent)
    : QWidget(parent)
    , m_scheduler(scheduler)
    , m_document(std::move(document))
    , m_pageCount(pageCount)
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
    connect(m_field, &QLineEdit::textChanged, this, &PdfFindBar::search);
    connect(previous, &QToolButton::clicked, this, [this] { step(-1); });
    connect(next, &QToolButton::clicked, this, [this] { step(1); });
    connect(done, &QToolButton::clicked, this, &PdfFindBar::close);
    hide();
}

PdfFindBar::~PdfFindBar() = default;

void PdfFindBar::open()
{
    show();
    m_field->setFocus();
    m_field->selectAll();
    if (m_matches.isEmpty())
        search();
}

void PdfFindBar::close()
{
    m_searching.reset();
    m_matches.clear();
    m_current = -1;
    hide();
    Q_EMIT matchesChanged(m_matches, m_current);
    Q_EMIT closed();
}

void PdfFindBar::search()
{
    m_searching.reset();
    m_matches.clear();
    m_current = -1;
    if (m_field->text().trimmed().isEmpty())
        report();
    else
        searchFrom(0);
}

void PdfFindBar::searchFrom(int page)
{
    const int end = std::min(page + pagesAtATime, m_pageCount);
    m_searching = m_scheduler.inBackground(
        [this, document = m_document, page, end, words = m_field->text()]() -> std::function<void()> {
            QList<PdfMatch> found;
            for (int each = page; each < end; ++each)
                found += document->find(each, words);
            return [this, found, end] {
                m_matches += found;
                if (m_current < 0 && !m_matches.isEmpty())
                    m_current = 0;
                if (end < m_pageCount && m_matches.size() < maximumMatches)
                    searchFrom(end);
                else
                    m_searching.reset();
                report();
            };
        });
}

void PdfFindBar::step(int way)
{
    if (m_matches.isEmpty())
        return;
    const int count = int(m_matches.size());
    m_current = (m_current + way + count) % count;
    report();
}

void PdfFindBar::report()
{
    if (!m_matches.isEmpty())
        m_count->setText(u"%1 av %2"_s.arg(m_current + 1).arg(m_matches.size()));
    else
        m_count->setText(m_searching || m_field->text().trimmed().isEmpty() ? QString() : u"Inga träffar"_s);
    Q_EMIT matchesChanged(m_matches, m_current);
}

void PdfFindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        step(event->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
    else
        QWidget::keyPressEvent(event);
}

} // namespace wendlore

#include "Previews/PDFViewer.h"

#include "Previews/HtmlAddress.h"
#include "Previews/PdfFindBar.h"
#include "Previews/PDFKitView.h"
#include "Previews/PdfPageBar.h"
#include "Previews/PdfPasswordForm.h"
#include "Previews/ReadForViewing.h"
#include "Previews/ViewerStack.h"

#include "Editor/Scheduler.h"
#include "State/AppState.h"
#include "State/Workspace.h"

#include <QKeyEvent>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Larger files are opened where they lie.
constexpr qint64 maximumSizeInMemory = 256LL << 20;
constexpr int messageSymbol = 32;

bool isSearchKey(const QKeyEvent& event)
{
    return event.matches(QKeySequence::Find);
}

} // namespace

struct PDFViewer::Opened final
{
    PdfDocument::State state = PdfDocument::State::damaged;
    QList<QSizeF> pages;
};

PDFViewer::PDFViewer(AppState& state, const FileURL& file, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_file(file)
    , m_stack(new ViewerStack(this))
    , m_document(std::make_shared<PdfDocument>())
{
    open({});
}

PDFViewer::~PDFViewer()
{
    // What goes on in the background would only keep others from their turn.
    m_document->close();
}

void PDFViewer::open(const QString& password)
{
    m_opening = readInBackground(
        m_state.services(), m_file, maximumSizeInMemory,
        [file = m_file, document = m_document, password](const auto& bytes) {
            Opened opened;
            opened.state = bytes ? document->open(*bytes, password) : document->open(file, password);
            if (opened.state == PdfDocument::State::ready)
                opened.pages = document->pageSizes();
            return opened;
        },
        [this](const Opened& opened) { didOpen(opened); });
}

void PDFViewer::didOpen(const Opened& opened)
{
    m_opening.reset();
    switch (opened.state) {
    case PdfDocument::State::ready:
        showPages(opened.pages);
        break;
    case PdfDocument::State::locked:
        askForPassword();
        break;
    case PdfDocument::State::damaged:
        m_stack->showMessage(u"Kunde inte ladda PDF:en"_s, messageSymbol);
        break;
    }
}

void PDFViewer::askForPassword()
{
    if (m_form) {
        m_form->refuse();
        return;
    }
    m_form = new PdfPasswordForm;
    connect(m_form, &PdfPasswordForm::passwordGiven, this, &PDFViewer::open);
    m_stack->showContent(m_form);
}

void PDFViewer::showPages(const QList<QSizeF>& pages)
{
    Scheduler& scheduler = m_state.services().scheduler;
    m_pages = new PDFKitView(scheduler, m_document, pages);
    m_pages->setAccessibleName(accessibleName().isEmpty() ? m_file.lastPathComponent() : accessibleName());
    m_findBar = new PdfFindBar(scheduler, m_document, int(pages.size()), this);
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, m_findBar);
    connect(m_findBar, &PdfFindBar::matchesChanged, m_pages, &PDFKitView::showMatches);
    connect(m_findBar, &PdfFindBar::closed, m_pages, [this] { m_pages->setFocus(); });
    // Another file may take this one's place: not in the middle of the click.
    connect(m_pages, &PDFKitView::linkClicked, this, &PDFViewer::follow, Qt::QueuedConnection);
    auto* bar = new PdfPageBar(*m_pages);
    connect(bar, &PdfPageBar::searchWanted, m_findBar, &PdfFindBar::open);
    m_stack->showContent(m_pages);
}

void PDFViewer::follow(const QUrl& link)
{
    const QUrl address = pageAddress(m_file).resolved(link);
    switch (actionOfLink(address, m_file)) {
    case LinkAction::openOutside:
        m_state.services().workspace.open(address);
        break;
    case LinkAction::openFile:
        m_state.openLinkedFile(*fileOfAddress(address));
        break;
    case LinkAction::follow:
        break; // a scheme that nobody here knows
    }
}

bool PDFViewer::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && m_findBar &&
        isSearchKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void PDFViewer::keyPressEvent(QKeyEvent* event)
{
    if (m_findBar && isSearchKey(*event))
        m_findBar->open();
    else
        QWidget::keyPressEvent(event);
}

} // namespace wendlore

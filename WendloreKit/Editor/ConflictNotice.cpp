#include "Editor/ConflictNotice.h"

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"

#include "Look/Colors.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/SymbolView.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int margin = 16;
constexpr int lineSpacing = 2;

} // namespace

ConflictNotice::ConflictNotice(EditorView& editor, QWidget* parent)
    : QWidget(parent)
    , m_editor(editor)
    , m_message(new QLabel(this))
{
    setAccessibleName(u"Versionskonflikt"_s);
    auto* title = new QLabel(u"Versionskonflikt"_s, this);
    title->setFont(sized(font(), metrics::textSize, QFont::DemiBold));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    auto* button = new QPushButton(u"OK"_s, this);
    connect(button, &QPushButton::clicked, this, &ConflictNotice::dismiss);

    auto* text = new QVBoxLayout;
    text->setSpacing(lineSpacing);
    text->addWidget(title);
    text->addWidget(m_message);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(margin, metrics::toolbarMargin, margin, metrics::toolbarMargin);
    row->setSpacing(metrics::toolbarMargin);
    row->addWidget(new SymbolView(u"exclamationmark.triangle"_s, metrics::icon, this), 0, Qt::AlignTop);
    row->addLayout(text, 1);
    row->addWidget(button, 0, Qt::AlignVCenter);
    connect(&editor.session(), &EditorSession::conflictNoticeChanged, this, &ConflictNotice::showNotice);
    showNotice();
}

void ConflictNotice::showNotice()
{
    const QString& notice = m_editor.session().conflictNotice();
    setVisible(!notice.isEmpty());
    if (notice.isEmpty())
        return;
    m_message->setText(notice);
    setAccessibleDescription(notice);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void ConflictNotice::dismiss()
{
    m_editor.setFocus();
    m_editor.session().dismissConflictNotice();
}

void ConflictNotice::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Colors& colors = Colors::of(palette());
    painter.fillRect(rect(), colors.side);
    painter.fillRect(0, height() - 1, width(), 1, colors.line);
}

} // namespace wendlore

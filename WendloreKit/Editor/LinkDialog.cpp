#include "Editor/LinkDialog.h"

#include "Editor/WebEditorController.h"

#include "Look/Colors.h"
#include "Look/RowDelegate.h"
#include "Look/SegmentedPicker.h"
#include "Vault/Blanks.h"
#include "Vault/SearchNeedle.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QStackedWidget>
#include <QStringListModel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr QSize partSize(400, 300); // room for eight notes
constexpr int spacing = 10;

bool walksThroughAList(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

QLabel* makeLabel(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setForegroundRole(mutedRole);
    return label;
}

} // namespace

LinkDialog::LinkDialog(WebEditorController& controller, QStringList noteNames, QWidget* parent)
    : Sheet(u"Infoga länk"_s, parent)
    , m_controller(controller)
    , m_noteNames(std::move(noteNames))
    , m_picker(new SegmentedPicker(u"Typ"_s, this))
    , m_parts(new QStackedWidget(this))
{
    m_picker->add(u"Not"_s);
    m_picker->add(u"URL"_s);
    auto* kind = new QHBoxLayout;
    kind->setSpacing(spacing);
    kind->addWidget(makeLabel(u"Typ"_s, this));
    kind->addWidget(m_picker);
    kind->addStretch();
    m_parts->addWidget(makeNotePart());
    m_parts->addWidget(makeAddressPart());
    layout()->setSizeConstraint(QLayout::SetFixedSize); // as large as what is asked
    contents().addLayout(kind);
    contents().addWidget(m_parts);
    addCancelButton();
    m_insert = addButton(u"Infoga"_s);
    m_insert->setDefault(true);
    connect(m_insert, &QPushButton::clicked, this, &LinkDialog::insertURL);
    connect(m_picker, &SegmentedPicker::chosenChanged, this, &LinkDialog::showMode);
    showNotes();
    showMode();
    m_query->setFocus();
}

LinkDialog::Mode LinkDialog::mode() const
{
    return m_picker->chosen() == 0 ? Mode::note : Mode::url;
}

void LinkDialog::setMode(Mode mode)
{
    m_picker->choose(mode == Mode::note ? 0 : 1);
}

QWidget* LinkDialog::makeNotePart()
{
    auto* part = new QWidget(m_parts);
    m_query = makeField(u"Sök bland noter…"_s);
    m_query->setClearButtonEnabled(true);
    m_query->installEventFilter(this);

    m_list = new QStackedWidget(part);
    m_shown = new QStringListModel(this);
    m_names = new QListView(m_list);
    m_names->setModel(m_shown);
    m_names->setItemDelegate(new RowDelegate(u"doc.text"_s, m_names));
    m_names->setAccessibleName(u"Noter"_s);
    m_names->setFrameShape(QFrame::NoFrame);
    m_names->setUniformItemSizes(true);
    m_names->setMouseTracking(true);
    m_names->setEditTriggers(QAbstractItemView::NoEditTriggers);
    QLabel* nothing = makeLabel(u"Inga noter i bucketen"_s, m_list);
    nothing->setAlignment(Qt::AlignCenter);
    m_list->addWidget(m_names);
    m_list->addWidget(nothing);

    auto* stack = new QVBoxLayout(part);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(spacing);
    stack->addWidget(m_query);
    stack->addWidget(m_list, 1);
    connect(m_query, &QLineEdit::textChanged, this, &LinkDialog::showNotes);
    connect(m_query, &QLineEdit::returnPressed, this, [this] { insertNote(m_names->currentIndex()); });
    connect(m_names, &QListView::clicked, this, &LinkDialog::insertNote);
    connect(m_names, &QListView::activated, this, &LinkDialog::insertNote);
    return part;
}

QWidget* LinkDialog::makeAddressPart()
{
    auto* part = new QWidget(m_parts);
    m_urlText = makeField(u"https://"_s);
    m_urlText->setAccessibleName(u"URL"_s);
    auto* stack = new QVBoxLayout(part);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->addWidget(m_urlText);
    stack->addStretch();
    return part;
}

void LinkDialog::showMode()
{
    const bool isAddress = mode() == Mode::url;
    m_parts->setCurrentIndex(isAddress ? 1 : 0);
    m_parts->setFixedSize(partSize.width(), isAddress ? m_urlText->sizeHint().height() : partSize.height());
    m_insert->setVisible(isAddress);
}

void LinkDialog::showNotes()
{
    m_shown->setStringList(filtered());
    m_list->setCurrentIndex(m_shown->rowCount() == 0 ? 1 : 0);
    m_names->setCurrentIndex(m_shown->index(0));
}

QStringList LinkDialog::filtered() const
{
    const QByteArray query = withoutOuterBlanks(m_query->text()).toUtf8();
    if (query.isEmpty())
        return m_noteNames;
    const SearchNeedle needle({query.constData(), std::size_t(query.size())}, userFoldingRule());
    QStringList names;
    for (const QString& name : m_noteNames) {
        const QByteArray text = name.toUtf8();
        if (needle.isIn({text.constData(), std::size_t(text.size())}))
            names.append(name);
    }
    return names;
}

void LinkDialog::insertNote(const QModelIndex& row)
{
    if (!row.isValid())
        return;
    m_controller.exec(u"wikilink"_s, row.data().toString());
    accept();
}

void LinkDialog::insertURL()
{
    const QString address = withoutOuterBlanks(m_urlText->text());
    if (address.isEmpty())
        return;
    m_controller.exec(u"link"_s, address);
    accept();
}

bool LinkDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_query && event->type() == QEvent::KeyPress &&
        walksThroughAList(static_cast<QKeyEvent*>(event)->key()))
        return QCoreApplication::sendEvent(m_names, event);
    return Sheet::eventFilter(watched, event);
}

} // namespace wendlore

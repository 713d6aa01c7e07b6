#include "Shell/RenamePrompt.h"

#include "State/AppState.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int fieldWidth = 300;

} // namespace

RenamePrompt::RenamePrompt(AppState& state, const FileURL& item, QWidget* parent)
    : Sheet(u"Byt namn"_s, parent)
    , m_state(state)
    , m_renameTarget(item)
    , m_renameText(makeField(u"Nytt namn"_s))
{
    m_renameText->setText(item.nameWithoutExtension());
    m_renameText->setMinimumWidth(fieldWidth);
    m_renameText->selectAll();
    contents().addWidget(m_renameText);
    addCancelButton();
    QPushButton* save = addButton(u"Spara"_s);
    save->setDefault(true);
    connect(save, &QPushButton::clicked, this, &RenamePrompt::save);
    m_renameText->setFocus();
}

void RenamePrompt::save()
{
    m_state.renameFile(m_renameTarget, m_renameText->text());
    accept();
}

} // namespace wendlore

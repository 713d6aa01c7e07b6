#include "Editor/VideoPrompt.h"

#include "Editor/WebEditorController.h"

#include "Vault/Blanks.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int fieldWidth = 360;

} // namespace

VideoPrompt::VideoPrompt(WebEditorController& controller, QWidget* parent)
    : Sheet(u"Infoga video"_s, parent)
    , m_controller(controller)
    , m_promptText(makeField(u"YouTube-URL"_s))
{
    m_promptText->setMinimumWidth(fieldWidth);
    contents().addWidget(m_promptText);
    addCancelButton();
    QPushButton* insert = addButton(u"Infoga"_s);
    insert->setDefault(true);
    connect(insert, &QPushButton::clicked, this, &VideoPrompt::insert);
}

void VideoPrompt::insert()
{
    const QString address = withoutOuterBlanks(m_promptText->text());
    if (!address.isEmpty())
        m_controller.exec(u"youtube"_s, address);
    m_promptText->clear();
    accept();
}

} // namespace wendlore

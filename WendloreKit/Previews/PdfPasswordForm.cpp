#include "Previews/PdfPasswordForm.h"

#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/SymbolView.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int spacing = 14;
constexpr int fieldWidth = 240;

} // namespace

PdfPasswordForm::PdfPasswordForm(QWidget* parent)
    : QWidget(parent)
    , m_message(new QLabel(u"PDF:en är låst med ett lösenord"_s))
    , m_password(new QLineEdit)
{
    m_message->setFont(sized(font(), metrics::titleSize, QFont::DemiBold));
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setPlaceholderText(u"Lösenord"_s);
    m_password->setAccessibleName(u"Lösenord"_s);
    m_password->setFixedWidth(fieldWidth);
    auto* open = new QPushButton(u"Öppna"_s);
    open->setDefault(true);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(spacing);
    layout->addStretch();
    for (QWidget* part :
         {static_cast<QWidget*>(new SymbolView(u"lock"_s, metrics::emptyIcon)),
          static_cast<QWidget*>(m_message), static_cast<QWidget*>(m_password), static_cast<QWidget*>(open)})
        layout->addWidget(part, 0, Qt::AlignHCenter);
    layout->addStretch();
    setFocusProxy(m_password);
    const auto give = [this] { Q_EMIT passwordGiven(m_password->text()); };
    connect(m_password, &QLineEdit::returnPressed, this, give);
    connect(open, &QPushButton::clicked, this, give);
}

void PdfPasswordForm::refuse()
{
    m_message->setText(u"Fel lösenord"_s);
    m_password->selectAll();
    m_password->setFocus();
}

} // namespace wendlore

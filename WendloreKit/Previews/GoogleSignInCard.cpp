#include "Previews/GoogleSignInCard.h"

#include "Look/Colors.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/SymbolView.h"
#include "Look/WrappedLabel.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int textWidth = 380;
constexpr int spacing = 14;
constexpr int buttonSpacing = 10;
constexpr int margin = 32;

enum class Weight { quiet, plain, strong };

void addText(QVBoxLayout& layout, const QString& text, int size, Weight weight)
{
    auto* label = new WrappedLabel(textWidth);
    label->setText(text);
    label->setFont(sized(label->font(), size, weight == Weight::strong ? QFont::DemiBold : QFont::Normal));
    if (weight == Weight::quiet)
        label->setForegroundRole(mutedRole);
    layout.addWidget(label, 0, Qt::AlignHCenter);
}

} // namespace

GoogleSignInCard::GoogleSignInCard(const QString& email, QWidget* parent)
    : QWidget(parent)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(spacing);
    layout->addStretch();
    layout->addWidget(new SymbolView(u"person.crop.circle.badge.questionmark"_s, metrics::emptyIcon), 0,
                      Qt::AlignHCenter);
    if (!email.isEmpty())
        addText(*layout, u"Dokumentet ligger i "_s + email, metrics::noticeSize, Weight::quiet);
    addText(*layout, u"Dokumentet kräver Google-inloggning"_s, metrics::titleSize, Weight::strong);
    addText(
        *layout,
        u"Appens webbvy är inte inloggad på Google. Logga in här för att läsa dokumentet i Wendlores — eller "
        "öppna det i webbläsaren, där du redan är inloggad."_s,
        metrics::textSize, Weight::plain);
    auto* row = new QHBoxLayout;
    row->setSpacing(buttonSpacing);
    auto* signIn = new QPushButton(u"Logga in"_s);
    auto* browser = new QPushButton(u"Öppna i webbläsaren"_s);
    signIn->setDefault(true);
    row->addStretch();
    row->addWidget(signIn);
    row->addWidget(browser);
    row->addStretch();
    layout->addLayout(row);
    addText(*layout, u"Inloggningen sparas — nästa gång öppnas dokumentet direkt i appen."_s,
            metrics::noticeSize, Weight::quiet);
    layout->addStretch();
    connect(signIn, &QPushButton::clicked, this, &GoogleSignInCard::signInWanted);
    connect(browser, &QPushButton::clicked, this, &GoogleSignInCard::browserWanted);
}

} // namespace wendlore

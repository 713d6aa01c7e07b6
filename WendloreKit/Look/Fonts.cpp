#include "Look/Fonts.h"

#include <QFontDatabase>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// A desktop without a font of its own answers with a mere alias, which stands for whatever is there.
bool isAlias(const QString& family)
{
    return family.isEmpty() || family.compare(u"Sans Serif"_s, Qt::CaseInsensitive) == 0 ||
           family.compare(u"Sans"_s, Qt::CaseInsensitive) == 0;
}

} // namespace

QFont interfaceFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    if (isAlias(font.family()) && QFontDatabase::hasFamily(u"Inter"_s))
        font.setFamilies({u"Inter"_s});
    return sized(font, metrics::textSize);
}

} // namespace wendlore

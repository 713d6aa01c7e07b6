#include "State/AppTheme.h"

using namespace Qt::StringLiterals;

namespace wendlore {

QString rawValue(AppTheme theme)
{
    switch (theme) {
    case AppTheme::light:
        return u"light"_s;
    case AppTheme::dark:
        return u"dark"_s;
    case AppTheme::automatic:
        break;
    }
    return u"auto"_s;
}

AppTheme appTheme(const QString& rawValue)
{
    if (rawValue == "light"_L1)
        return AppTheme::light;
    return rawValue == "dark"_L1 ? AppTheme::dark : AppTheme::automatic;
}

} // namespace wendlore

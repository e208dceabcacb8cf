#include "location/PreferredLanguage.h"

#include <QLocale>

QString preferredLanguage()
{
    const QLocale locale;
    if (locale.language() == QLocale::C)
        return QStringLiteral("en");
    const QStringList languages = locale.uiLanguages();
    return languages.isEmpty() ? locale.bcp47Name() : languages.first();
}

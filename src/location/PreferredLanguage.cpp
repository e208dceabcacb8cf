#include "location/PreferredLanguage.h"

#include "platform/Configuration.h"
#include "platform/PreferredLanguages.h"

namespace {
QString firstOrEnglish(const QStringList &languages)
{
    return languages.isEmpty() ? QStringLiteral("en") : languages.constFirst();
}
} // namespace

QString preferredLanguage(const Configuration &configuration)
{
    return firstOrEnglish(preferredLanguages(configuration));
}

QString preferredLanguage()
{
    return firstOrEnglish(systemPreferredLanguages());
}

#include "platform/PreferredLanguages.h"

#include "platform/Configuration.h"

#include <QRegularExpression>

QString languageTagFromLocaleName(const QString &name)
{
    // language[_territory][.codeset][@modifier]
    static const QRegularExpression form(QStringLiteral(
        "^([A-Za-z]{2,3})(?:[_-]([A-Za-z]{2}|[0-9]{3}))?(?:\\.[^@]*)?(?:@([A-Za-z0-9]+))?$"));
    const QRegularExpressionMatch match = form.match(name.trimmed());
    if (!match.hasMatch())
        return {};
    const QString language = match.captured(1).toLower();
    const QString region = match.captured(2).toUpper();
    if (language == QLatin1String("zh")) {
        // the script, not the region, says which Chinese the user reads; a
        // bare "zh" reads as the Simplified most systems mean by it
        static const QStringList traditional{QStringLiteral("TW"), QStringLiteral("HK"),
                                             QStringLiteral("MO")};
        const bool hant =
            traditional.contains(region) ||
            match.captured(3).compare(QLatin1String("hant"), Qt::CaseInsensitive) == 0;
        return hant ? QStringLiteral("zh-Hant") : QStringLiteral("zh-Hans");
    }
    return region.isEmpty() ? language : language + QLatin1Char('-') + region;
}

QStringList systemPreferredLanguages(const QProcessEnvironment &environment)
{
    // a desktop sets LANGUAGE to the user's list even where the locale
    // stays C, as on many minimal systems; desktops and Qt honour it then too
    QStringList names = environment.value(QStringLiteral("LANGUAGE")).split(QLatin1Char(':'));
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QString locale = environment.value(QString::fromLatin1(variable));
        if (!locale.isEmpty()) {
            names.append(locale);
            break;
        }
    }
    QStringList tags;
    for (const QString &name : std::as_const(names)) {
        const QString tag = languageTagFromLocaleName(name);
        if (!tag.isEmpty() && !tags.contains(tag))
            tags.append(tag);
    }
    return tags;
}

QStringList preferredLanguages(const Configuration &configuration)
{
    return configuration.languages.isEmpty() ? systemPreferredLanguages() : configuration.languages;
}

#pragma once

#include <QProcessEnvironment>
#include <QStringList>

class Configuration;

// The user's preferred languages, most preferred first, as the BCP 47 tags
// the screens and the services compare against: "zh-Hans" for Simplified
// Chinese, "zh-Hant" for Traditional, otherwise the language and region as
// the system names them ("en-GB", "de").

// What the system says: LANGUAGE's list first, then the first set of LC_ALL,
// LC_MESSAGES and LANG, as gettext reads them. The untranslated C and POSIX
// locales add nothing.
QStringList systemPreferredLanguages(
    const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

// The list the configuration gives (--languages), or the system's.
QStringList preferredLanguages(const Configuration &configuration);

// A system locale name ("zh_CN.UTF-8", "en_GB@euro", "de") as a language
// tag; empty for C, POSIX and names that are not locale names.
QString languageTagFromLocaleName(const QString &name);

#pragma once

#include <QString>

class Configuration;

// The first of the user's preferred languages as a language tag ("zh-Hans",
// "en-GB"), for services that answer in the user's language: the
// configuration's list, else the system's. Without either (the untranslated
// C locale), English.
QString preferredLanguage(const Configuration &configuration);
// The same from the system's list alone.
QString preferredLanguage();

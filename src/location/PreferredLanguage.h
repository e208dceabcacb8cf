#pragma once

#include <QString>

// The user's first preferred language as a language tag ("zh-CN", "en"),
// for services that answer in the user's language. The untranslated C
// locale counts as English.
QString preferredLanguage();

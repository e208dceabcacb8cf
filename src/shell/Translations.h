#pragma once

#include <QString>

// Shows the texts in the user's language: installs the compiled translation
// of `language` ("zh_CN", "en"; "C" for the texts as written in the code),
// or of the system's language when `language` is empty. Replaces the one a
// previous call installed. Answers the translation's name, or an empty text
// when the texts stay as written (no translation for that language).
QString installTranslations(const QString &language);

#pragma once

#include <QString>

// Shows the texts in the user's language: installs the compiled translation
// of `language` ("zh_CN", "de_DE", "en"; "C" for the texts as written in the
// code), or of the first of the system's preferred languages that has one
// when `language` is empty, with Qt's own translation for the same language
// (the text fields' context menu). A language without a translation gets
// the English one, so no text written in another language in the code
// shows; so does a system that names no language (the C locale). Replaces
// what a previous call installed. Answers the installed translation's name,
// or an empty text when the texts stay as written.
QString installTranslations(const QString &language);

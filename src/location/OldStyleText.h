#pragma once

#include <QList>
#include <QPair>
#include <QString>

#include <optional>

// The old-style (NeXTSTEP) property-list text format, as far as this system
// needs it: quoted strings, and the diagnostic text of a dictionary of
// strings that such descriptions print.
namespace OldStyleText {

// Decodes one quoted string, the whole of `text` (white space may follow
// it). Nothing when the text is not exactly one valid quoted string.
std::optional<QString> parseQuotedString(const QString &text);

// A string as a description prints it: bare when it is made only of letters,
// digits and "_$+/:.-", otherwise quoted with escapes (non-ASCII characters
// as \Uxxxx).
QString quoteString(const QString &text);

// A dictionary of strings as its description prints it, keys in sorted
// order; a null value prints as the null marker, "<null>" in quotes.
QString describeDictionary(const QList<QPair<QString, QString>> &entries);

} // namespace OldStyleText

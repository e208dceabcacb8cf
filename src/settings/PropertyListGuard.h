#pragma once

#include <QByteArrayView>
#include <QString>

// Looks at the bytes of a property list before the property-list library
// parses them, and refuses what could make that parse recurse too deep or
// expand without bound. The library parses recursively, so a file of
// 100,000 nested arrays overflows the stack; and a binary file can name the
// same child again and again, so 200 bytes can stand for millions of values.
// The settings folder is the user's and other programs write into it: such a
// file must read as unreadable, not stop the programs at every launch.
//
// The check walks the binary form's object table without recursion,
// counting a shared child each time it is used, and makes one pass over the
// XML form's element depth. Neither builds anything.
namespace PropertyListGuard {

// Far above anything a settings file holds (a route point sits at depth 3).
inline constexpr int MaxDepth = 64;
// Values after expansion, keys included: a route of two million points is
// about ten million.
inline constexpr qint64 MaxValues = 16'000'000;
// No settings file comes near this; a larger one is not read at all.
inline constexpr qint64 MaxFileBytes = 256 * 1024 * 1024;

// Why `data` must not be parsed, or an empty text when it may be. Bytes
// that are no property list at all pass: the parser refuses those safely.
QString refusal(QByteArrayView data);

} // namespace PropertyListGuard

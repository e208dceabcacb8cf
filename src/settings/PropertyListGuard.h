#pragma once

#include <QByteArrayView>
#include <QString>

// Looks at the bytes of a property list before they are parsed, and refuses
// what nests too deep or would expand without bound: a file of 100,000
// nested arrays, or a binary file that names the same child again and again,
// so that 200 bytes stand for millions of values. The settings folder is the
// user's and other programs write into it: such a file must read as
// unreadable, not stop the programs at every launch. The readers keep to the
// same limits themselves; this check is what names the limit a file broke,
// for the person to read.
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

#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QVariant>

// The XML form of property lists, read and written straight from and to Qt
// values without building a tree of nodes first: the route record is the one
// large file, written at every switch-on and read at every launch.
//
// Writing gives exactly the bytes the usual XML writer gives: the fixed
// header, one tab per level, keys in order, `<dict/>` for an empty
// container, reals as "%.17g", dates to the second, data as base64 lines.
// A text character XML 1.0 cannot hold becomes U+FFFD. Integers above
// 2^63 - 1 are written as the unsigned numbers they are, and dates keep
// their year however far they lie.
//
// Reading takes what the usual reader takes: an optional <plist> wrapper,
// comments, processing instructions and a DOCTYPE, entities and CDATA in
// text, integers in decimal, hex or octal with a sign, reals as strtod
// reads them, dates with their time or without, and base64 with line
// breaks. Integers above 2^63 - 1 read as quint64.
namespace PropertyListXml {

// The document for `root`, or an empty array when `root` holds no value.
QByteArray write(const QVariant &root);

// The root of the document, or an invalid QVariant when it is not one.
// Nesting is limited to `maxDepth` containers; deeper reads as not a
// document, so no input can exhaust the stack.
QVariant read(QByteArrayView document, int maxDepth = 64);

} // namespace PropertyListXml

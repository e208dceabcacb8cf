#pragma once

#include <QByteArrayView>
#include <QVariant>

// The binary form of property lists ("bplist00"), which a tool or the
// system may have converted a settings file to. Values map to the same Qt
// types as the XML form; integers above 2^63 - 1 read as quint64, dates as
// far as they lie, and a UID as the {"CF$UID": n} dictionary the XML form
// writes for it.
namespace PropertyListBinary {

// The root, or an invalid QVariant when `document` is not a well-formed
// binary property list, nests deeper than `maxDepth` containers or would
// expand, shared children counted each time, to more than `maxValues`.
QVariant read(QByteArrayView document, int maxDepth = 64, qint64 maxValues = 16'000'000);

} // namespace PropertyListBinary

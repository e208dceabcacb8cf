#pragma once

#include "settings/PropertyList.h"

#include <QByteArray>
#include <QVariant>

#include <cstddef>
#include <cstdint>

// The fuzzer's bytes as the program holds what it reads: a copy, ending in
// the terminating zero QByteArray always has.
inline QByteArray fuzzBytes(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), qsizetype(size));
}

// A settings file's root as TMPreferenceUtil takes it: read and guarded by
// PropertyList, and empty unless of the kind that file holds.
inline QVariant settingsRoot(const uint8_t *data, size_t size, QMetaType::Type kind)
{
    const QVariant root = PropertyList::fromData(fuzzBytes(data, size));
    return root.metaType().id() == kind ? root : QVariant();
}

// What the program writes back after a change must read again, as the same
// kind of root. The first write may change text XML cannot hold (and so the
// order of keys); a second round must change nothing more.
inline void checkWrittenBack(const QVariant &root)
{
    const QVariant reread = PropertyList::fromData(PropertyList::toXml(root));
    const QByteArray written = PropertyList::toXml(reread);
    if (reread.metaType() != root.metaType() ||
        PropertyList::toXml(PropertyList::fromData(written)) != written)
        __builtin_trap();
}

#pragma once

#include <QByteArrayView>

#include <optional>

// The frame of a binary property list: "bplist00", the objects, a table of
// their offsets and a 32-byte trailer naming the sizes, the object count and
// the root. An object is a marker byte (kind in the high half, a size or
// count in the low half) and its bytes; a container's are the indexes of
// its children (a dictionary's keys, then its values).
namespace BinaryPropertyList {

inline quint64 bigEndian(const uchar *bytes, int size)
{
    quint64 value = 0;
    for (int i = 0; i < size; ++i)
        value = (value << 8) | bytes[i];
    return value;
}

struct Table
{
    const uchar *data = nullptr;
    quint64 size = 0;
    int offsetSize = 0;
    int refSize = 0;
    quint64 count = 0;   // objects in the table
    quint64 top = 0;     // the root's index
    quint64 tableAt = 0; // where the table starts; the objects lie before it

    // Where object `index` (below `count`) starts; outside [8, tableAt) when
    // the table points nowhere sensible.
    quint64 offsetOf(quint64 index) const
    {
        return bigEndian(data + tableAt + index * quint64(offsetSize), offsetSize);
    }
};

// The table of `document`, when its trailer describes one that fits.
inline std::optional<Table> readTable(QByteArrayView document)
{
    if (document.size() < 8 + 32 || !document.startsWith("bplist00"))
        return std::nullopt;
    Table table;
    table.data = reinterpret_cast<const uchar *>(document.data());
    table.size = quint64(document.size());
    const uchar *trailer = table.data + table.size - 32;
    table.offsetSize = trailer[6];
    table.refSize = trailer[7];
    table.count = bigEndian(trailer + 8, 8);
    table.top = bigEndian(trailer + 16, 8);
    table.tableAt = bigEndian(trailer + 24, 8);
    const quint64 tableEnd = table.size - 32;
    if (table.offsetSize < 1 || table.offsetSize > 8 || table.refSize < 1 || table.refSize > 8 ||
        table.tableAt < 8 || table.tableAt > tableEnd ||
        table.count > (tableEnd - table.tableAt) / quint64(table.offsetSize))
        return std::nullopt;
    return table;
}

} // namespace BinaryPropertyList

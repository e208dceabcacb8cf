#include "settings/PropertyListBinary.h"

#include "settings/BinaryPropertyListTable.h"

#include <QDateTime>
#include <QTimeZone>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

using BinaryPropertyList::bigEndian;

class Reader
{
public:
    Reader(const BinaryPropertyList::Table &table, int maxDepth, qint64 maxValues)
        : m_data(table.data), m_table(table), m_tableAt(table.tableAt), m_refSize(table.refSize),
          m_maxDepth(maxDepth), m_valuesLeft(maxValues)
    {
    }

    QVariant document()
    {
        QVariant root;
        if (!object(m_table.top, 0, root))
            return {};
        return root;
    }

private:
    // The bytes [at, at + length) lie among the objects.
    bool inside(quint64 at, quint64 length) const
    {
        return at <= m_tableAt && length <= m_tableAt - at;
    }

    // A size or count: the marker's low half, or an integer object after it.
    bool length(quint64 &at, int low, quint64 &out) const
    {
        if (low != 0x0F) {
            out = quint64(low);
            return true;
        }
        if (!inside(at, 1) || (m_data[at] >> 4) != 0x1)
            return false;
        const int size = 1 << (m_data[at] & 0x0F);
        if (size > 8 || !inside(at + 1, quint64(size)))
            return false;
        out = bigEndian(m_data + at + 1, size);
        at += 1 + quint64(size);
        return true;
    }

    bool object(quint64 index, int depth, QVariant &out)
    {
        if (index >= m_table.count || --m_valuesLeft < 0)
            return false;
        const quint64 at = m_table.offsetOf(index);
        if (at < 8 || !inside(at, 1))
            return false;
        const int kind = m_data[at] >> 4;
        const int low = m_data[at] & 0x0F;
        quint64 body = at + 1;
        switch (kind) {
        case 0x0:
            if (low == 0x8 || low == 0x9)
                out = low == 0x9;
            else
                out = QVariant(); // null and fill: no value, left out when written
            return true;
        case 0x1:
            return integer(body, low, out);
        case 0x2:
            return real(body, low, out);
        case 0x3:
            return low == 0x3 && date(body, out);
        case 0x4:
        case 0x5:
        case 0x6:
        case 0x7:
            return bytes(body, kind, low, out);
        case 0x8: {
            // a keyed archiver's reference, as the XML form writes it
            if (low > 7 || !inside(body, quint64(low) + 1))
                return false;
            out =
                QVariantMap{{QStringLiteral("CF$UID"), qint64(bigEndian(m_data + body, low + 1))}};
            return true;
        }
        case 0xA:
        case 0xC:
        case 0xD:
            return container(body, kind, low, depth, out);
        default:
            return false;
        }
    }

    bool integer(quint64 at, int low, QVariant &out) const
    {
        // 1, 2 and 4 bytes are unsigned, 8 signed; 16 hold an unsigned
        // value above the signed range in their low half
        if (low > 4 || !inside(at, quint64(1) << low))
            return false;
        if (low == 4) {
            const quint64 value = bigEndian(m_data + at + 8, 8);
            out = value > quint64(std::numeric_limits<qint64>::max()) ? QVariant::fromValue(value)
                                                                      : QVariant(qint64(value));
        } else {
            out = qint64(bigEndian(m_data + at, 1 << low));
        }
        return true;
    }

    bool real(quint64 at, int low, QVariant &out) const
    {
        if ((low != 2 && low != 3) || !inside(at, quint64(1) << low))
            return false;
        const quint64 bits = bigEndian(m_data + at, 1 << low);
        if (low == 2) {
            float value = 0;
            const quint32 narrow = quint32(bits);
            std::memcpy(&value, &narrow, sizeof value);
            out = double(value);
        } else {
            double value = 0;
            std::memcpy(&value, &bits, sizeof value);
            out = value;
        }
        return true;
    }

    bool date(quint64 at, QVariant &out) const
    {
        if (!inside(at, 8))
            return false;
        const quint64 bits = bigEndian(m_data + at, 8);
        double seconds = 0;
        std::memcpy(&seconds, &bits, sizeof seconds);
        // seconds from 2001; kept to the millisecond, within what QDateTime holds
        if (!std::isfinite(seconds))
            seconds = 0;
        const double ms = std::clamp(std::floor(seconds * 1000.0), -1e17, 1e17);
        out = QDateTime::fromMSecsSinceEpoch(978307200000 + qint64(ms), QTimeZone::utc());
        return true;
    }

    bool bytes(quint64 at, int kind, int low, QVariant &out) const
    {
        quint64 count = 0;
        if (!length(at, low, count))
            return false;
        const quint64 width = kind == 0x6 ? 2 : 1;
        if (count > m_tableAt / width || !inside(at, count * width))
            return false;
        const char *begin = reinterpret_cast<const char *>(m_data + at);
        if (kind == 0x4) {
            out = QByteArray(begin, qsizetype(count));
        } else if (kind == 0x6) {
            QString text(qsizetype(count), Qt::Uninitialized);
            for (quint64 i = 0; i < count; ++i)
                text[qsizetype(i)] = QChar(char16_t(bigEndian(m_data + at + 2 * i, 2)));
            out = std::move(text);
        } else {
            out = QString::fromUtf8(begin, qsizetype(count));
        }
        return true;
    }

    bool container(quint64 at, int kind, int low, int depth, QVariant &out)
    {
        quint64 count = 0;
        if (depth >= m_maxDepth || !length(at, low, count))
            return false;
        const quint64 refs = kind == 0xD ? 2 : 1;
        if (count > m_tableAt / quint64(m_refSize) / refs ||
            !inside(at, count * refs * quint64(m_refSize)))
            return false;
        const auto ref = [&](quint64 i) {
            return bigEndian(m_data + at + i * quint64(m_refSize), m_refSize);
        };
        if (kind != 0xD) {
            QVariantList list;
            list.reserve(qsizetype(count));
            for (quint64 i = 0; i < count; ++i) {
                QVariant item;
                if (!object(ref(i), depth + 1, item))
                    return false;
                list.append(std::move(item));
            }
            out = std::move(list);
            return true;
        }
        QVariantMap map;
        for (quint64 i = 0; i < count; ++i) {
            QVariant key;
            QVariant value;
            if (!object(ref(i), depth + 1, key) || key.metaType().id() != QMetaType::QString ||
                !object(ref(count + i), depth + 1, value))
                return false;
            map.insert(key.toString(), std::move(value));
        }
        out = std::move(map);
        return true;
    }

    const uchar *m_data;
    BinaryPropertyList::Table m_table;
    quint64 m_tableAt;
    int m_refSize;
    int m_maxDepth;
    qint64 m_valuesLeft;
};

} // namespace

QVariant PropertyListBinary::read(QByteArrayView document, int maxDepth, qint64 maxValues)
{
    const std::optional<BinaryPropertyList::Table> table = BinaryPropertyList::readTable(document);
    return table ? Reader(*table, maxDepth, maxValues).document() : QVariant();
}

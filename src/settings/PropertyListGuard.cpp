#include "settings/PropertyListGuard.h"

#include "settings/BinaryPropertyListTable.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

QString tooDeep()
{
    return QCoreApplication::translate("PropertyListGuard", "nested more than %1 levels deep")
        .arg(PropertyListGuard::MaxDepth);
}

QString malformedBinary()
{
    return QCoreApplication::translate("PropertyListGuard",
                                       "not a well-formed binary property list");
}

using BinaryPropertyList::bigEndian;

// The binary form: a header, the objects, a table of their offsets and a
// 32-byte trailer naming the sizes, the object count and the root. A
// container is a marker byte with its count, then the indexes of its
// children (a dictionary's keys, then its values).
//
// The parser copies a shared child each time it is named, so what counts is
// the tree it would build. One depth-first pass works that out without
// building it: each container's expanded size and height are remembered
// once known, so a file that names the same child a million times costs a
// million additions, not a million walks. A container met again while it
// is still open is a cycle, which the parser would follow forever.
class BinaryWalk
{
public:
    explicit BinaryWalk(QByteArrayView data) : m_bytes(data) {}

    QString refusal()
    {
        const std::optional<BinaryPropertyList::Table> table =
            BinaryPropertyList::readTable(m_bytes);
        if (!table)
            return malformedBinary();
        m_table = *table;
        m_data = table->data;
        m_refSize = table->refSize;
        m_count = table->count;
        m_tableAt = table->tableAt;
        const quint64 top = table->top;
        if (m_count > quint64(PropertyListGuard::MaxValues))
            return tooMany();
        m_known.assign(std::size_t(m_count), Known{});

        m_frames.reserve(PropertyListGuard::MaxDepth + 1);
        if (QString problem = enter(top, 0); !problem.isEmpty())
            return problem;
        while (!m_frames.empty()) {
            Frame &frame = m_frames.back();
            if (frame.remaining == 0) {
                const Frame done = frame;
                m_frames.pop_back();
                if (QString problem = finish(done); !problem.isEmpty())
                    return problem;
                continue;
            }
            const quint64 child = bigEndian(m_data + frame.refsAt, m_refSize);
            frame.refsAt += quint64(m_refSize);
            --frame.remaining;
            if (QString problem = enter(child, m_frames.size()); !problem.isEmpty())
                return problem;
        }
        return {};
    }

private:
    struct Frame
    {
        quint64 index;
        quint64 refsAt;
        quint64 remaining;
        quint64 values = 1; // itself and its children so far
        int height = 1;
    };
    enum State : quint8 { Unseen, Open, Done };
    struct Known
    {
        quint32 values = 0; // at most MaxValues
        quint8 height = 0;
        State state = Unseen;
    };

    static QString tooMany()
    {
        return QCoreApplication::translate("PropertyListGuard", "expands to more than %L1 values")
            .arg(PropertyListGuard::MaxValues);
    }

    // A child of the open frame (or the root, at `depth` 0) is counted into
    // it, or opened as a new frame when it is a container not yet known.
    QString enter(quint64 index, std::size_t depth)
    {
        if (index >= m_count)
            return malformedBinary();
        Known &known = m_known[std::size_t(index)];
        if (known.state == Open)
            return tooDeep(); // a cycle
        if (known.state == Done)
            return add(known.values, known.height);
        const quint64 at = m_table.offsetOf(index);
        if (at < 8 || at >= m_tableAt)
            return malformedBinary();
        const uchar marker = m_data[at];
        const int type = marker >> 4;
        if (type != 0xA && type != 0xC && type != 0xD)
            return add(1, 0); // a leaf: its size is the parser's to check
        quint64 count = marker & 0x0F;
        quint64 refsAt = at + 1;
        if (count == 0x0F) {
            // the count follows as an integer object
            if (refsAt >= m_tableAt || (m_data[refsAt] >> 4) != 0x1)
                return malformedBinary();
            const int size = 1 << (m_data[refsAt] & 0x0F);
            if (size > 8 || refsAt + 1 + quint64(size) > m_tableAt)
                return malformedBinary();
            count = bigEndian(m_data + refsAt + 1, size);
            refsAt += 1 + quint64(size);
        }
        const quint64 room = (m_tableAt - refsAt) / quint64(m_refSize);
        if (count > room || (type == 0xD && count > room / 2))
            return malformedBinary();
        if (depth >= std::size_t(PropertyListGuard::MaxDepth))
            return tooDeep();
        known.state = Open;
        m_frames.push_back({index, refsAt, type == 0xD ? count * 2 : count});
        return {};
    }

    // Adds a finished child (its expanded size and height) to the open frame.
    QString add(quint64 values, int height)
    {
        if (m_frames.empty())
            return {};
        Frame &parent = m_frames.back();
        parent.values += values;
        if (parent.values > quint64(PropertyListGuard::MaxValues))
            return tooMany();
        parent.height = std::max(parent.height, height + 1);
        if (m_frames.size() + std::size_t(height) > std::size_t(PropertyListGuard::MaxDepth))
            return tooDeep();
        return {};
    }

    QString finish(const Frame &done)
    {
        Known &known = m_known[std::size_t(done.index)];
        known = {quint32(done.values), quint8(done.height), Done};
        return add(done.values, done.height);
    }

    QByteArrayView m_bytes;
    BinaryPropertyList::Table m_table;
    const uchar *m_data = nullptr;
    int m_refSize = 0;
    quint64 m_count = 0;
    quint64 m_tableAt = 0;
    std::vector<Frame> m_frames;
    std::vector<Known> m_known;
};

const char *find(const char *from, const char *end, const char *text)
{
    const std::size_t length = std::strlen(text);
    for (const char *p = from; p + length <= end; ++p) {
        p = static_cast<const char *>(std::memchr(p, text[0], std::size_t(end - p)));
        if (!p || p + length > end)
            return end;
        if (std::memcmp(p, text, length) == 0)
            return p + length;
    }
    return end;
}

bool startsWith(const char *p, const char *end, const char *text)
{
    const std::size_t length = std::strlen(text);
    return std::size_t(end - p) >= length && std::memcmp(p, text, length) == 0;
}

bool isContainer(const char *name, const char *end)
{
    for (const char *word : {"array", "dict"}) {
        const std::size_t length = std::strlen(word);
        if (std::size_t(end - name) > length && std::memcmp(name, word, length) == 0) {
            const char next = name[length];
            if (next == '>' || next == '/' || next == ' ' || next == '\t' || next == '\n' ||
                next == '\r')
                return true;
        }
    }
    return false;
}

// The XML form has no shared values, so only its depth matters: one pass
// over the tags, counting open arrays and dictionaries as the binary walk
// does, and open elements of any name with room for the plist element and
// a leaf. Comments, CDATA, processing instructions and the document type
// are stepped over whole, and quoted attribute values may hold '>' or '/'.
QString xmlRefusal(const char *p, const char *end)
{
    constexpr int MaxElementDepth = PropertyListGuard::MaxDepth + 2;
    int depth = 0;
    int containers = 0;
    while (p < end) {
        p = static_cast<const char *>(std::memchr(p, '<', std::size_t(end - p)));
        if (!p || ++p == end)
            break;
        if (*p == '/') {
            --depth;
            if (isContainer(p + 1, end))
                --containers;
            p = find(p, end, ">");
        } else if (*p == '?') {
            p = find(p, end, "?>");
        } else if (startsWith(p, end, "!--")) {
            p = find(p + 3, end, "-->");
        } else if (startsWith(p, end, "![CDATA[")) {
            p = find(p, end, "]]>");
        } else if (*p == '!') {
            int brackets = 0;
            for (; p < end && (*p != '>' || brackets > 0); ++p)
                brackets += *p == '[' ? 1 : *p == ']' ? -1 : 0;
        } else {
            const bool container = isContainer(p, end);
            char quote = 0;
            char last = 0;
            for (; p < end; ++p) {
                const char c = *p;
                if (quote) {
                    if (c == quote) {
                        quote = 0;
                        last = c;
                    }
                } else if (c == '"' || c == '\'') {
                    quote = c;
                } else if (c == '>') {
                    break;
                } else if (c != ' ' && c != '\t' && c != '\n' && c != '\r') {
                    last = c;
                }
            }
            if (p == end)
                break;
            if (last == '/')
                continue; // an empty element
            if (++depth > MaxElementDepth ||
                (container && ++containers > PropertyListGuard::MaxDepth))
                return tooDeep();
        }
    }
    return {};
}

} // namespace

QString PropertyListGuard::refusal(QByteArrayView data)
{
    if (data.size() > MaxFileBytes)
        return QCoreApplication::translate("PropertyListGuard", "larger than %L1 MB")
            .arg(MaxFileBytes / (1024 * 1024));
    if (data.startsWith("bplist00"))
        return BinaryWalk(data).refusal();
    return xmlRefusal(data.data(), data.data() + data.size());
}

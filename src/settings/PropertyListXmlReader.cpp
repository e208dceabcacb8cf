#include "settings/PropertyListXml.h"

#include "settings/PropertyListXmlValues.h"

#include <cstring>
#include <vector>

namespace {

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// The few dictionary keys of a route point repeat for every point: one
// shared QString each saves an allocation and a decode per entry.
class KeyCache
{
public:
    QString key(QByteArrayView utf8)
    {
        for (const auto &entry : m_entries) {
            if (entry.first == utf8)
                return entry.second;
        }
        QString value = QString::fromUtf8(utf8);
        if (utf8.size() <= 8 && m_entries.size() < 16)
            m_entries.emplace_back(utf8.toByteArray(), value);
        return value;
    }

private:
    std::vector<std::pair<QByteArray, QString>> m_entries;
};

struct Tag
{
    QByteArrayView name; // without the '/' of an empty element
    bool empty = false;  // <name/>
};

class Reader
{
public:
    Reader(QByteArrayView document, int maxDepth)
        : m_at(document.data()), m_end(document.data() + document.size()), m_maxDepth(maxDepth)
    {
    }

    QVariant document()
    {
        if (m_end - m_at >= 3 && QByteArrayView(m_at, 3) == "\xEF\xBB\xBF")
            m_at += 3;
        bool inPlist = false;
        Tag tag;
        while (nextTag(tag)) {
            if (tag.name == "plist") {
                if (tag.empty || inPlist)
                    return {};
                inPlist = true;
                continue;
            }
            // the first value is the root; whatever follows it is not read
            QVariant root;
            if (!element(tag, 0, root))
                return {};
            return root;
        }
        return {};
    }

private:
    bool atEnd() const { return m_at >= m_end; }
    qsizetype left() const { return m_end - m_at; }
    bool startsWith(QByteArrayView text) const
    {
        return left() >= text.size() && QByteArrayView(m_at, text.size()) == text;
    }

    void skipSpace()
    {
        while (!atEnd() && isSpace(*m_at))
            ++m_at;
    }

    // Moves past the next `text`; false when there is none.
    bool skipPast(QByteArrayView text)
    {
        const qsizetype found = QByteArrayView(m_at, left()).indexOf(text);
        if (found < 0)
            return false;
        m_at += found + text.size();
        return true;
    }

    // Moves to the next of `stops` outside quoted attribute values.
    bool findOutsideQuotes(QByteArrayView stops)
    {
        while (!atEnd()) {
            if (*m_at == '"') {
                const char *close = static_cast<const char *>(memchr(m_at + 1, '"', left() - 1));
                if (!close)
                    return false;
                m_at = close + 1;
                continue;
            }
            if (stops.contains(*m_at))
                return true;
            ++m_at;
        }
        return false;
    }

    // The next element's start tag, after white space, comments, processing
    // instructions and a DOCTYPE; false at the end or at anything else.
    bool nextTag(Tag &tag)
    {
        for (;;) {
            skipSpace();
            if (atEnd() || *m_at != '<')
                return false;
            if (startsWith("<?")) {
                m_at += 2;
                if (!findOutsideQuotes("?") || !skipPast("?>"))
                    return false;
            } else if (startsWith("<!--")) {
                m_at += 4;
                if (!skipPast("-->"))
                    return false;
            } else if (startsWith("<!DOCTYPE")) {
                m_at += 9;
                if (!findOutsideQuotes("[>"))
                    return false;
                if (!skipPast(*m_at == '[' ? "]>" : ">"))
                    return false;
            } else {
                return startTag(tag);
            }
        }
    }

    bool startTag(Tag &tag)
    {
        const char *name = ++m_at;
        while (!atEnd() && !isSpace(*m_at) && *m_at != '<' && *m_at != '>')
            ++m_at;
        const char *nameEnd = m_at;
        if (atEnd() || (*m_at != '>' && !findOutsideQuotes("<>")) || *m_at != '>')
            return false;
        tag.empty = m_at[-1] == '/';
        if (tag.empty && nameEnd == m_at)
            --nameEnd;
        tag.name = QByteArrayView(name, nameEnd - name);
        ++m_at;
        return !tag.name.isEmpty();
    }

    // The end tag `</name>` must come next (after comments and space).
    bool endTag(QByteArrayView name)
    {
        if (!startsWith("</"))
            return false;
        m_at += 2;
        if (!startsWith(name))
            return false;
        m_at += name.size();
        skipSpace();
        if (atEnd() || *m_at != '>')
            return false;
        ++m_at;
        return true;
    }

    bool element(const Tag &tag, int depth, QVariant &out)
    {
        const QByteArrayView name = tag.name;
        if (name == "dict" || name == "array") {
            if (depth >= m_maxDepth)
                return false;
            if (tag.empty) {
                out = name == "dict" ? QVariant(QVariantMap()) : QVariant(QVariantList());
                return true;
            }
            return name == "dict" ? dictionary(depth, out) : array(depth, out);
        }
        if (name == "string" || name == "key") {
            QString text;
            if (!tag.empty && !readString(name, text))
                return false;
            out = std::move(text);
            return true;
        }
        if (name == "true" || name == "false") {
            QByteArray ignored;
            if (!tag.empty && !rawText(name, ignored))
                return false;
            out = name == "true";
            return true;
        }
        if (name != "integer" && name != "real" && name != "date" && name != "data")
            return false;
        QByteArray text;
        if (!tag.empty) {
            skipSpace();
            if (!rawText(name, text))
                return false;
        }
        if (name == "integer")
            out = PropertyListXmlValues::integer(text);
        else if (name == "real")
            out = PropertyListXmlValues::real(text);
        else if (name == "date")
            out = PropertyListXmlValues::date(text, tag.empty);
        else
            out = PropertyListXmlValues::data(text);
        return true;
    }

    bool dictionary(int depth, QVariant &out)
    {
        QVariantMap map;
        QString key;
        bool haveKey = false;
        Tag tag;
        for (;;) {
            if (!nextTag(tag))
                return false;
            if (tag.name.startsWith('/')) {
                if (tag.name != "/dict")
                    return false;
                out = std::move(map);
                return true;
            }
            if (!haveKey && tag.name == "key") {
                // keys are short and repeat: read them without the general path
                QByteArray utf8;
                if (!tag.empty && !keyText(utf8))
                    return false;
                key = m_keys.key(utf8);
                haveKey = true;
                continue;
            }
            if (!haveKey)
                return false;
            QVariant value;
            if (!element(tag, depth + 1, value))
                return false;
            // keys come in order from any usual writer: appending is cheap
            map.insert(map.cend(), key, std::move(value));
            haveKey = false;
        }
    }

    bool array(int depth, QVariant &out)
    {
        QVariantList list;
        Tag tag;
        for (;;) {
            if (!nextTag(tag))
                return false;
            if (tag.name.startsWith('/')) {
                if (tag.name != "/array")
                    return false;
                out = std::move(list);
                return true;
            }
            QVariant value;
            if (!element(tag, depth + 1, value))
                return false;
            list.append(std::move(value));
        }
    }

    // Text up to the end tag, with comments left out and CDATA kept as it
    // is; `entities` is set when the plain parts hold an '&'.
    bool textParts(QByteArrayView name, QByteArray &out, bool *entities)
    {
        for (;;) {
            const char *lt = static_cast<const char *>(memchr(m_at, '<', left()));
            if (!lt)
                return false;
            const QByteArrayView plain(m_at, lt - m_at);
            if (entities && plain.contains('&'))
                *entities = true;
            out.append(plain);
            m_at = lt;
            if (startsWith("<!--")) {
                m_at += 4;
                if (!skipPast("-->"))
                    return false;
            } else if (startsWith("<![CDATA[")) {
                m_at += 9;
                const qsizetype close = QByteArrayView(m_at, left()).indexOf("]]>");
                if (close < 0)
                    return false;
                // CDATA is taken literally: escape what the entity pass would change
                const QByteArrayView raw(m_at, close);
                if (entities && raw.contains('&')) {
                    *entities = true;
                    out.append(raw.toByteArray().replace("&", "&amp;"));
                } else {
                    out.append(raw);
                }
                m_at += close + 3;
            } else {
                return endTag(name);
            }
        }
    }

    bool rawText(QByteArrayView name, QByteArray &out) { return textParts(name, out, nullptr); }

    bool keyText(QByteArray &utf8)
    {
        bool entities = false;
        if (!textParts("key", utf8, &entities))
            return false;
        return !entities || PropertyListXmlValues::unescape(utf8);
    }

    bool readString(QByteArrayView name, QString &text)
    {
        // the usual case: plain text right up to the end tag
        const char *lt = static_cast<const char *>(memchr(m_at, '<', left()));
        if (lt && lt + 1 < m_end && lt[1] == '/' &&
            !QByteArrayView(m_at, lt - m_at).contains('&')) {
            const QByteArrayView plain(m_at, lt - m_at);
            m_at = lt;
            if (!endTag(name))
                return false;
            text = QString::fromUtf8(plain);
            return true;
        }
        QByteArray utf8;
        bool entities = false;
        if (!textParts(name, utf8, &entities) ||
            (entities && !PropertyListXmlValues::unescape(utf8)))
            return false;
        text = QString::fromUtf8(utf8);
        return true;
    }

    const char *m_at;
    const char *m_end;
    int m_maxDepth;
    KeyCache m_keys;
};

} // namespace

QVariant PropertyListXml::read(QByteArrayView document, int maxDepth)
{
    return Reader(document, maxDepth).document();
}

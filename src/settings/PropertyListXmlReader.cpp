#include "settings/PropertyListXml.h"

#include "settings/CivilDate.h"

#include <QDateTime>
#include <QTimeZone>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale.h>
#include <vector>

namespace {

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Numbers are read as the C library reads them, after any white space it
// knows, form feed and vertical tab included.
bool isCSpace(char c)
{
    return isSpace(c) || c == '\v' || c == '\f';
}

QByteArrayView withoutLeadingCSpace(QByteArrayView text)
{
    qsizetype i = 0;
    while (i < text.size() && isCSpace(text[i]))
        ++i;
    return text.sliced(i);
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
            out = integer(text);
        else if (name == "real")
            out = real(text);
        else if (name == "date")
            out = date(text, tag.empty);
        else
            out = data(text);
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
        return !entities || unescape(utf8);
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
        if (!textParts(name, utf8, &entities) || (entities && !unescape(utf8)))
            return false;
        text = QString::fromUtf8(utf8);
        return true;
    }

    // Replaces the five named entities and character references in place;
    // false for any other '&'.
    static bool unescape(QByteArray &text)
    {
        QByteArray out;
        out.reserve(text.size());
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (text[i] != '&') {
                out.append(text[i]);
                continue;
            }
            const qsizetype semicolon = text.indexOf(';', i + 1);
            if (semicolon < 0)
                return false;
            const QByteArrayView entity = QByteArrayView(text).sliced(i + 1, semicolon - i - 1);
            i = semicolon;
            if (entity == "amp")
                out.append('&');
            else if (entity == "lt")
                out.append('<');
            else if (entity == "gt")
                out.append('>');
            else if (entity == "quot")
                out.append('"');
            else if (entity == "apos")
                out.append('\'');
            else if (!characterReference(entity, out))
                return false;
        }
        text = std::move(out);
        return true;
    }

    static bool characterReference(QByteArrayView entity, QByteArray &out)
    {
        if (entity.size() < 2 || entity.size() > 8 || entity[0] != '#')
            return false;
        const bool hex = entity[1] == 'x' || entity[1] == 'X';
        const QByteArrayView digits = entity.sliced(hex ? 2 : 1);
        quint32 number = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), number, hex ? 16 : 10);
        char32_t code = number;
        if (error != std::errc() || end != digits.data() + digits.size() || code == 0 ||
            code > 0x10FFFF)
            return false;
        // a lone surrogate has no UTF-8 form
        if (code >= 0xD800 && code <= 0xDFFF)
            code = 0xFFFD;
        out.append(QString::fromUcs4(&code, 1).toUtf8());
        return true;
    }

    static QVariant integer(QByteArrayView text)
    {
        // as strtoull with base 0 after one optional sign: "0x" for hex, a
        // leading 0 for octal; the digits up to the first other character;
        // too large saturates
        text = withoutLeadingCSpace(text);
        qsizetype i = 0;
        bool negative = false;
        if (i < text.size() && (text[i] == '-' || text[i] == '+'))
            negative = text[i++] == '-';
        while (i < text.size() && isCSpace(text[i]))
            ++i;
        if (i < text.size() && (text[i] == '-' || text[i] == '+'))
            negative = negative != (text[i++] == '-');
        int base = 10;
        if (i + 1 < text.size() && text[i] == '0' && (text[i + 1] == 'x' || text[i + 1] == 'X') &&
            i + 2 < text.size() && std::isxdigit(uchar(text[i + 2]))) {
            base = 16;
            i += 2;
        } else if (i < text.size() && text[i] == '0') {
            base = 8;
        }
        quint64 value = 0;
        const auto [end, error] =
            std::from_chars(text.data() + i, text.data() + text.size(), value, base);
        if (error == std::errc::result_out_of_range)
            value = std::numeric_limits<quint64>::max();
        Q_UNUSED(end);
        if (negative)
            return qint64(-value);
        if (value > quint64(std::numeric_limits<qint64>::max()))
            return QVariant::fromValue(value);
        return qint64(value);
    }

    static double real(QByteArrayView text)
    {
        // std::from_chars reads what strtod reads in the C locale, save a
        // leading '+', hex and the overflow cases: those go to strtod_l
        text = withoutLeadingCSpace(text);
        const char *begin = text.data();
        const char *end = begin + text.size();
        const char *digits = begin < end && *begin == '+' ? begin + 1 : begin;
        const bool hex = end - digits >= 2 && digits[0] == '0' && (digits[1] | 0x20) == 'x';
        double value = 0.0;
        if (!hex && (digits == begin || (digits < end && *digits != '-'))) {
            const auto [stop, error] = std::from_chars(digits, end, value);
            if (error == std::errc())
                return value;
            if (error == std::errc::invalid_argument)
                return 0.0;
        }
        static const locale_t c = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
        const std::string copy(begin, end);
        return strtod_l(copy.c_str(), nullptr, c);
    }

    static QDateTime date(QByteArrayView text, bool empty)
    {
        // "YYYY-MM-DDTHH:MM:SSZ"; fields missing from the end read as 0, and
        // a text too short to be a date reads as the Unix epoch
        const qint64 reference = 978307200;
        if (empty)
            return QDateTime::fromSecsSinceEpoch(reference, QTimeZone::utc());
        if (text.size() < 11 || text.size() >= 32)
            return QDateTime::fromSecsSinceEpoch(0, QTimeZone::utc());
        qint64 fields[6] = {0, 1, 1, 0, 0, 0};
        static constexpr char separators[] = "--T::";
        const char *at = text.data();
        const char *end = at + text.size();
        int parsed = 0;
        for (int i = 0; i < 6; ++i, ++parsed) {
            if (i > 0) {
                if (at >= end || *at != separators[i - 1])
                    break;
                ++at;
            }
            const auto [stop, error] = std::from_chars(at, end, fields[i]);
            if (error != std::errc())
                break;
            at = stop;
            // far beyond any real date, and keeps the sums below in range
            fields[i] = std::clamp<qint64>(fields[i], -10'000'000, 10'000'000);
        }
        if (parsed == 0)
            return QDateTime::fromSecsSinceEpoch(0, QTimeZone::utc());
        const qint64 days = CivilDate::daysFromCivil(fields[0], fields[1], fields[2]);
        return QDateTime::fromSecsSinceEpoch(
            days * 86400 + fields[3] * 3600 + fields[4] * 60 + fields[5], QTimeZone::utc());
    }

    static QByteArray data(QByteArrayView text)
    {
        // base64 in groups of four, white space anywhere; anything else, or
        // a count that is no multiple of four, reads as no bytes
        QByteArray compact;
        compact.reserve(text.size());
        for (const char c : text) {
            if (!isSpace(c))
                compact.append(c);
        }
        if (compact.size() % 4 != 0)
            return {};
        QByteArray bytes;
        for (qsizetype at = 0; at < compact.size(); at += 4) {
            const QByteArrayView group = QByteArrayView(compact).sliced(at, 4);
            if (group == "====")
                continue;
            auto decoded = QByteArray::fromBase64Encoding(group.toByteArray(),
                                                          QByteArray::AbortOnBase64DecodingErrors);
            if (!decoded)
                return {};
            bytes.append(*decoded);
        }
        return bytes;
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

#include "settings/PropertyListXml.h"

#include "settings/CivilDate.h"

#include <QDateTime>

#include <charconv>
#include <cmath>
#include <vector>

namespace {

constexpr QByteArrayView Header = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                  "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                  "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                  "<plist version=\"1.0\">\n";
constexpr QByteArrayView Footer = "</plist>\n";

// XML 1.0 cannot hold most control characters (not even escaped) nor
// U+FFFE and U+FFFF. Each becomes U+FFFD: the file always parses, and the
// text keeps its length and shows where something was.
bool unfitForXml(char16_t u)
{
    return (u < 0x20 && u != u'\t' && u != u'\n' && u != u'\r') || u == 0xFFFE || u == 0xFFFF;
}

void appendEscaped(QByteArray &out, const QString &text)
{
    bool plain = true;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'&' || u == u'<' || u == u'>' || unfitForXml(u)) {
            plain = false;
            break;
        }
    }
    if (plain) {
        out.append(text.toUtf8());
        return;
    }
    QString clean = text;
    for (QChar &c : clean) {
        if (unfitForXml(c.unicode()))
            c = QChar::ReplacementCharacter;
    }
    for (const char byte : clean.toUtf8()) {
        switch (byte) {
        case '&':
            out.append("&amp;");
            break;
        case '<':
            out.append("&lt;");
            break;
        case '>':
            out.append("&gt;");
            break;
        default:
            out.append(byte);
        }
    }
}

class Writer
{
public:
    explicit Writer(QByteArray &out) : m_out(out) {}

    void value(const QVariant &value, int depth)
    {
        switch (value.metaType().id()) {
        case QMetaType::QVariantMap:
            dictionary(*static_cast<const QVariantMap *>(value.constData()), depth);
            return;
        case QMetaType::QVariantHash: {
            // written in key order, as a map would be
            const QVariantHash &hash = *static_cast<const QVariantHash *>(value.constData());
            QVariantMap map;
            for (auto it = hash.cbegin(); it != hash.cend(); ++it)
                map.insert(it.key(), it.value());
            dictionary(map, depth);
            return;
        }
        case QMetaType::QVariantList:
            array(*static_cast<const QVariantList *>(value.constData()), depth);
            return;
        case QMetaType::QStringList:
            array(value.toList(), depth);
            return;
        case QMetaType::Bool:
            line(depth, value.toBool() ? "<true/>" : "<false/>");
            return;
        case QMetaType::Int:
        case QMetaType::Long:
        case QMetaType::LongLong:
        case QMetaType::Short:
        case QMetaType::Char:
        case QMetaType::SChar:
            number("integer", value.toLongLong(), depth);
            return;
        case QMetaType::UInt:
        case QMetaType::ULong:
        case QMetaType::ULongLong:
        case QMetaType::UShort:
        case QMetaType::UChar:
            number("integer", value.toULongLong(), depth);
            return;
        case QMetaType::Double:
        case QMetaType::Float:
            real(value.toDouble(), depth);
            return;
        case QMetaType::QByteArray:
            data(*static_cast<const QByteArray *>(value.constData()), depth);
            return;
        case QMetaType::QDateTime:
            date(*static_cast<const QDateTime *>(value.constData()), depth);
            return;
        default:
            indent(depth);
            m_out.append("<string>");
            appendEscaped(m_out, value.toString());
            m_out.append("</string>\n");
        }
    }

private:
    void indent(int depth)
    {
        static constexpr char tabs[] = "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";
        for (; depth > 16; depth -= 16)
            m_out.append(tabs, 16);
        m_out.append(tabs, depth);
    }

    void line(int depth, QByteArrayView text)
    {
        indent(depth);
        m_out.append(text);
        m_out.append('\n');
    }

    template <typename Container> bool anyValue(const Container &values) const
    {
        for (const QVariant &v : values) {
            if (v.isValid())
                return true;
        }
        return false;
    }

    // Keys repeat in every route point; their written form is kept.
    const QByteArray &keyText(const QString &key)
    {
        for (const auto &entry : m_keys) {
            if (entry.first == key)
                return entry.second;
        }
        m_scratch.clear();
        appendEscaped(m_scratch, key);
        if (key.size() <= 8 && m_keys.size() < 32) {
            m_keys.emplace_back(key, m_scratch);
            return m_keys.back().second;
        }
        return m_scratch;
    }

    void dictionary(const QVariantMap &map, int depth)
    {
        if (!anyValue(map)) {
            line(depth, "<dict/>");
            return;
        }
        line(depth, "<dict>");
        for (auto it = map.cbegin(); it != map.cend(); ++it) {
            if (!it.value().isValid())
                continue; // a key set to nothing is not written
            indent(depth + 1);
            m_out.append("<key>");
            m_out.append(keyText(it.key()));
            m_out.append("</key>\n");
            value(it.value(), depth + 1);
        }
        line(depth, "</dict>");
    }

    void array(const QVariantList &list, int depth)
    {
        if (!anyValue(list)) {
            line(depth, "<array/>");
            return;
        }
        line(depth, "<array>");
        for (const QVariant &item : list) {
            if (item.isValid())
                value(item, depth + 1);
        }
        line(depth, "</array>");
    }

    template <typename Number> void number(QByteArrayView tag, Number n, int depth)
    {
        char digits[24];
        const auto end = std::to_chars(digits, digits + sizeof digits, n).ptr;
        element(tag, QByteArrayView(digits, end - digits), depth);
    }

    void element(QByteArrayView tag, QByteArrayView text, int depth)
    {
        indent(depth);
        m_out.append('<').append(tag).append('>');
        m_out.append(text);
        m_out.append("</").append(tag).append(">\n");
    }

    void real(double value, int depth)
    {
        if (std::isnan(value))
            return element("real", "nan", depth);
        if (std::isinf(value))
            return element("real", value > 0 ? "+infinity" : "-infinity", depth);
        if (value == 0.0)
            return element("real", "0.0", depth);
        // the same digits as printf's "%.17g": enough to read back the same bits
        char digits[32];
        const auto end =
            std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 17)
                .ptr;
        element("real", QByteArrayView(digits, end - digits), depth);
    }

    void date(const QDateTime &when, int depth)
    {
        // whole seconds, rounded down, as the format keeps no fraction
        const qint64 ms = when.toMSecsSinceEpoch();
        const qint64 seconds = ms >= 0 ? ms / 1000 : -((-ms + 999) / 1000);
        const qint64 days = seconds >= 0 ? seconds / 86400 : -((-seconds + 86399) / 86400);
        const qint64 second = seconds - days * 86400;
        const CivilDate::Date day = CivilDate::civilFromDays(days);
        const auto two = [](qint64 n) { return QByteArray::number(n).rightJustified(2, '0'); };
        QByteArray year = QByteArray::number(qAbs(day.year)).rightJustified(4, '0');
        if (day.year < 0)
            year.prepend('-');
        const QByteArray text = year + '-' + two(day.month) + '-' + two(day.day) + 'T' +
                                two(second / 3600) + ':' + two(second / 60 % 60) + ':' +
                                two(second % 60) + 'Z';
        element("date", text, depth);
    }

    void data(const QByteArray &bytes, int depth)
    {
        line(depth, "<data>");
        // lines get shorter as the indent grows, up to eight tabs
        const int tabs = std::min(depth, 8);
        const qsizetype width = 76 - 8 * tabs;
        const QByteArray encoded = bytes.toBase64();
        for (qsizetype at = 0; at < encoded.size(); at += width) {
            indent(tabs);
            m_out.append(QByteArrayView(encoded).sliced(at, std::min(width, encoded.size() - at)));
            m_out.append('\n');
        }
        line(depth, "</data>");
    }

    QByteArray &m_out;
    std::vector<std::pair<QString, QByteArray>> m_keys;
    QByteArray m_scratch;
};

} // namespace

QByteArray PropertyListXml::write(const QVariant &root)
{
    if (!root.isValid())
        return {};
    QByteArray out;
    out.append(Header);
    Writer(out).value(root, 0);
    out.append(Footer);
    return out;
}

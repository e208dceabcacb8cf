#include "location/OldStyleText.h"

#include <algorithm>

namespace OldStyleText {

namespace {

bool isOctal(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('7');
}

int hexValue(QChar c)
{
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9')
        return u - u'0';
    if (u >= u'a' && u <= u'f')
        return u - u'a' + 10;
    if (u >= u'A' && u <= u'F')
        return u - u'A' + 10;
    return -1;
}

// One escape after a backslash, starting at `i`; advances `i` past it.
char16_t slashedChar(const QString &text, qsizetype &i)
{
    const QChar c = text.at(i++);
    if (isOctal(c)) {
        int value = c.unicode() - u'0';
        for (int digits = 1; digits < 3 && i < text.size() && isOctal(text.at(i)); ++digits)
            value = value * 8 + (text.at(i++).unicode() - u'0');
        return char16_t(value);
    }
    switch (c.unicode()) {
    case u'U': {
        int value = 0;
        for (int digits = 0; digits < 4 && i < text.size() && hexValue(text.at(i)) >= 0; ++digits)
            value = value * 16 + hexValue(text.at(i++));
        return char16_t(value);
    }
    case u'a':
        return u'\a';
    case u'b':
        return u'\b';
    case u'f':
        return u'\f';
    case u'n':
        return u'\n';
    case u'r':
        return u'\r';
    case u't':
        return u'\t';
    case u'v':
        return u'\v';
    default:
        // any other escaped character stands for itself ("\"" and "\\")
        return c.unicode();
    }
}

bool isBareChar(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= u'a' && u <= u'z') || (u >= u'A' && u <= u'Z') || (u >= u'0' && u <= u'9') ||
           u == u'_' || u == u'$' || u == u'+' || u == u'/' || u == u':' || u == u'.' || u == u'-';
}

} // namespace

std::optional<QString> parseQuotedString(const QString &text)
{
    qsizetype i = 0;
    if (text.isEmpty() || text.at(0) != QLatin1Char('"'))
        return std::nullopt;
    ++i;
    QString result = QStringLiteral("");
    bool closed = false;
    while (i < text.size()) {
        const QChar c = text.at(i++);
        if (c == QLatin1Char('"')) {
            closed = true;
            break;
        }
        if (c != QLatin1Char('\\')) {
            result.append(c);
            continue;
        }
        if (i >= text.size())
            return std::nullopt;
        const char16_t decoded = slashedChar(text, i);
        // an escaped carriage return and line feed make one line break here
        if (decoded == u'\n' && result.endsWith(QLatin1Char('\r')) && i >= 4 &&
            text.at(i - 4) == QLatin1Char('\\') && text.at(i - 3) == QLatin1Char('r')) {
            result.back() = QLatin1Char('\n');
            continue;
        }
        result.append(QChar(decoded));
    }
    if (!closed)
        return std::nullopt;
    // nothing but white space may follow the string
    for (; i < text.size(); ++i) {
        if (!text.at(i).isSpace())
            return std::nullopt;
    }
    return result;
}

QString quoteString(const QString &text)
{
    if (!text.isEmpty() && std::all_of(text.begin(), text.end(), isBareChar))
        return text;
    QString quoted = QStringLiteral("\"");
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        switch (u) {
        case u'"':
            quoted += QStringLiteral("\\\"");
            break;
        case u'\\':
            quoted += QStringLiteral("\\\\");
            break;
        case u'\a':
            quoted += QStringLiteral("\\a");
            break;
        case u'\b':
            quoted += QStringLiteral("\\b");
            break;
        case u'\f':
            quoted += QStringLiteral("\\f");
            break;
        case u'\n':
            quoted += QStringLiteral("\\n");
            break;
        case u'\r':
            quoted += QStringLiteral("\\r");
            break;
        case u'\t':
            quoted += QStringLiteral("\\t");
            break;
        case u'\v':
            quoted += QStringLiteral("\\v");
            break;
        default:
            if (u < 0x20)
                quoted += QString::asprintf("\\%03o", unsigned(u));
            else if (u > 0x7e)
                quoted += QString::asprintf("\\U%04x", unsigned(u));
            else
                quoted += c;
        }
    }
    quoted += QLatin1Char('"');
    return quoted;
}

QString describeDictionary(const QList<QPair<QString, QString>> &entries)
{
    QList<QPair<QString, QString>> sorted = entries;
    std::sort(sorted.begin(), sorted.end(),
              [](const auto &a, const auto &b) { return a.first < b.first; });
    QString text = QStringLiteral("{\n");
    for (const auto &[key, value] : std::as_const(sorted)) {
        text += QStringLiteral("    ") + quoteString(key) + QStringLiteral(" = ") +
                quoteString(value.isNull() ? QStringLiteral("<null>") : value) +
                QStringLiteral(";\n");
    }
    text += QLatin1Char('}');
    return text;
}

} // namespace OldStyleText

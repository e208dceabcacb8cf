#include "settings/PropertyListXmlValues.h"

#include "settings/CivilDate.h"

#include <QString>
#include <QTimeZone>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <locale.h>

namespace {

bool isCSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f';
}

// Numbers are read as the C library reads them, after any white space it
// knows, form feed and vertical tab included.
QByteArrayView withoutLeadingCSpace(QByteArrayView text)
{
    qsizetype i = 0;
    while (i < text.size() && isCSpace(text[i]))
        ++i;
    return text.sliced(i);
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// "#65" or "#x41" as UTF-8; no NUL, nothing beyond U+10FFFF.
bool characterReference(QByteArrayView entity, QByteArray &out)
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

} // namespace

namespace PropertyListXmlValues {

bool unescape(QByteArray &text)
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

QVariant integer(QByteArrayView text)
{
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

double real(QByteArrayView text)
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

QDateTime date(QByteArrayView text, bool empty)
{
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

QByteArray data(QByteArrayView text)
{
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

} // namespace PropertyListXmlValues

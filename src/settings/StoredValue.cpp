#include "settings/StoredValue.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace StoredValue {

namespace {

bool isSpace(QChar c)
{
    return c.isSpace();
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isNumber(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

qint32 saturate(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= double(std::numeric_limits<qint32>::max()))
        return std::numeric_limits<qint32>::max();
    if (value <= double(std::numeric_limits<qint32>::min()))
        return std::numeric_limits<qint32>::min();
    return qint32(value);
}

} // namespace

bool boolValue(const QVariant &value)
{
    if (isNumber(value))
        return value.toDouble() != 0.0;
    if (value.metaType().id() != QMetaType::QString)
        return false;
    const QString text = value.toString();
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && isSpace(text[i]))
        ++i;
    if (i < n && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    while (i < n && text[i] == u'0')
        ++i;
    if (i == n)
        return false;
    const QChar c = text[i];
    return (c >= u'1' && c <= u'9') || c == u'Y' || c == u'y' || c == u'T' || c == u't';
}

qint32 intValue(const QVariant &value)
{
    if (isNumber(value))
        return saturate(value.toDouble());
    if (value.metaType().id() != QMetaType::QString)
        return 0;
    const QString text = value.toString();
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && isSpace(text[i]))
        ++i;
    bool negative = false;
    if (i < n && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }
    qint64 magnitude = 0;
    for (; i < n && isDigit(text[i]); ++i) {
        magnitude = magnitude * 10 + (text[i].unicode() - u'0');
        if (magnitude > qint64(std::numeric_limits<qint32>::max()) + 1)
            magnitude = qint64(std::numeric_limits<qint32>::max()) + 1; // saturates
    }
    const qint64 signedValue = negative ? -magnitude : magnitude;
    return saturate(double(signedValue));
}

double doubleValue(const QVariant &value)
{
    if (isNumber(value))
        return value.toDouble();
    if (value.metaType().id() != QMetaType::QString)
        return 0.0;
    const QString text = value.toString();
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && isSpace(text[i]))
        ++i;
    // collect the longest leading decimal number: sign, digits, point, digits,
    // then an exponent only when it has digits of its own
    QByteArray number;
    if (i < n && (text[i] == u'+' || text[i] == u'-')) {
        if (text[i] == u'-')
            number.append('-');
        ++i;
    }
    bool digits = false;
    for (; i < n && isDigit(text[i]); ++i, digits = true)
        number.append(char(text[i].unicode()));
    if (i < n && text[i] == u'.') {
        number.append('.');
        for (++i; i < n && isDigit(text[i]); ++i, digits = true)
            number.append(char(text[i].unicode()));
    }
    if (!digits)
        return 0.0;
    if (i < n && (text[i] == u'e' || text[i] == u'E')) {
        qsizetype j = i + 1;
        QByteArray exponent("e");
        if (j < n && (text[j] == u'+' || text[j] == u'-'))
            exponent.append(char(text[j++].unicode()));
        bool expDigits = false;
        for (; j < n && isDigit(text[j]); ++j, expDigits = true)
            exponent.append(char(text[j].unicode()));
        if (expDigits)
            number.append(exponent);
    }
    double result = 0.0;
    const auto [ptr, ec] =
        std::from_chars(number.constData(), number.constData() + number.size(), result);
    Q_UNUSED(ptr);
    if (ec == std::errc::result_out_of_range) {
        if (number.contains("e-"))
            return 0.0; // too small to hold
        return number.startsWith('-') ? -HUGE_VAL : HUGE_VAL;
    }
    return ec == std::errc() ? result : 0.0;
}

bool isFiniteNumber(const QVariant &value)
{
    if (isNumber(value))
        return std::isfinite(value.toDouble());
    if (value.metaType().id() != QMetaType::QString)
        return true;
    if (!std::isfinite(doubleValue(value)))
        return false;
    const QString text = value.toString();
    qsizetype i = 0;
    while (i < text.size() && isSpace(text[i]))
        ++i;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    const QStringView word = QStringView(text).mid(i, 3);
    return word.compare(u"inf", Qt::CaseInsensitive) != 0 &&
           word.compare(u"nan", Qt::CaseInsensitive) != 0;
}

QString formatFlag(bool on)
{
    return QString::asprintf("%d", on ? 1 : 0);
}

QString formatReal(double value)
{
    return QString::asprintf("%f", value);
}

} // namespace StoredValue

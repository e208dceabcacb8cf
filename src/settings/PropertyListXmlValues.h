#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>
#include <QVariant>

// The text of the XML form's scalar elements turned into values, leniently,
// the way the usual reader does it: whatever a hand or another program left
// in a settings file reads as something rather than nothing.
namespace PropertyListXmlValues {

// Replaces the five named entities and character references in place;
// false for any other '&'.
bool unescape(QByteArray &text);

// As strtoull with base 0 after an optional sign: "0x" for hex, a leading 0
// for octal, the digits up to the first other character; too large
// saturates. qint64, or quint64 above 2^63 - 1.
QVariant integer(QByteArrayView text);

// As strtod in the C locale: "inf", "nan", hex and a leading '+' included;
// no number reads as 0.
double real(QByteArrayView text);

// "YYYY-MM-DDTHH:MM:SSZ"; fields missing from the end read as 0, a text too
// short to be a date as the Unix epoch, an empty element as 2001-01-01.
QDateTime date(QByteArrayView text, bool empty);

// Base64 in groups of four, white space anywhere; anything else, or a count
// that is no multiple of four, reads as no bytes.
QByteArray data(QByteArrayView text);

} // namespace PropertyListXmlValues

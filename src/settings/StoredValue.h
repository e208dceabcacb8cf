#pragma once

#include <QString>
#include <QVariant>

// Reads numbers and flags out of settings values the way the hooking
// component and the original screens do: numbers are stored as text made with
// "%d" or "%f", but any stored value type must read sensibly.
namespace StoredValue {

// True for a boolean true, a non-zero number, or a text whose first
// significant character (after leading white space, an optional sign and
// leading zeros) is a digit 1-9 or one of Y, y, T, t.
bool boolValue(const QVariant &value);

// The leading decimal integer of a text (0 when there is none), saturated to
// the 32-bit range; numbers are truncated toward zero.
qint32 intValue(const QVariant &value);

// The leading decimal floating-point number of a text (0.0 when there is
// none); numbers as they are.
double doubleValue(const QVariant &value);

// False for a value that stands for no finite number: a real that is
// infinite or not a number, or a text that overflows or spells one ("inf",
// "nan", as "%f" writes them). Anything else reads as a finite number.
bool isFiniteNumber(const QVariant &value);

// The C formats used for every number the settings files hold as text.
QString formatFlag(bool on);      // "%d": "1" or "0"
QString formatReal(double value); // "%f": six decimals

} // namespace StoredValue

#pragma once

#include "platform/Coordinate.h"

#include <QString>

// What the fixed-location screen's search field holds, read once the text is
// trimmed: nothing, a typed coordinate pair ("#:" then latitude, a comma and
// longitude), a "#:" text of the wrong shape, or an address to look up.
struct SearchInput
{
    enum Kind { Empty, CoordinatePair, MalformedPair, Address };

    Kind kind = Empty;
    QString text;          // the trimmed text
    Coordinate coordinate; // for CoordinatePair

    // Numbers are read as far as they go, a part without one reads as 0, and
    // no range is checked: typing coordinates must work exactly as it always has.
    // A part that is no finite number ("1e999", "inf", "nan") makes the pair
    // malformed, as a wrong number of parts does.
    static SearchInput parse(const QString &typed);
};

#pragma once

#include "platform/Coordinate.h"

#include <QByteArray>

#include <optional>

// A position as the feed reports it, with the movement that leads to it.
struct FeedFix
{
    Coordinate coordinate;
    double speedMetersPerSecond = 0.0;
    double courseDegrees = 0.0; // clockwise from true north, 0 up to 360
};

// NMEA 0183 as receivers read it: GGA, RMC and VTG for one moment, each
// line "$...*HH\r\n" with its checksum.
namespace NmeaSentences {

// "$" + body + "*" + the XOR of the body's bytes in two hex digits + CR LF.
QByteArray sentence(const QByteArray &body);

// Degrees as ddmm.mmmmmm (longitude dddmm.mmmmmm) and the hemisphere letter,
// e.g. "2232.586000,N": six decimals of a minute keep about 2 mm.
QByteArray angle(double degrees, int degreeDigits, char positive, char negative);

// The three sentences for the UTC moment `msecsSinceEpoch`. Without a fix
// they carry no time and no place, with GGA quality 0 and RMC status V, so
// a receiver sees a device without a fix and turns to its other sources.
QByteArray forMoment(qint64 msecsSinceEpoch, const std::optional<FeedFix> &fix);

} // namespace NmeaSentences

#pragma once

#include "platform/Coordinate.h"
#include "settings/FavoriteEntry.h"
#include "settings/RoutePoint.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

// GPX 1.1 files: favourites travel as waypoints (<wpt lat lon><name>), the
// planned route as one track (<trk><trkseg><trkpt lat lon><time>).
namespace Gpx {

// Larger files are refused before they are read: a few million points fit,
// and a mistaken pick of some huge unrelated file does not fill the memory.
constexpr qint64 MaxFileBytes = 64 * 1024 * 1024;
constexpr qsizetype MaxPoints = 2'000'000;

// What a file holds. `track` is the first track's points, every segment in
// order, or, when the file has no track, the first route's points: places,
// as a routing service answers them, for TripController::usePlannedPoints.
struct Content
{
    QList<FavoriteEntry> waypoints; // made with FavoriteEntry::make
    QList<Coordinate> track;
    QString error; // one line when the file was refused; then the lists are empty

    bool ok() const { return error.isEmpty(); }
};

// `times` is empty (no <time> is written) or holds one time per point,
// written in UTC, ISO 8601. Favourites that are not places are left out; no
// track is written when `track` is empty.
QByteArray toXml(const QList<FavoriteEntry> &waypoints, const QList<RoutePoint> &track,
                 const QList<QDateTime> &times = {});
// Writes the whole file or, on failure, leaves whatever was there; the
// answer is the one-line reason, empty on success.
QString write(const QString &path, const QList<FavoriteEntry> &waypoints,
              const QList<RoutePoint> &track, const QList<QDateTime> &times = {});

// Refuses what is not GPX, a file without a single waypoint or track/route
// point, a coordinate that is not a finite number in range, and more than
// `maxPoints` points in all.
Content fromXml(const QByteArray &xml, qsizetype maxPoints = MaxPoints);
// As fromXml, and refuses a file that cannot be opened or is larger than
// MaxFileBytes.
Content read(const QString &path);

} // namespace Gpx

#include "routing/RoutePace.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace {

constexpr double DegreesToRadians = std::numbers::pi / 180.0;

struct UnitVector
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

UnitVector toVector(const Coordinate &c)
{
    const double lat = c.latitude * DegreesToRadians;
    const double lng = c.longitude * DegreesToRadians;
    return {std::cos(lat) * std::cos(lng), std::cos(lat) * std::sin(lng), std::sin(lat)};
}

Coordinate toCoordinate(const UnitVector &v)
{
    return {std::atan2(v.z, std::hypot(v.x, v.y)) / DegreesToRadians,
            std::atan2(v.y, v.x) / DegreesToRadians};
}

// The point a fraction `f` of the way from `a` to `b` along the great circle,
// so that distances along a long segment stay proportional to the fraction.
Coordinate between(const Coordinate &a, const Coordinate &b, double f)
{
    const double angle = RoutePace::distanceMeters(a, b) / RoutePace::MeanEarthRadiusMeters;
    const double s = std::sin(angle);
    if (s < 1e-12) // too close for the circle to matter
        return {a.latitude + (b.latitude - a.latitude) * f,
                a.longitude + (b.longitude - a.longitude) * f};
    const double wa = std::sin((1.0 - f) * angle) / s;
    const double wb = std::sin(f * angle) / s;
    const UnitVector va = toVector(a);
    const UnitVector vb = toVector(b);
    return toCoordinate({wa * va.x + wb * vb.x, wa * va.y + wb * vb.y, wa * va.z + wb * vb.z});
}

} // namespace

double RoutePace::distanceMeters(const Coordinate &from, const Coordinate &to)
{
    const double lat1 = from.latitude * DegreesToRadians;
    const double lat2 = to.latitude * DegreesToRadians;
    const double dLat = lat2 - lat1;
    const double dLng = (to.longitude - from.longitude) * DegreesToRadians;
    const double h = std::sin(dLat / 2) * std::sin(dLat / 2) +
                     std::cos(lat1) * std::cos(lat2) * std::sin(dLng / 2) * std::sin(dLng / 2);
    return 2.0 * MeanEarthRadiusMeters * std::asin(std::sqrt(std::min(1.0, h)));
}

double RoutePace::lengthMeters(const QList<Coordinate> &points)
{
    double total = 0.0;
    for (qsizetype i = 1; i < points.size(); ++i)
        total += distanceMeters(points[i - 1], points[i]);
    return total;
}

std::optional<double> RoutePace::speedKmh(QStringView text)
{
    static const struct
    {
        const char16_t *name;
        double kmh;
    } named[] = {{u"walk", 5.0}, {u"run", 10.0}, {u"cycle", 18.0}, {u"drive", 50.0}};
    for (const auto &n : named)
        if (text.compare(QStringView(n.name), Qt::CaseInsensitive) == 0)
            return n.kmh;
    bool ok = false;
    const double kmh = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(kmh) || kmh <= 0.0)
        return std::nullopt;
    return kmh;
}

std::optional<qint32> RoutePace::endTime(qint32 start, double lengthMeters, double kmh)
{
    if (!std::isfinite(kmh) || kmh <= 0.0 || !std::isfinite(lengthMeters) || lengthMeters < 0.0)
        return std::nullopt;
    // Metres x 3600 over metres per hour keeps both factors exact integers,
    // so a length that takes a whole number of seconds is not rounded up.
    const double seconds = std::ceil(lengthMeters * 3600.0 / (kmh * 1000.0));
    const double end = double(start) + seconds;
    if (!std::isfinite(end) || end > double(std::numeric_limits<qint32>::max()))
        return std::nullopt;
    return qint32(end);
}

QList<Coordinate> RoutePace::evenPace(const QList<Coordinate> &points, double durationSeconds)
{
    if (points.size() < 2 || !std::isfinite(durationSeconds) || durationSeconds <= 0.0)
        return points;
    QList<double> along; // the distance from the first point to each point
    along.reserve(points.size());
    along.append(0.0);
    for (qsizetype i = 1; i < points.size(); ++i)
        along.append(along.last() + distanceMeters(points[i - 1], points[i]));
    const double total = along.last();
    if (!(total > 0.0) || !std::isfinite(total))
        return points;

    const double wanted = std::max(std::ceil(durationSeconds), double(points.size() - 1));
    const qsizetype segments = qsizetype(std::min(wanted, double(MaxEvenPoints - 1)));
    const double spacing = total / double(segments);

    QList<Coordinate> even;
    even.reserve(segments + 1);
    even.append(points.first());
    qsizetype at = 1; // the first point at or past the current distance
    for (qsizetype k = 1; k < segments; ++k) {
        const double d = spacing * double(k);
        while (at < points.size() - 1 && along[at] < d)
            ++at;
        const double piece = along[at] - along[at - 1];
        const double f = piece > 0.0 ? std::clamp((d - along[at - 1]) / piece, 0.0, 1.0) : 0.0;
        even.append(between(points[at - 1], points[at], f));
    }
    even.append(points.last());
    return even;
}

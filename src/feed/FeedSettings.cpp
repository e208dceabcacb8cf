#include "feed/FeedSettings.h"

#include "routing/RoutePreview.h"
#include "settings/MasterRecord.h"
#include "settings/TMPreferenceUtil.h"

#include <QFile>

#include <cmath>
#include <limits>

#include <sys/stat.h>

namespace {

// the mean radius: speeds over the ground, not map distances
constexpr double MeanEarthRadiusMeters = 6371008.8;

double radians(double degrees)
{
    return degrees * M_PI / 180.0;
}

double distanceMeters(const Coordinate &from, const Coordinate &to)
{
    const double dLatitude = radians(to.latitude - from.latitude);
    const double dLongitude = radians(to.longitude - from.longitude);
    const double a = std::pow(std::sin(dLatitude / 2), 2) +
                     std::cos(radians(from.latitude)) * std::cos(radians(to.latitude)) *
                         std::pow(std::sin(dLongitude / 2), 2);
    return 2 * MeanEarthRadiusMeters * std::asin(std::min(1.0, std::sqrt(a)));
}

double courseDegrees(const Coordinate &from, const Coordinate &to)
{
    const double dLongitude = radians(to.longitude - from.longitude);
    const double y = std::sin(dLongitude) * std::cos(radians(to.latitude));
    const double x =
        std::cos(radians(from.latitude)) * std::sin(radians(to.latitude)) -
        std::sin(radians(from.latitude)) * std::cos(radians(to.latitude)) * std::cos(dLongitude);
    const double degrees = std::fmod(std::atan2(y, x) * 180.0 / M_PI + 360.0, 360.0);
    return degrees >= 359.995 ? 0.0 : degrees; // what would print as 360.00
}

// a stray value in a file must not turn into a sentence no receiver parses
bool reportable(const Coordinate &coordinate)
{
    return coordinate.isValid(); // false for NaN too
}

// The trip's point at `seconds` (the preview's whole seconds), with the
// speed and course from there to the point a second later; nothing when
// the preview has no point.
std::optional<FeedFix> tripFixAt(const RouteRecord &route, qint32 seconds)
{
    const RoutePreview::Step here = RoutePreview::stepAt(route, seconds);
    if (route.pointCount() == 0 || !here.inRange || !reportable(here.coordinate))
        return std::nullopt;
    FeedFix fix{here.coordinate};
    if (seconds == std::numeric_limits<qint32>::max())
        return fix;
    const RoutePreview::Step next = RoutePreview::stepAt(route, seconds + 1);
    if (next.inRange && reportable(next.coordinate) && next.coordinate != here.coordinate) {
        fix.speedMetersPerSecond = distanceMeters(here.coordinate, next.coordinate);
        fix.courseDegrees = courseDegrees(here.coordinate, next.coordinate);
    }
    return fix;
}

} // namespace

FeedSettings::FeedSettings(const TMPreferenceUtil &store, QObject *parent)
    : QObject(parent), m_store(store)
{
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (refresh())
            emit changed();
    });
    refresh();
}

bool FeedSettings::watch()
{
    if (!m_watcher.directories().isEmpty())
        return true;
    if (!m_watcher.addPath(m_store.files().directory()))
        return false;
    refresh(); // whatever changed while nothing watched
    return true;
}

FeedSettings::Stamp FeedSettings::stampOf(const QString &file)
{
    struct stat status;
    if (::stat(QFile::encodeName(file).constData(), &status) != 0)
        return {};
    const auto nanoseconds = [](const timespec &t) {
        return qint64(t.tv_sec) * 1000000000 + t.tv_nsec;
    };
    return {true,
            qint64(status.st_size),
            nanoseconds(status.st_mtim),
            nanoseconds(status.st_ctim),
            quint64(status.st_dev),
            quint64(status.st_ino)};
}

bool FeedSettings::changedSince(const QString &file, std::optional<Stamp> &known)
{
    const Stamp now = stampOf(file);
    if (known && *known == now)
        return false;
    // stamped before reading: a replacement during the read shows next time
    known = now;
    ++m_reads;
    return true;
}

bool FeedSettings::refresh()
{
    const PreferenceFiles &files = m_store.files();
    bool any = false;
    if (changedSince(files.masterFile(), m_masterStamp)) {
        m_mode = m_store.mode();
        any = true;
    }
    if (changedSince(files.locationFile(), m_locationStamp)) {
        m_location = m_store.locationPreference();
        any = true;
    }
    if (changedSince(files.routeFile(), m_routeStamp)) {
        m_route = m_store.routePreference();
        any = true;
    }
    return any;
}

std::optional<FeedFix> FeedSettings::fixAt(qint64 msecsSinceEpoch) const
{
    const auto place = [this]() -> std::optional<FeedFix> {
        const FeedFix fix{{m_location.latitude(), m_location.longitude()}};
        if (m_location.isEnabled() && reportable(fix.coordinate))
            return fix;
        return std::nullopt;
    };
    const auto trip = [&]() -> std::optional<FeedFix> {
        if (!m_route.isEnabled())
            return std::nullopt;
        return tripFixAt(m_route, RoutePreview::nowSeconds(double(msecsSinceEpoch) / 1000.0));
    };
    // The screens keep at most one switch on, that of the mode shown. A
    // switch turned on from the command line leaves the mode as it was, and
    // the hook, which never reads the master file, still follows it: the
    // mode only says which switch counts when both are on.
    if (m_mode != MasterRecord::RouteMode)
        return m_location.isEnabled() ? place() : trip();
    return m_route.isEnabled() ? trip() : place();
}

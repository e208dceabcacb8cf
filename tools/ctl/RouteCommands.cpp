// route and where: the route record, and where its trip stands at a time.

#include "Ctl.h"
#include "RecordJson.h"

#include "gpx/GpxFile.h"
#include "location/Location.h"
#include "modes/TripController.h"
#include "platform/Clock.h"
#include "routing/DirectionsService.h"
#include "routing/RoutePace.h"
#include "routing/RoutePreview.h"
#include "settings/TMPreferenceUtil.h"

#include <QDateTime>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonObject>
#include <QTimeZone>
#include <QTimer>

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

namespace {

// Runs the event loop until `done` says so (the services' own time-outs
// guarantee an answer).
void waitUntil(const std::function<bool()> &done)
{
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    poll.start(5);
    if (!done())
        loop.exec();
}

// The trip as the route screen has it, over this run's store and services.
std::unique_ptr<TripController> trip(CtlContext &context)
{
    return std::make_unique<TripController>(*context.services.preferences,
                                            context.services.directions, *context.services.clock);
}

// Waits for the route the trip is planning, if any.
void waitForPlanning(TripController &trip)
{
    if (!trip.isPlanning())
        return;
    QEventLoop loop;
    QObject::connect(&trip, &TripController::planningFinished, &loop, [&] {
        if (!trip.isPlanning())
            loop.quit();
    });
    loop.exec();
}

// The first address line of a place, or "Unknow" when the lookup fails, as
// the address picker shows it.
QString addressOf(CtlContext &context, const Coordinate &coordinate)
{
    QObject receiver;
    bool answered = false;
    QString address;
    context.services.location->addressWithCoordinate(coordinate, &receiver,
                                                     [&](const AddressAnswer &answer) {
                                                         answered = true;
                                                         if (answer.succeeded())
                                                             address = *answer.value;
                                                     });
    waitUntil([&] { return answered; });
    return address.isEmpty() ? QStringLiteral("Unknow") : address;
}

// Whole seconds since 1970, or an ISO 8601 local date and time.
std::optional<double> parseTime(const QString &text)
{
    bool ok = false;
    const qlonglong seconds = text.toLongLong(&ok);
    if (ok)
        return double(seconds);
    const QDateTime local = QDateTime::fromString(text, Qt::ISODate);
    if (!local.isValid())
        return std::nullopt;
    return double(local.toSecsSinceEpoch());
}

// The points of a GPX file's first track (or route), or nothing after
// saying why in one line.
std::optional<QList<Coordinate>> gpxTrack(CtlContext &context, const QString &path)
{
    const Gpx::Content content = Gpx::read(path);
    if (!content.ok() || content.track.isEmpty()) {
        context.fail(CtlBadInput,
                     content.ok() ? QStringLiteral("%1 holds no track or route points").arg(path)
                                  : content.error);
        return std::nullopt;
    }
    return content.track;
}

// Takes "--gpx FILE" out of `args`: no option, the file's name, or an empty
// text after saying why (the option without a file).
std::optional<QString> takeGpxOption(CtlContext &context, QStringList &args, const QString &usage)
{
    const qsizetype at = args.indexOf(QStringLiteral("--gpx"));
    if (at < 0)
        return std::nullopt;
    if (at + 1 >= args.size()) {
        context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
        return QString();
    }
    const QString path = args.takeAt(at + 1);
    args.removeAt(at);
    return path;
}

// "--json" may also follow the command's own arguments
bool takeJsonFlag(QStringList &args)
{
    return args.removeAll(QStringLiteral("--json")) > 0;
}

// Takes every "--via LAT,LNG" out of `args`, in their order: the stops on
// the way. Nothing (after one line on the error stream) when one is missing
// or is not a place.
std::optional<QList<Coordinate>> takeStops(CtlContext &context, QStringList &args,
                                           const QString &usage)
{
    QList<Coordinate> stops;
    for (qsizetype i = 0; i < args.size();) {
        if (args[i] != QLatin1String("--via")) {
            ++i;
            continue;
        }
        if (i + 1 >= args.size()) {
            context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
            return std::nullopt;
        }
        const QStringList parts = args[i + 1].split(u',');
        if (parts.size() != 2) {
            context.fail(CtlBadInput,
                         QStringLiteral("stop \"%1\" is not LAT,LNG").arg(args[i + 1]));
            return std::nullopt;
        }
        const auto latitude = CtlArgs::latitude(context, parts[0]);
        const auto longitude = latitude ? CtlArgs::longitude(context, parts[1]) : std::nullopt;
        if (!longitude)
            return std::nullopt;
        stops.append({*latitude, *longitude});
        args.remove(i, 2);
    }
    return stops;
}

// The two places of "FROM_LAT FROM_LNG TO_LAT TO_LNG", or nothing (after
// one line on the error stream) when one is not a place.
std::optional<std::pair<Coordinate, Coordinate>> takePlaces(CtlContext &context,
                                                            const QStringList &numbers)
{
    const auto fromLatitude = CtlArgs::latitude(context, numbers[0]);
    const auto fromLongitude =
        fromLatitude ? CtlArgs::longitude(context, numbers[1]) : std::nullopt;
    const auto toLatitude = fromLongitude ? CtlArgs::latitude(context, numbers[2]) : std::nullopt;
    const auto toLongitude = toLatitude ? CtlArgs::longitude(context, numbers[3]) : std::nullopt;
    if (!toLongitude)
        return std::nullopt;
    return std::pair{Coordinate{*fromLatitude, *fromLongitude},
                     Coordinate{*toLatitude, *toLongitude}};
}

// Where a route comes from: a GPX file (--gpx) or stops on the way (--via),
// not both. Nothing (after one line on the error stream) for bad options.
struct RouteSource
{
    std::optional<QString> gpx;
    QList<Coordinate> stops;
};
std::optional<RouteSource> takeRouteSource(CtlContext &context, QStringList &args,
                                           const QString &usage)
{
    const std::optional<QString> gpx = takeGpxOption(context, args, usage);
    if (gpx && gpx->isEmpty())
        return std::nullopt;
    const auto stops = takeStops(context, args, usage);
    if (!stops)
        return std::nullopt;
    if (gpx && !stops->isEmpty()) {
        context.fail(CtlBadInput, QStringLiteral("--via and --gpx exclude each other"));
        return std::nullopt;
    }
    return RouteSource{gpx, *stops};
}

int routePlan(CtlContext &context, QStringList args)
{
    const QString usage =
        QStringLiteral("route plan FROM_LAT FROM_LNG TO_LAT TO_LNG [--via LAT,LNG]... | route plan "
                       "--gpx FILE, [--even-pace]");
    const bool json = takeJsonFlag(args) || context.json;
    const bool evenPace = args.removeAll(QStringLiteral("--even-pace")) > 0;
    const auto source = takeRouteSource(context, args, usage);
    if (!source)
        return CtlBadInput;
    const std::optional<QString> &gpx = source->gpx;
    const int places = gpx ? 0 : 4;
    if (!CtlArgs::count(context, args, places, places, usage))
        return CtlBadInput;
    const auto planner = trip(context);
    if (gpx) {
        const auto track = gpxTrack(context, *gpx);
        if (!track)
            return CtlBadInput;
        planner->usePlannedPoints(*track);
    } else {
        const auto places = takePlaces(context, args);
        if (!places)
            return CtlBadInput;
        if (!context.services.directions)
            return context.fail(CtlFailed, QStringLiteral("no route planning service"));
        planner->planThrough(QList<Coordinate>{places->first} + source->stops +
                             QList<Coordinate>{places->second});
        waitForPlanning(*planner);
    }
    const DirectionsAnswer &answer = planner->lastAnswer();
    if (answer.isError() || answer.routes.isEmpty())
        return context.fail(CtlFailed, answer.error.value_or(QStringLiteral("no route")));
    const DirectionsRoute &route = answer.routes.first();
    // with no trip times, an even pace is for the service's own travel time
    planner->setEvenPace(evenPace);
    planner->setEndTime(route.duration);
    const QList<RoutePoint> planned = planner->pointsToWrite();
    if (json) {
        QJsonArray points;
        for (const RoutePoint &p : planned)
            points.append(QJsonObject{{QStringLiteral("lat"), p.latitude()},
                                      {QStringLiteral("lng"), p.longitude()}});
        context.printJson(QJsonObject{{QStringLiteral("points"), points},
                                      {QStringLiteral("distance"), route.distance},
                                      {QStringLiteral("duration"), route.duration}});
    } else {
        for (const RoutePoint &p : planned)
            context.out << QString::asprintf("%.6f %.6f\n", p.latitude(), p.longitude());
    }
    return CtlOk;
}

int routeOn(CtlContext &context, QStringList args)
{
    const QString usage =
        QStringLiteral("route on FROM_LAT FROM_LNG TO_LAT TO_LNG [--via LAT,LNG]...|--gpx FILE "
                       "--start TIME --end TIME|--speed walk|run|cycle|drive|KMH [--even-pace] "
                       "[--from-address TEXT] [--to-address TEXT]");
    const bool json = takeJsonFlag(args) || context.json;
    const auto source = takeRouteSource(context, args, usage);
    if (!source)
        return CtlBadInput;
    const std::optional<QString> &gpx = source->gpx;
    QStringList numbers;
    std::optional<QString> startText, endText, speedText, fromAddress, toAddress;
    const bool evenPace = args.removeAll(QStringLiteral("--even-pace")) > 0;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString &arg = args[i];
        std::optional<QString> *option = arg == QLatin1String("--start")          ? &startText
                                         : arg == QLatin1String("--end")          ? &endText
                                         : arg == QLatin1String("--speed")        ? &speedText
                                         : arg == QLatin1String("--from-address") ? &fromAddress
                                         : arg == QLatin1String("--to-address")   ? &toAddress
                                                                                  : nullptr;
        if (option) {
            if (i + 1 >= args.size())
                return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
            *option = args[++i];
        } else {
            numbers.append(arg);
        }
    }
    if (endText && speedText)
        return context.fail(CtlBadInput, QStringLiteral("--speed and --end exclude each other"));
    if (numbers.size() != (gpx ? 0 : 4) || !startText || !(endText || speedText))
        return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
    const std::optional<double> kmh =
        speedText ? RoutePace::speedKmh(*speedText) : std::optional<double>();
    if (speedText && !kmh) {
        return context.fail(CtlBadInput,
                            QStringLiteral("\"%1\" is not walk, run, cycle, drive or a positive "
                                           "speed in km/h")
                                .arg(*speedText));
    }
    const double speed = kmh.value_or(0.0);
    // the route of a GPX file, or the two places to plan between
    std::optional<QList<Coordinate>> track;
    Coordinate from, to;
    if (gpx) {
        track = gpxTrack(context, *gpx);
        if (!track)
            return CtlBadInput;
        from = track->first();
        to = track->last();
    } else {
        const auto places = takePlaces(context, numbers);
        if (!places)
            return CtlBadInput;
        std::tie(from, to) = *places;
    }
    const auto startTime = parseTime(*startText);
    // with a speed, the end comes from the planned route's length below
    auto endTime = endText ? parseTime(*endText) : startTime;
    if (!startTime || !endTime) {
        return context.fail(CtlBadInput,
                            QStringLiteral("\"%1\" is not whole seconds since 1970 or a date and "
                                           "time like 2026-11-22T09:30")
                                .arg(startTime ? *endText : *startText));
    }
    // the trip's times are read back as 32-bit seconds everywhere
    const std::pair<double, QString> times[] = {{*startTime, *startText},
                                                {*endTime, endText.value_or(*startText)}};
    for (const auto &[time, text] : times) {
        if (time < 0 || time > double(std::numeric_limits<qint32>::max())) {
            return context.fail(
                CtlBadInput,
                QStringLiteral("\"%1\" is outside 0 to 2147483647 seconds since 1970").arg(text));
        }
    }

    TMPreferenceUtil &preferences = *context.services.preferences;
    const auto routeTrip = trip(context);
    routeTrip->restore();
    if (routeTrip->isOn())
        return context.fail(CtlFailed, routeTrip->choiceRefusal());

    // the screen's order: the places (the end plans, through the stops)
    // or the file's route, then the times
    if (track) {
        routeTrip->usePlannedPoints(*track);
    } else {
        routeTrip->chooseStart(from, QString());
        for (const Coordinate &stop : source->stops) {
            if (!routeTrip->addStop(routeTrip->stops().size(), stop, QString())) {
                return context.fail(CtlFailed,
                                    QStringLiteral("a stop on the equator or the prime meridian "
                                                   "(%1,%2) is not chosen")
                                        .arg(stop.latitude)
                                        .arg(stop.longitude));
            }
        }
        routeTrip->chooseEnd(to, QString());
        waitForPlanning(*routeTrip);
    }
    if (speedText) {
        // a start within 32 bits, checked above: whole seconds
        const auto end =
            RoutePace::endTime(qint32(*startTime), routeTrip->routeLengthMeters(), speed);
        if (!end) {
            return context.fail(CtlBadInput,
                                QStringLiteral("at %1 km/h the trip would end after 2147483647 "
                                               "seconds since 1970")
                                    .arg(speed));
        }
        endTime = *end;
    }
    routeTrip->setEvenPace(evenPace);
    routeTrip->setStartTime(*startTime);
    routeTrip->setEndTime(*endTime);
    const QString failure = routeTrip->check();
    if (!failure.isEmpty()) {
        // the screen's words, then why, when the routing service said
        const std::optional<QString> reason =
            routeTrip->isRouteError() ? routeTrip->lastAnswer().error : std::nullopt;
        return context.fail(CtlFailed, reason && !reason->isEmpty()
                                           ? QStringLiteral("%1: %2").arg(failure, *reason)
                                           : failure);
    }

    // looked up only once the choices pass: the lookups go over the network
    const QString startAddress = fromAddress ? *fromAddress : addressOf(context, from);
    const QString endAddress = toAddress ? *toAddress : addressOf(context, to);
    routeTrip->setAddresses(startAddress, endAddress);
    // the route was planned a moment ago: no second request
    if (!routeTrip->switchOn(false).written)
        return context.writeFailed(preferences.files().routeFile());
    if (json)
        context.printJson(RecordJson::route(routeTrip->record()));
    else
        context.out << RecordJson::describeRoute(routeTrip->record()) << Qt::endl;
    return CtlOk;
}

// The route record's points as one GPX track, each with the time the trip
// passes it, as the preview shows it.
int routeExport(CtlContext &context, const QStringList &args)
{
    if (args.size() != 1)
        return context.fail(CtlBadInput, QStringLiteral("usage: route export FILE"));
    const RouteRecord record = context.services.preferences->routePreference();
    if (record.pointCount() == 0)
        return context.fail(CtlFailed, QStringLiteral("no route to export: there is no route "
                                                      "record, or it has no points"));
    const QList<qint64> seconds = RoutePreview::passingTimes(record);
    QList<QDateTime> times;
    times.reserve(seconds.size());
    for (const qint64 second : seconds)
        times.append(QDateTime::fromSecsSinceEpoch(second, QTimeZone::utc()));
    const QString error = Gpx::write(args.first(), {}, record.points(), times);
    if (!error.isEmpty())
        return context.fail(CtlFailed, error);
    context.out << RecordJson::describeRoute(record) << Qt::endl;
    return CtlOk;
}

const QString RouteUsage =
    QStringLiteral("route show | route off | route export FILE | route plan FROM_LAT FROM_LNG "
                   "TO_LAT TO_LNG [--via LAT,LNG]...|--gpx FILE [--even-pace] | route on FROM_LAT "
                   "FROM_LNG TO_LAT TO_LNG [--via LAT,LNG]...|--gpx FILE --start TIME --end "
                   "TIME|--speed walk|run|cycle|drive|KMH [--even-pace] [--from-address TEXT] "
                   "[--to-address TEXT]");

int route(CtlContext &context, const QStringList &args)
{
    const QString usage = RouteUsage;
    if (!args.isEmpty() && args.first() == QLatin1String("plan"))
        return routePlan(context, args.mid(1));
    if (!args.isEmpty() && args.first() == QLatin1String("on"))
        return routeOn(context, args.mid(1));
    if (!args.isEmpty() && args.first() == QLatin1String("export"))
        return routeExport(context, args.mid(1));
    if (!CtlArgs::count(context, args, 1, 1, usage))
        return CtlBadInput;
    TMPreferenceUtil &preferences = *context.services.preferences;
    const auto routeTrip = trip(context);
    routeTrip->restore();
    const RouteRecord &record = routeTrip->record();
    if (args.first() == QLatin1String("off")) {
        if (!routeTrip->switchOff())
            return context.writeFailed(preferences.files().routeFile());
    } else if (args.first() != QLatin1String("show")) {
        return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
    }
    if (context.json)
        context.printJson(RecordJson::route(record));
    else
        context.out << RecordJson::describeRoute(record) << Qt::endl;
    return CtlOk;
}

int where(CtlContext &context, const QStringList &args)
{
    const QString usage = QStringLiteral("where [--at EPOCH_SECONDS]");
    qint32 now = RoutePreview::nowSeconds(*context.services.clock);
    if (!args.isEmpty()) {
        if (args.size() != 2 || args.first() != QLatin1String("--at"))
            return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
        const auto at = CtlArgs::number(context, QStringLiteral("time"), args[1]);
        if (!at)
            return CtlBadInput;
        now = RoutePreview::nowSeconds(*at);
    }
    const RouteRecord record = context.services.preferences->routePreference();
    const RoutePreview::Step step = RoutePreview::stepAt(record, now);
    if (!step.inRange) {
        return context.fail(CtlFailed,
                            QStringLiteral("the 32-bit preview arithmetic gives index %1, outside "
                                           "the %2 route points")
                                .arg(step.index)
                                .arg(record.pointCount()));
    }
    if (!step.coordinate.isValid()) {
        return context.fail(CtlFailed, QStringLiteral("route point %1 is unusable: %2, %3 is no "
                                                      "place on the globe")
                                           .arg(step.index)
                                           .arg(step.coordinate.latitude)
                                           .arg(step.coordinate.longitude));
    }
    if (context.json) {
        static const char *const picks[] = {"first", "proportional", "last"};
        context.printJson(QJsonObject{
            {QStringLiteral("latitude"), step.coordinate.latitude},
            {QStringLiteral("longitude"), step.coordinate.longitude},
            {QStringLiteral("index"), step.index},
            {QStringLiteral("pick"), QString::fromLatin1(picks[int(step.pick)])},
        });
    } else {
        context.out << QString::asprintf("%.6f %.6f", step.coordinate.latitude,
                                         step.coordinate.longitude)
                    << Qt::endl;
    }
    return CtlOk;
}

} // namespace

void addRouteCommands(CtlCommandTable &table)
{
    table.append(
        {QStringLiteral("route"), RouteUsage,
         QStringLiteral("Show the route record, plan a route (or take a GPX file's track), switch "
                        "the trip on or off as the route screen does, or write the route as a GPX "
                        "track."),
         route});
    table.append({QStringLiteral("where"), QStringLiteral("where [--at EPOCH_SECONDS]"),
                  QStringLiteral("The point the route preview shows at that time (default now)."),
                  where});
}

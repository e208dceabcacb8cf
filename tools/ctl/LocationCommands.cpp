// geocode, reverse, lookup and position: the location services in a
// person's hands. Each sends one request and waits on a local event loop
// for its answer.

#include "Ctl.h"

#include "location/ConfiguredPositionSourceFactory.h"
#include "location/Location.h"
#include "location/WebGeocoder.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTimer>

#include <optional>

namespace {

// Runs the event loop until `done` says so or `timeoutMs` has passed;
// answers whether it was done in time.
bool waitUntil(const std::function<bool()> &done, int timeoutMs)
{
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    QTimer deadline;
    deadline.setSingleShot(true);
    QObject::connect(&deadline, &QTimer::timeout, &loop, &QEventLoop::quit);
    poll.start(10);
    if (timeoutMs > 0)
        deadline.start(timeoutMs);
    if (!done())
        loop.exec();
    return done();
}

QJsonValue textOrNull(const QString &text)
{
    return text.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(text);
}

QJsonObject placemarkJson(const WebPlacemark &placemark)
{
    return QJsonObject{
        {QStringLiteral("name"), textOrNull(placemark.name())},
        {QStringLiteral("formattedAddress"), textOrNull(placemark.formattedAddress)},
        {QStringLiteral("subThoroughfare"), textOrNull(placemark.subThoroughfare)},
        {QStringLiteral("thoroughfare"), textOrNull(placemark.thoroughfare)},
        {QStringLiteral("subLocality"), textOrNull(placemark.subLocality)},
        {QStringLiteral("locality"), textOrNull(placemark.locality)},
        {QStringLiteral("subAdministrativeArea"), textOrNull(placemark.subAdministrativeArea)},
        {QStringLiteral("administrativeArea"), textOrNull(placemark.administrativeArea)},
        {QStringLiteral("administrativeAreaCode"), textOrNull(placemark.administrativeAreaCode)},
        {QStringLiteral("postalCode"), textOrNull(placemark.postalCode)},
        {QStringLiteral("country"), textOrNull(placemark.country)},
        {QStringLiteral("ISOcountryCode"), textOrNull(placemark.ISOcountryCode)},
        {QStringLiteral("latitude"), placemark.coordinate.latitude},
        {QStringLiteral("longitude"), placemark.coordinate.longitude},
        {QStringLiteral("latitudeDelta"), placemark.region.latitudeDelta},
        {QStringLiteral("longitudeDelta"), placemark.region.longitudeDelta},
    };
}

// Sends one web geocoding request made by `begin` and prints its places.
int runWebGeocoder(CtlContext &context,
                   const std::function<void(const WebGeocoderEndpoint &, QObject *,
                                            WebGeocoder::Completion)> &begin)
{
    QObject receiver;
    bool answered = false;
    std::optional<WebGeocoder::PlacemarkList> placemarks;
    std::optional<WebGeocoderError> error;
    begin(WebGeocoderEndpoint::fromServices(context.services), &receiver,
          [&](const std::optional<WebGeocoder::PlacemarkList> &list,
              const std::optional<WebGeocoderResponse> &,
              const std::optional<WebGeocoderError> &e) {
              placemarks = list;
              error = e;
              answered = true;
          });
    // the operation's own watchdog always answers
    waitUntil([&] { return answered; }, 0);

    const WebGeocoder::PlacemarkList found = placemarks.value_or(WebGeocoder::PlacemarkList());
    if (context.json) {
        QJsonArray array;
        for (const WebPlacemark &placemark : found)
            array.append(placemarkJson(placemark));
        context.printJson(array);
    } else {
        for (const WebPlacemark &placemark : found) {
            context.out << placemark.name() << '\t' << placemark.formattedAddress << '\t'
                        << placemark.coordinate.toString() << '\n';
        }
        context.out.flush();
    }
    if (error) {
        return context.fail(CtlFailed, QStringLiteral("%1 (%2 %3)")
                                           .arg(error->localizedDescription, error->domain)
                                           .arg(error->code));
    }
    if (found.isEmpty())
        return context.fail(CtlFailed, QStringLiteral("no places found"));
    return CtlOk;
}

std::optional<CircularRegion> parseRegion(CtlContext &context, const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3) {
        context.fail(CtlBadInput,
                     QStringLiteral("region must be LAT,LNG,RADIUS_M: \"%1\"").arg(text));
        return std::nullopt;
    }
    const auto latitude = CtlArgs::latitude(context, parts[0]);
    const auto longitude = latitude ? CtlArgs::longitude(context, parts[1]) : std::nullopt;
    const auto radius =
        longitude ? CtlArgs::number(context, QStringLiteral("radius"), parts[2]) : std::nullopt;
    if (!radius)
        return std::nullopt;
    if (*radius <= 0.0) {
        context.fail(CtlBadInput, QStringLiteral("radius must be above 0: \"%1\"").arg(parts[2]));
        return std::nullopt;
    }
    return CircularRegion{Coordinate{*latitude, *longitude}, *radius};
}

int geocode(CtlContext &context, const QStringList &args)
{
    const QString usage = QStringLiteral("geocode ADDRESS [--region LAT,LNG,RADIUS_M]");
    QStringList words;
    std::optional<CircularRegion> region;
    for (qsizetype i = 0; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--region")) {
            if (i + 1 >= args.size())
                return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
            region = parseRegion(context, args[++i]);
            if (!region)
                return CtlBadInput;
        } else {
            words.append(args[i]);
        }
    }
    const QString address = words.join(QLatin1Char(' '));
    if (address.trimmed().isEmpty())
        return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
    return runWebGeocoder(context, [&](const WebGeocoderEndpoint &endpoint, QObject *receiver,
                                       WebGeocoder::Completion completion) {
        if (region)
            WebGeocoder::geocode(endpoint, address, *region, receiver, std::move(completion));
        else
            WebGeocoder::geocode(endpoint, address, receiver, std::move(completion));
    });
}

int reverse(CtlContext &context, const QStringList &args)
{
    if (!CtlArgs::count(context, args, 2, 2, QStringLiteral("reverse LAT LNG")))
        return CtlBadInput;
    const auto latitude = CtlArgs::latitude(context, args[0]);
    const auto longitude = latitude ? CtlArgs::longitude(context, args[1]) : std::nullopt;
    if (!longitude)
        return CtlBadInput;
    return runWebGeocoder(context, [&](const WebGeocoderEndpoint &endpoint, QObject *receiver,
                                       WebGeocoder::Completion completion) {
        WebGeocoder::reverseGeocode(endpoint, Coordinate{*latitude, *longitude}, receiver,
                                    std::move(completion));
    });
}

// Keeps what the location service answered.
struct Outcome
{
    bool answered = false;
    bool failed = false;
    QString error;
    QString address;
    Coordinate coordinate;

    template <typename T> void take(const LocationAnswer<T> &answer, T &into)
    {
        answered = true;
        failed = !answer.succeeded();
        if (failed)
            error = answer.error;
        else
            into = *answer.value;
    }
};

int printCoordinate(CtlContext &context, const Coordinate &coordinate)
{
    // a script would take "inf" for a place
    if (!coordinate.isValid())
        return context.fail(CtlFailed, QStringLiteral("the answer holds no usable coordinate"));
    if (context.json) {
        context.printJson(QJsonObject{{QStringLiteral("latitude"), coordinate.latitude},
                                      {QStringLiteral("longitude"), coordinate.longitude}});
    } else {
        context.out << QString::asprintf("%.6f %.6f", coordinate.latitude, coordinate.longitude)
                    << Qt::endl;
    }
    return CtlOk;
}

int lookup(CtlContext &context, const QStringList &args)
{
    const QString usage = QStringLiteral("lookup ADDRESS | lookup LAT LNG");
    if (args.isEmpty() || args.join(QString()).trimmed().isEmpty())
        return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));

    std::optional<Coordinate> coordinate;
    if (args.size() == 2) {
        bool latitudeOk = false;
        bool longitudeOk = false;
        args[0].toDouble(&latitudeOk);
        args[1].toDouble(&longitudeOk);
        if (latitudeOk && longitudeOk) {
            const auto latitude = CtlArgs::latitude(context, args[0]);
            const auto longitude = latitude ? CtlArgs::longitude(context, args[1]) : std::nullopt;
            if (!longitude)
                return CtlBadInput;
            coordinate = Coordinate{*latitude, *longitude};
        }
    }

    QObject receiver;
    Outcome outcome;
    if (coordinate) {
        context.services.location->addressWithCoordinate(
            *coordinate, &receiver,
            [&](const AddressAnswer &answer) { outcome.take(answer, outcome.address); });
    } else {
        context.services.location->coordinateWithAddress(
            args.join(QLatin1Char(' ')), &receiver,
            [&](const CoordinateAnswer &answer) { outcome.take(answer, outcome.coordinate); });
    }
    waitUntil([&] { return outcome.answered; }, 0); // the geocoder's own timeout answers

    if (outcome.failed) {
        return context.fail(CtlFailed, outcome.error.isNull() ? QStringLiteral("nothing found")
                                                              : outcome.error);
    }
    if (!coordinate) {
        // 0,0 is what an answer without a place comes to
        if (outcome.coordinate == Coordinate{})
            return context.fail(CtlFailed, QStringLiteral("the answer holds no usable coordinate"));
        return printCoordinate(context, outcome.coordinate);
    }
    if (outcome.address.isNull())
        return context.fail(CtlFailed, QStringLiteral("the place found has no address line"));
    if (context.json)
        context.printJson(QJsonObject{{QStringLiteral("address"), outcome.address}});
    else
        context.out << outcome.address << Qt::endl;
    return CtlOk;
}

int position(CtlContext &context, const QStringList &args)
{
    const QString usage =
        QStringLiteral("position [--nmea-file FILE | --nmea-socket HOST:PORT] [--timeout SECONDS]");
    QString nmeaFile; // both empty: the configured sources
    QString nmeaSocket;
    double timeoutSeconds = 30.0;
    for (qsizetype i = 0; i < args.size(); ++i) {
        if (i + 1 >= args.size())
            return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
        if (args[i] == QLatin1String("--nmea-file")) {
            nmeaFile = args[++i];
        } else if (args[i] == QLatin1String("--nmea-socket")) {
            nmeaSocket = args[++i];
            static const QRegularExpression hostPort(QStringLiteral("^[^:/]+:\\d{1,5}$"));
            if (!hostPort.match(nmeaSocket).hasMatch())
                return context.fail(CtlBadInput,
                                    QStringLiteral("not HOST:PORT: \"%1\"").arg(nmeaSocket));
        } else if (args[i] == QLatin1String("--timeout")) {
            const auto seconds = CtlArgs::number(context, QStringLiteral("timeout"), args[++i]);
            if (!seconds)
                return CtlBadInput;
            if (*seconds <= 0.0)
                return context.fail(CtlBadInput, QStringLiteral("timeout must be above 0"));
            timeoutSeconds = *seconds;
        } else {
            return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
        }
    }
    if (!nmeaFile.isEmpty() && !QFileInfo(nmeaFile).isReadable())
        return context.fail(CtlBadInput,
                            QStringLiteral("cannot read NMEA log \"%1\"").arg(nmeaFile));

    ConfiguredPositionSourceFactory commandSources(nmeaFile, nmeaSocket);
    HeadlessServices services = context.services;
    if (!nmeaFile.isEmpty() || !nmeaSocket.isEmpty())
        services.positionSources = &commandSources;
    Outcome outcome;
    bool answered = false;
    {
        // a service of its own, for the sources of this command; its source
        // stops when it goes
        Location location(services.positionSources, services.geocoder, services.alerts);
        QObject receiver;
        location.startLocation(&receiver, [&](const PositionAnswer &answer) {
            outcome.take(answer, outcome.coordinate);
        });
        answered = waitUntil([&] { return outcome.answered; }, int(timeoutSeconds * 1000));
    }

    if (!answered) {
        return context.fail(CtlFailed,
                            QStringLiteral("no position within %1 seconds").arg(timeoutSeconds));
    }
    if (outcome.failed) {
        return context.fail(CtlFailed, outcome.error.isNull()
                                           ? QStringLiteral("the position could not be found")
                                           : outcome.error);
    }
    return printCoordinate(context, outcome.coordinate);
}

} // namespace

void addLocationCommands(CtlCommandTable &table)
{
    table.append({QStringLiteral("geocode"),
                  QStringLiteral("geocode ADDRESS [--region LAT,LNG,RADIUS_M]"),
                  QStringLiteral("Find places by address through the web geocoding service "
                                 "(--geocoding-url)."),
                  geocode});
    table.append({QStringLiteral("reverse"), QStringLiteral("reverse LAT LNG"),
                  QStringLiteral("Find the places at a coordinate through the web geocoding "
                                 "service (--geocoding-url)."),
                  reverse});
    table.append({QStringLiteral("lookup"), QStringLiteral("lookup ADDRESS | lookup LAT LNG"),
                  QStringLiteral("Look an address's coordinate, or a coordinate's address, up "
                                 "as the screens do (Nominatim, --nominatim-url)."),
                  lookup});
    table.append({QStringLiteral("position"),
                  QStringLiteral("position [--nmea-file FILE | --nmea-socket HOST:PORT] "
                                 "[--timeout SECONDS]"),
                  QStringLiteral("Find the device's position once (or replay an NMEA log, or "
                                 "read live NMEA from a server such as trekmime-feed) and print "
                                 "it."),
                  position});
}

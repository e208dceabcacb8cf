#include "routing/RoutinoDirectionsService.h"

#include "platform/HeadlessServices.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>
#include <QtMath>

#include <routino.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <vector>

namespace {

using Deliver = std::function<void(const DirectionsAnswer &)>;

// Every call into libroutino runs on this pool's one thread, one job after
// another, in the order they were given: the library keeps its profiles,
// texts and last error in process-wide state.
class RoutinoWorker : public QThreadPool
{
public:
    RoutinoWorker() { setMaxThreadCount(1); }
};
Q_GLOBAL_STATIC(RoutinoWorker, routinoWorker)

// What the worker has loaded into libroutino's process-wide state, so that
// services with different files take turns (worker thread only).
QString g_profilesFile;
QString g_translationsFile;
// The flag that stops the route being computed, read by libroutino's
// progress callback, which carries no context of its own (worker only).
const std::atomic<bool> *g_stop = nullptr;

int keepGoing(double)
{
    return g_stop && g_stop->load() ? 0 : 1;
}

// Routino frees its results with free(): the waypoints come from malloc.
struct FreeWaypoint
{
    void operator()(Routino_Waypoint *waypoint) const { std::free(waypoint); }
};
using Waypoint = std::unique_ptr<Routino_Waypoint, FreeWaypoint>;

DirectionsAnswer failure(const QString &description)
{
    return DirectionsAnswer::failure(description);
}

// `index` counts from 0 in travel order, of `count` places.
QString noRoadNear(qsizetype index, qsizetype count)
{
    if (index == 0)
        return RoutinoDirectionsService::tr(
            "The start is too far from any road on the offline map.");
    if (index == count - 1)
        return RoutinoDirectionsService::tr("The end is too far from any road on the offline map.");
    return RoutinoDirectionsService::tr("Stop %1 is too far from any road on the offline map.")
        .arg(index);
}

QString noRouteTo(qsizetype index, qsizetype count)
{
    if (index == count - 1)
        return RoutinoDirectionsService::tr("The offline map has no road route to the end.");
    return RoutinoDirectionsService::tr("The offline map has no road route to stop %1.").arg(index);
}

} // namespace

struct RoutinoDirectionsService::Engine
{
    QString directory;
    QByteArray transport; // empty: the profile has none
    QString profile;
    Routino_Database *database = nullptr; // worker thread only; opened at the first route

    std::atomic<bool> closing{false}; // the service is gone
    std::atomic<quint64> latest{0};   // the number of the newest request
    std::mutex relayMutex;            // guards relay against the service's destruction
    QObject *relay = nullptr;         // the service while it lives: answers go to its thread

    // The database folder's own copy of a Routino file, else the installed one.
    QString dataFile(const char *name) const
    {
        const QString own = QDir(directory).filePath(QLatin1String(name));
        if (QFileInfo::exists(own))
            return own;
        return QStringLiteral(TREKMIME_ROUTINO_FILES "/") + QLatin1String(name);
    }

    DirectionsAnswer route(const QList<Coordinate> &waypoints);
    Routino_Profile *loadProfile(QString *error);
    Routino_Translation *loadTranslation();
    void answer(Deliver deliver, const DirectionsAnswer &answer);
    void close();
};

Routino_Profile *RoutinoDirectionsService::Engine::loadProfile(QString *error)
{
    const QString file = dataFile("profiles.xml");
    if (file != g_profilesFile) {
        // what another file, or a failed parse, left goes first
        Routino_FreeXMLProfiles();
        g_profilesFile.clear();
        if (Routino_ParseXMLProfiles(QFile::encodeName(file).constData()) != 0) {
            Routino_FreeXMLProfiles();
            *error = RoutinoDirectionsService::tr("The routing profiles in %1 cannot be read.")
                         .arg(file);
            return nullptr;
        }
        g_profilesFile = file;
    }
    Routino_Profile *found = Routino_GetProfile(transport.constData());
    // the profile is adapted to a database, and services may use different ones
    if (!found || Routino_ValidateProfile(database, found) != ROUTINO_ERROR_NONE) {
        *error =
            RoutinoDirectionsService::tr("The offline map cannot plan routes for %1.").arg(profile);
        return nullptr;
    }
    return found;
}

Routino_Translation *RoutinoDirectionsService::Engine::loadTranslation()
{
    // only the route's points are used, not its described turns: without
    // the file, Routino's built-in English serves as well
    const QString file = dataFile("translations.xml");
    if (file != g_translationsFile) {
        Routino_FreeXMLTranslations();
        g_translationsFile = file;
        if (Routino_ParseXMLTranslations(QFile::encodeName(file).constData()) != 0)
            Routino_FreeXMLTranslations();
    }
    Routino_Translation *english = Routino_GetTranslation("en");
    return english ? english : Routino_GetTranslation(nullptr);
}

DirectionsAnswer RoutinoDirectionsService::Engine::route(const QList<Coordinate> &waypoints)
{
    static const bool libraryFits = Routino_CheckAPIVersion() == ROUTINO_ERROR_NONE;
    if (!libraryFits)
        return failure(RoutinoDirectionsService::tr(
            "The installed Routino library does not fit this program."));
    if (!database) {
        database = Routino_LoadDatabase(QFile::encodeName(directory).constData(), nullptr);
        if (!database) {
            return failure(RoutinoDirectionsService::tr("No offline map can be read in %1.")
                               .arg(QDir::toNativeSeparators(directory)));
        }
    }
    QString error;
    Routino_Profile *routingProfile = loadProfile(&error);
    if (!routingProfile)
        return failure(error);
    Routino_Translation *translation = loadTranslation();

    std::vector<Waypoint> found;
    std::vector<Routino_Waypoint *> places;
    for (qsizetype i = 0; i < waypoints.size(); ++i) {
        const Coordinate &c = waypoints[i];
        found.emplace_back(Routino_FindWaypoint(database, routingProfile, c.latitude, c.longitude));
        if (!found.back())
            return failure(noRoadNear(i, waypoints.size()));
        places.push_back(found.back().get());
    }

    g_stop = &closing;
    Routino_Output *output = Routino_CalculateRoute(
        database, routingProfile, translation, places.data(), int(places.size()),
        ROUTINO_ROUTE_QUICKEST | ROUTINO_ROUTE_LIST_TEXT_ALL, keepGoing);
    g_stop = nullptr;
    if (!output) {
        const int code = Routino_errno;
        // the error numbers past 1000 name the place, counted from 0, that no road reaches
        if (code > 1000 && code - 1000 < waypoints.size())
            return failure(noRouteTo(code - 1000, waypoints.size()));
        return failure(
            RoutinoDirectionsService::tr("Routino could not plan the route (error %1).").arg(code));
    }
    // every node of the route, in order; the last holds the totals
    DirectionsRoute route;
    double kilometres = 0.0;
    double minutes = 0.0;
    for (const Routino_Output *point = output; point; point = point->next) {
        route.coordinates.append(
            {qRadiansToDegrees(double(point->lat)), qRadiansToDegrees(double(point->lon))});
        kilometres = point->dist;
        minutes = point->time; // the header says seconds; the library gives minutes
    }
    Routino_DeleteRoute(output);
    route.distance = kilometres * 1000.0;
    route.duration = minutes * 60.0;
    return DirectionsAnswer::found({route});
}

void RoutinoDirectionsService::Engine::answer(Deliver deliver, const DirectionsAnswer &answer)
{
    // held while posting, so that the service cannot be destroyed between
    // the check and the post; answers posted before are dropped with it
    const std::lock_guard lock(relayMutex);
    if (!relay)
        return;
    QMetaObject::invokeMethod(
        relay, [deliver = std::move(deliver), answer] { deliver(answer); }, Qt::QueuedConnection);
}

void RoutinoDirectionsService::Engine::close()
{
    if (database)
        Routino_UnloadDatabase(database);
    database = nullptr;
}

RoutinoDirectionsService::RoutinoDirectionsService(const QString &databaseDir,
                                                   const QString &profile, QObject *parent)
    : QObject(parent), m_engine(std::make_shared<Engine>())
{
    m_engine->directory = databaseDir;
    m_engine->profile = profile;
    m_engine->transport = transportFor(profile).toLatin1();
    m_engine->relay = this;
}

RoutinoDirectionsService::~RoutinoDirectionsService()
{
    m_engine->closing = true; // stops the route being computed
    {
        const std::lock_guard lock(m_engine->relayMutex);
        m_engine->relay = nullptr;
    }
    // after every job of this service still waiting, each of which now ends at once
    if (RoutinoWorker *worker = routinoWorker())
        worker->start([engine = std::move(m_engine)] { engine->close(); });
    else
        m_engine->close(); // the program is ending: no worker, no job
}

RoutinoDirectionsService *RoutinoDirectionsService::fromServices(const HeadlessServices &services,
                                                                 QObject *parent)
{
    return new RoutinoDirectionsService(services.configuration.routinoData,
                                        services.configuration.routingProfile, parent);
}

QString RoutinoDirectionsService::transportFor(const QString &profile)
{
    if (profile == QLatin1String("driving"))
        return QStringLiteral("motorcar");
    if (profile == QLatin1String("walking"))
        return QStringLiteral("foot");
    if (profile == QLatin1String("cycling"))
        return QStringLiteral("bicycle");
    return {};
}

void RoutinoDirectionsService::calculateDirections(const QList<Coordinate> &waypoints,
                                                   QObject *receiver, Completion completion)
{
    Deliver deliver = DirectionsService::guarded(receiver, std::move(completion));

    QString refusal;
    if (waypoints.size() < 2)
        refusal = tr("A route needs a start and an end.");
    else if (m_engine->transport.isEmpty())
        refusal = tr("Offline routing plans for driving, walking or cycling, not \"%1\".")
                      .arg(m_engine->profile);
    if (!refusal.isEmpty()) {
        QTimer::singleShot(0, this, [deliver, refusal] { deliver(failure(refusal)); });
        return;
    }

    const quint64 number = ++m_engine->latest;
    routinoWorker()->start([engine = m_engine, waypoints, number, deliver = std::move(deliver)] {
        if (engine->closing)
            return;
        if (number != engine->latest) {
            engine->answer(deliver, DirectionsAnswer::replacedRequest(
                                        tr("A newer route request replaced this one.")));
            return;
        }
        engine->answer(deliver, engine->route(waypoints));
    });
}

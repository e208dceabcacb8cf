#include "FeedCommand.h"

#include "feed/FeedSettings.h"
#include "feed/NmeaServer.h"
#include "feed/PositionFeed.h"
#include "platform/Clock.h"
#include "platform/Configuration.h"
#include "settings/TMPreferenceUtil.h"
#include "startup/Startup.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <QTimer>

#include <csignal>
#include <optional>

namespace {

volatile std::sig_atomic_t stopAsked = 0;

enum FeedStatus { FeedOk = 0, FeedNoPosition = 1, FeedBadInput = 2 };

// the registered port of NMEA over TCP; loopback unless told otherwise
const char *const DefaultListen = "127.0.0.1:10110";

struct Endpoint
{
    QHostAddress address;
    quint16 port = 0;
};

// "HOST:PORT" with an IP address ("[::1]:PORT" for IPv6), "localhost" or "*"
std::optional<Endpoint> parseEndpoint(const QString &text)
{
    const qsizetype colon = text.lastIndexOf(u':');
    bool ok = false;
    const uint port = text.mid(colon + 1).toUInt(&ok);
    if (colon <= 0 || !ok || port > 65535)
        return std::nullopt;
    QString host = text.left(colon);
    if (host.startsWith(u'[') && host.endsWith(u']'))
        host = host.mid(1, host.size() - 2);
    QHostAddress address;
    if (host == QLatin1String("localhost"))
        address = QHostAddress::LocalHost;
    else if (host == QLatin1String("*"))
        address = QHostAddress::Any;
    else if (!address.setAddress(host))
        return std::nullopt;
    return Endpoint{address, quint16(port)};
}

} // namespace

int runFeed(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trekmime"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TREKMIME_VERSION));
    QTextStream out(stdout);
    QTextStream err(stderr);
    const auto fail = [&err](const QString &message) {
        err << "trekmime-feed: " << message << Qt::endl;
        return FeedBadInput;
    };

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Serves the position the settings files give as NMEA 0183 sentences (GGA, RMC, VTG) once "
        "a second, for gpsd, GeoClue and Qt Positioning."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    const QCommandLineOption listen(
        QStringLiteral("listen"),
        QStringLiteral("Serve on TCP at HOST:PORT (\"*\" for every address). Default: %1, unless "
                       "only --socket is given.")
            .arg(QLatin1String(DefaultListen)),
        QStringLiteral("HOST:PORT"));
    const QCommandLineOption socket(QStringLiteral("socket"),
                                    QStringLiteral("Serve on a Unix socket at PATH as well or "
                                                   "instead (e.g. /run/trekmime/nmea.sock)."),
                                    QStringLiteral("PATH"));
    const QCommandLineOption once(QStringLiteral("once"),
                                  QStringLiteral("Print the sentences for now and exit: 0 with a "
                                                 "position, 1 without."));
    parser.addOptions({help, listen, socket, once});
    parser.addVersionOption();
    Configuration::addOptionsTo(parser);
    if (!parser.parse(application.arguments()))
        return fail(parser.errorText());
    if (parser.isSet(help)) {
        out << parser.helpText();
        return FeedOk;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        out << "trekmime-feed " << TREKMIME_VERSION << Qt::endl;
        return FeedOk;
    }
    if (!parser.positionalArguments().isEmpty())
        return fail(QStringLiteral("unexpected \"%1\"").arg(parser.positionalArguments().first()));
    const bool tcp = parser.isSet(listen) || !parser.isSet(socket);
    const QString listenText =
        parser.isSet(listen) ? parser.value(listen) : QString::fromLatin1(DefaultListen);
    const std::optional<Endpoint> endpoint = parseEndpoint(listenText);
    if (tcp && !endpoint)
        return fail(QStringLiteral("--listen \"%1\" is not HOST:PORT").arg(listenText));

    Configuration configuration;
    if (!startUp(parser, QStringLiteral("trekmime-feed"), err, configuration,
                 MissingFolder::RefuseGiven))
        return FeedBadInput;

    const TMPreferenceUtil store{PreferenceFiles(configuration.preferencesDir)};
    FeedSettings settings(store);
    NmeaServer server;
    PositionFeed feed(settings, server, *SystemClock::instance());
    if (parser.isSet(once)) {
        bool hasFix = false;
        out << feed.current(&hasFix);
        return hasFix ? FeedOk : FeedNoPosition;
    }

    QString error;
    if (tcp && !server.listenTcp(endpoint->address, endpoint->port, &error))
        return fail(error);
    if (parser.isSet(socket) && !server.listenLocal(parser.value(socket), &error))
        return fail(error);
    for (const QString &address : server.addresses())
        err << "trekmime-feed: serving " << address << Qt::endl;
    feed.start();
    // a clean exit on SIGTERM (systemctl stop) and SIGINT takes the socket
    // file away with the server; the handler only sets a flag, read here
    for (const int signal : {SIGTERM, SIGINT})
        std::signal(signal, [](int) { stopAsked = 1; });
    QTimer stopCheck;
    QObject::connect(&stopCheck, &QTimer::timeout, &application, [] {
        if (stopAsked)
            QCoreApplication::quit();
    });
    stopCheck.start(200);
    return application.exec();
}

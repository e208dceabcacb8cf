// status, mode, spot, favorites and whitelist: the settings files as the
// store reads them, and the same changes the screens make.

#include "Ctl.h"
#include "RecordJson.h"

#include "gpx/GpxFile.h"
#include "modes/ModeChange.h"
#include "modes/SpotController.h"
#include "platform/AlertPresenter.h"
#include "settings/StoredValue.h"
#include "settings/TMPreferenceUtil.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

QString onOff(bool on)
{
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

QString modeName(int mode)
{
    return mode == 0 ? QStringLiteral("route") : QStringLiteral("spot");
}

TMPreferenceUtil &store(CtlContext &context)
{
    return *context.services.preferences;
}

void printLocation(CtlContext &context)
{
    const LocationRecord record = store(context).locationPreference();
    if (context.json) {
        context.printJson(RecordJson::location(record));
        return;
    }
    context.out << "location: " << onOff(record.isEnabled()) << ' '
                << StoredValue::formatReal(record.latitude()) << ' '
                << StoredValue::formatReal(record.longitude()) << Qt::endl;
}

void printFavorites(CtlContext &context, const QList<FavoriteEntry> &favorites)
{
    if (context.json) {
        context.printJson(RecordJson::favorites(favorites));
        return;
    }
    for (int i = 0; i < favorites.size(); ++i) {
        context.out << i << '\t' << StoredValue::formatReal(favorites[i].latitude()) << ' '
                    << StoredValue::formatReal(favorites[i].longitude()) << '\t'
                    << favorites[i].name() << '\n';
    }
    context.out.flush();
}

void printWhitelist(CtlContext &context, const WhitelistRecord &whitelist)
{
    if (context.json) {
        context.printJson(RecordJson::whitelist(whitelist));
        return;
    }
    for (const QString &bundle : whitelist.bundles())
        context.out << bundle << '\t' << onOff(whitelist.isWhitelisted(bundle)) << '\n';
    context.out.flush();
}

int status(CtlContext &context, const QStringList &args)
{
    if (!CtlArgs::count(context, args, 0, 0, QStringLiteral("status")))
        return CtlBadInput;
    const TMPreferenceUtil &preferences = store(context);
    const int mode = preferences.mode();
    const RouteRecord route = preferences.routePreference();
    if (context.json) {
        context.printJson(QJsonObject{
            {QStringLiteral("mode"), mode},
            {QStringLiteral("location"), RecordJson::location(preferences.locationPreference())},
            {QStringLiteral("route"), RecordJson::route(route)},
            {QStringLiteral("favorites"), RecordJson::favorites(preferences.favoritePreference())},
            {QStringLiteral("whitelist"), RecordJson::whitelist(preferences.whitePreference())},
        });
        return CtlOk;
    }
    QTextStream &out = context.out;
    out << "preferences: " << preferences.files().directory() << '\n';
    out << "mode: " << mode << " (" << modeName(mode) << ")\n";
    printLocation(context);
    out << "route: " << RecordJson::describeRoute(route) << '\n';
    const QList<FavoriteEntry> favorites = preferences.favoritePreference();
    out << "favorites: " << favorites.size() << '\n';
    printFavorites(context, favorites);
    const WhitelistRecord whitelist = preferences.whitePreference();
    out << "whitelist: " << whitelist.size() << '\n';
    printWhitelist(context, whitelist);
    return CtlOk;
}

int mode(CtlContext &context, const QStringList &args)
{
    const QString usage = QStringLiteral("mode [route|spot]");
    if (!CtlArgs::count(context, args, 0, 1, usage))
        return CtlBadInput;
    const int current = store(context).mode();
    if (args.isEmpty()) {
        if (context.json)
            context.printJson(QJsonObject{{QStringLiteral("mode"), current}});
        else
            context.out << modeName(current) << Qt::endl;
        return CtlOk;
    }
    const QString wanted = args.first();
    if (wanted != QLatin1String("route") && wanted != QLatin1String("spot"))
        return context.fail(CtlBadInput,
                            QStringLiteral("unknown mode \"%1\"; usage: %2").arg(wanted, usage));
    if (wanted == modeName(current)) {
        context.out << wanted << Qt::endl;
        return CtlOk;
    }
    const ModeChange::Result change = ModeChange(store(context)).fromStoredMode();
    if (change.refused())
        return context.fail(CtlFailed, change.refusal);
    if (!change.written)
        return context.writeFailed(store(context).files().masterFile());
    context.out << modeName(change.mode) << Qt::endl;
    return CtlOk;
}

int spot(CtlContext &context, const QStringList &args)
{
    const QString usage = QStringLiteral("spot on [LAT LNG] | spot off");
    if (args.isEmpty())
        return context.fail(CtlBadInput,
                            QStringLiteral("wrong number of arguments; usage: %1").arg(usage));
    const QString action = args.first();
    SpotController spot(store(context));
    bool written = false;
    if (action == QLatin1String("off")) {
        if (!CtlArgs::count(context, args, 1, 1, usage))
            return CtlBadInput;
        written = spot.setFlag(false);
    } else if (action == QLatin1String("on")) {
        if (args.size() != 1 && args.size() != 3)
            return context.fail(CtlBadInput,
                                QStringLiteral("wrong number of arguments; usage: %1").arg(usage));
        if (args.size() == 3) {
            const auto latitude = CtlArgs::latitude(context, args[1]);
            if (!latitude)
                return CtlBadInput;
            const auto longitude = CtlArgs::longitude(context, args[2]);
            if (!longitude)
                return CtlBadInput;
            // as the screen's switch stores the place under its pin
            spot.setCandidate({*latitude, *longitude});
            written = spot.switchTo(true);
        } else {
            written = spot.setFlag(true); // the stored place stays
        }
    } else {
        return context.fail(CtlBadInput,
                            QStringLiteral("unknown action \"%1\"; usage: %2").arg(action, usage));
    }
    if (!written)
        return context.writeFailed(store(context).files().locationFile());
    printLocation(context);
    return CtlOk;
}

int favorites(CtlContext &context, const QStringList &args)
{
    const QString usage =
        QStringLiteral("favorites list | favorites add NAME LAT LNG | favorites "
                       "remove INDEX | favorites export FILE | favorites import FILE");
    const QString action = args.value(0);
    if (action == QLatin1String("list")) {
        if (!CtlArgs::count(context, args, 1, 1, usage))
            return CtlBadInput;
        printFavorites(context, store(context).favoritePreference());
        return CtlOk;
    }
    if (action == QLatin1String("add")) {
        if (!CtlArgs::count(context, args, 4, 4, usage))
            return CtlBadInput;
        const auto latitude = CtlArgs::latitude(context, args[2]);
        if (!latitude)
            return CtlBadInput;
        const auto longitude = CtlArgs::longitude(context, args[3]);
        if (!longitude)
            return CtlBadInput;
        if (!store(context).addFavorite(FavoriteEntry::make(args[1], *latitude, *longitude)))
            return context.writeFailed(store(context).files().favoritesFile());
        printFavorites(context, store(context).favoritePreference());
        return CtlOk;
    }
    if (action == QLatin1String("remove")) {
        if (!CtlArgs::count(context, args, 2, 2, usage))
            return CtlBadInput;
        const auto index = CtlArgs::index(context, args[1]);
        if (!index)
            return CtlBadInput;
        QList<FavoriteEntry> list = store(context).favoritePreference();
        if (*index < 0 || *index >= list.size()) {
            return context.fail(CtlFailed, QStringLiteral("no favorite at index %1 (there are %2)")
                                               .arg(*index)
                                               .arg(list.size()));
        }
        if (!store(context).removeFavorite(list, *index))
            return context.writeFailed(store(context).files().favoritesFile());
        printFavorites(context, list);
        return CtlOk;
    }
    if (action == QLatin1String("export")) {
        if (!CtlArgs::count(context, args, 2, 2, usage))
            return CtlBadInput;
        const QList<FavoriteEntry> list = store(context).favoritePreference();
        const QString error = Gpx::write(args[1], list, {});
        if (!error.isEmpty())
            return context.fail(CtlFailed, error);
        printFavorites(context, list);
        return CtlOk;
    }
    if (action == QLatin1String("import")) {
        if (!CtlArgs::count(context, args, 2, 2, usage))
            return CtlBadInput;
        // the whole file is read and checked before the first favourite is added
        const Gpx::Content content = Gpx::read(args[1]);
        if (!content.ok())
            return context.fail(CtlBadInput, content.error);
        for (const FavoriteEntry &waypoint : content.waypoints) {
            if (!store(context).addFavorite(waypoint))
                return context.writeFailed(store(context).files().favoritesFile());
        }
        printFavorites(context, store(context).favoritePreference());
        return CtlOk;
    }
    return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
}

int whitelist(CtlContext &context, const QStringList &args)
{
    const QString usage = QStringLiteral("whitelist list | whitelist toggle BUNDLE_ID");
    const QString action = args.value(0);
    if (action == QLatin1String("list")) {
        if (!CtlArgs::count(context, args, 1, 1, usage))
            return CtlBadInput;
        printWhitelist(context, store(context).whitePreference());
        return CtlOk;
    }
    if (action == QLatin1String("toggle")) {
        if (!CtlArgs::count(context, args, 2, 2, usage))
            return CtlBadInput;
        const QString bundle = args[1];
        if (bundle.trimmed().isEmpty())
            return context.fail(CtlBadInput, QStringLiteral("the bundle identifier is empty"));
        WhitelistRecord record = store(context).whitePreference();
        if (!store(context).toggleWhitelist(record, bundle))
            return context.writeFailed(store(context).files().whitelistFile());
        const bool value = record.isWhitelisted(bundle);
        if (context.json)
            context.printJson(QJsonObject{{bundle, value}});
        else
            context.out << bundle << '\t' << onOff(value) << Qt::endl;
        return CtlOk;
    }
    return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(usage));
}

} // namespace

void addSettingsCommands(CtlCommandTable &table)
{
    table.append({QStringLiteral("status"), QStringLiteral("status"),
                  QStringLiteral("Everything the settings files hold, as the store reads it."),
                  status});
    table.append({QStringLiteral("mode"), QStringLiteral("mode [route|spot]"),
                  QStringLiteral("Show the mode, or change it as the mode buttons do."), mode});
    table.append({QStringLiteral("spot"), QStringLiteral("spot on [LAT LNG] | spot off"),
                  QStringLiteral("Switch the fixed location on (optionally moving it) or off."),
                  spot});
    table.append({QStringLiteral("favorites"),
                  QStringLiteral("favorites list | add NAME LAT LNG | remove INDEX | export FILE "
                                 "| import FILE"),
                  QStringLiteral("List, append or remove favourite places; write them to a GPX "
                                 "file as waypoints, or append a GPX file's waypoints."),
                  favorites});
    table.append({QStringLiteral("whitelist"), QStringLiteral("whitelist list | toggle BUNDLE_ID"),
                  QStringLiteral("List the whitelist, or toggle an application as a tap does."),
                  whitelist});
}

// status, mode, spot, favorites and whitelist: the settings files as the
// store reads them, and the same changes the screens make.

#include "Ctl.h"
#include "RecordJson.h"

#include "platform/AlertPresenter.h"
#include "settings/FavoriteEntry.h"
#include "settings/MasterRecord.h"
#include "settings/ModeChange.h"
#include "settings/PreferenceFiles.h"
#include "settings/StoredValue.h"
#include "settings/TMPreferenceUtil.h"
#include "settings/WhitelistRecord.h"

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

void printLocation(CtlContext &context)
{
    if (context.json) {
        context.printJson(RecordJson::location());
        return;
    }
    context.out << "location: " << onOff(TMPreferenceUtil::isLocationEnable()) << ' '
                << StoredValue::formatReal(TMPreferenceUtil::locationLatitude()) << ' '
                << StoredValue::formatReal(TMPreferenceUtil::locationLongitude()) << Qt::endl;
}

void printFavorites(CtlContext &context, const QVariantList &favorites)
{
    if (context.json) {
        context.printJson(RecordJson::favorites(favorites));
        return;
    }
    for (int i = 0; i < favorites.size(); ++i) {
        context.out << i << '\t' << StoredValue::formatReal(FavoriteEntry::latitude(favorites[i]))
                    << ' ' << StoredValue::formatReal(FavoriteEntry::longitude(favorites[i]))
                    << '\t' << FavoriteEntry::name(favorites[i]) << '\n';
    }
    context.out.flush();
}

void printWhitelist(CtlContext &context, const QVariantMap &whitelist)
{
    if (context.json) {
        context.printJson(RecordJson::whitelist(whitelist));
        return;
    }
    for (auto it = whitelist.cbegin(); it != whitelist.cend(); ++it)
        context.out << it.key() << '\t' << onOff(StoredValue::boolValue(it.value())) << '\n';
    context.out.flush();
}

int status(CtlContext &context, const QStringList &args)
{
    if (!CtlArgs::count(context, args, 0, 0, QStringLiteral("status")))
        return CtlBadInput;
    const int mode = MasterRecord::readMode();
    const QVariantMap route = TMPreferenceUtil::routePreference();
    if (context.json) {
        context.printJson(QJsonObject{
            {QStringLiteral("mode"), mode},
            {QStringLiteral("location"), RecordJson::location()},
            {QStringLiteral("route"), RecordJson::route(route)},
            {QStringLiteral("favorites"),
             RecordJson::favorites(TMPreferenceUtil::favoritePreference())},
            {QStringLiteral("whitelist"),
             RecordJson::whitelist(TMPreferenceUtil::whitePreference())},
        });
        return CtlOk;
    }
    QTextStream &out = context.out;
    out << "preferences: " << PreferenceFiles::directory() << '\n';
    out << "mode: " << mode << " (" << modeName(mode) << ")\n";
    printLocation(context);
    out << "route: " << RecordJson::describeRoute(route) << '\n';
    const QVariantList favorites = TMPreferenceUtil::favoritePreference();
    out << "favorites: " << favorites.size() << '\n';
    printFavorites(context, favorites);
    const QVariantMap whitelist = TMPreferenceUtil::whitePreference();
    out << "whitelist: " << whitelist.size() << '\n';
    printWhitelist(context, whitelist);
    return CtlOk;
}

int mode(CtlContext &context, const QStringList &args)
{
    const QString usage = QStringLiteral("mode [route|spot]");
    if (!CtlArgs::count(context, args, 0, 1, usage))
        return CtlBadInput;
    const int current = MasterRecord::readMode();
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
    const ModeChange::Result change = ModeChange::fromStoredMode();
    if (change.refused())
        return context.fail(CtlFailed, change.refusal);
    if (!change.written)
        return context.writeFailed(PreferenceFiles::masterFile());
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
    bool written = false;
    if (action == QLatin1String("off")) {
        if (!CtlArgs::count(context, args, 1, 1, usage))
            return CtlBadInput;
        written = TMPreferenceUtil::setLocationEnable(false);
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
            written = TMPreferenceUtil::setLocationEnable(true, *latitude, *longitude);
        } else {
            written = TMPreferenceUtil::setLocationEnable(true);
        }
    } else {
        return context.fail(CtlBadInput,
                            QStringLiteral("unknown action \"%1\"; usage: %2").arg(action, usage));
    }
    if (!written)
        return context.writeFailed(PreferenceFiles::locationFile());
    printLocation(context);
    return CtlOk;
}

int favorites(CtlContext &context, const QStringList &args)
{
    const QString usage =
        QStringLiteral("favorites list | favorites add NAME LAT LNG | favorites remove INDEX");
    const QString action = args.value(0);
    if (action == QLatin1String("list")) {
        if (!CtlArgs::count(context, args, 1, 1, usage))
            return CtlBadInput;
        printFavorites(context, TMPreferenceUtil::favoritePreference());
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
        if (!TMPreferenceUtil::addFavorite(FavoriteEntry::make(args[1], *latitude, *longitude)))
            return context.writeFailed(PreferenceFiles::favoritesFile());
        printFavorites(context, TMPreferenceUtil::favoritePreference());
        return CtlOk;
    }
    if (action == QLatin1String("remove")) {
        if (!CtlArgs::count(context, args, 2, 2, usage))
            return CtlBadInput;
        const auto index = CtlArgs::index(context, args[1]);
        if (!index)
            return CtlBadInput;
        QVariantList list = TMPreferenceUtil::favoritePreference();
        if (*index < 0 || *index >= list.size()) {
            return context.fail(CtlFailed, QStringLiteral("no favorite at index %1 (there are %2)")
                                               .arg(*index)
                                               .arg(list.size()));
        }
        if (!TMPreferenceUtil::removeFavorite(list, *index))
            return context.writeFailed(PreferenceFiles::favoritesFile());
        printFavorites(context, list);
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
        printWhitelist(context, TMPreferenceUtil::whitePreference());
        return CtlOk;
    }
    if (action == QLatin1String("toggle")) {
        if (!CtlArgs::count(context, args, 2, 2, usage))
            return CtlBadInput;
        const QString bundle = args[1];
        if (bundle.trimmed().isEmpty())
            return context.fail(CtlBadInput, QStringLiteral("the bundle identifier is empty"));
        QVariantMap record = TMPreferenceUtil::whitePreference();
        if (!TMPreferenceUtil::toggleWhitelist(record, bundle))
            return context.writeFailed(PreferenceFiles::whitelistFile());
        const bool value = WhitelistRecord::isWhitelisted(record, bundle);
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
                  QStringLiteral("favorites list | add NAME LAT LNG | remove INDEX"),
                  QStringLiteral("List, append or remove favourite places."), favorites});
    table.append({QStringLiteral("whitelist"), QStringLiteral("whitelist list | toggle BUNDLE_ID"),
                  QStringLiteral("List the whitelist, or toggle an application as a tap does."),
                  whitelist});
}

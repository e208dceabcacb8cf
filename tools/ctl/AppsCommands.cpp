// apps: the applications the whitelist screen offers, with their flags.

#include "Ctl.h"

#include "applications/ApplicationList.h"
#include "settings/TMPreferenceUtil.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

const QString Usage = QStringLiteral("apps list [--user] [--running]");

int apps(CtlContext &context, QStringList args)
{
    if (args.value(0) != QLatin1String("list"))
        return context.fail(CtlBadInput, QStringLiteral("usage: %1").arg(Usage));
    args.removeFirst();
    bool user = false;
    bool running = false;
    for (const QString &arg : std::as_const(args)) {
        if (arg == QLatin1String("--user"))
            user = true;
        else if (arg == QLatin1String("--running"))
            running = true;
        else
            return context.fail(
                CtlBadInput, QStringLiteral("unknown argument \"%1\"; usage: %2").arg(arg, Usage));
    }
    const ApplicationRegistry &registry = *context.services.applications;
    const TMPreferenceUtil &preferences = *context.services.preferences;
    QList<ApplicationModel> models;
    if (running) {
        models = ApplicationModel::appModelListWithAppList(
            registry, ApplicationList::currentRunningAppBundle(registry));
        if (user) {
            models.removeIf([](const ApplicationModel &model) {
                return model.appBundle().startsWith(
                    QLatin1String(ApplicationList::PlatformMakerPrefix));
            });
        }
    } else {
        models = user ? ApplicationList::installedUserAppModel(registry, preferences)
                      : ApplicationList::installedAppModel(registry, preferences);
    }

    const WhitelistRecord whitelist = preferences.whitePreference();
    if (context.json) {
        QJsonArray list;
        for (const ApplicationModel &model : std::as_const(models)) {
            list.append(QJsonObject{
                {QStringLiteral("bundle"), model.appBundle()},
                {QStringLiteral("name"), model.appName()},
                {QStringLiteral("whitelisted"), whitelist.isWhitelisted(model.appBundle())},
            });
        }
        context.printJson(list);
        return CtlOk;
    }
    for (const ApplicationModel &model : std::as_const(models)) {
        context.out << model.appBundle() << '\t' << model.appName() << '\t'
                    << (whitelist.isWhitelisted(model.appBundle()) ? "whitelisted" : "-") << '\n';
    }
    return CtlOk;
}

} // namespace

void addAppsCommands(CtlCommandTable &table)
{
    table.append({QStringLiteral("apps"), Usage,
                  QStringLiteral("The applications the whitelist screen lists (or only the "
                                 "user's, or the running ones) and whether each is whitelisted."),
                  apps});
}

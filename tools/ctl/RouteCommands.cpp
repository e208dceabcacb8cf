// route and where: the route record, and where its trip stands at a time.

#include "Ctl.h"
#include "RecordJson.h"

#include "platform/Clock.h"
#include "route/RoutePreview.h"
#include "settings/PreferenceFiles.h"
#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"
#include "settings/TMPreferenceUtil.h"

#include <QJsonObject>

namespace {

int route(CtlContext &context, const QStringList &args)
{
    const QString usage = QStringLiteral("route show | route off");
    if (!CtlArgs::count(context, args, 1, 1, usage))
        return CtlBadInput;
    QVariantMap record = TMPreferenceUtil::routePreference();
    if (args.first() == QLatin1String("off")) {
        // as the route switch does: only "enable" changes
        record.insert(RecordKeys::enable(), StoredValue::formatFlag(false));
        if (!TMPreferenceUtil::writeRoutePreference(record))
            return context.writeFailed(PreferenceFiles::routeFile());
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
    const QVariantMap record = TMPreferenceUtil::routePreference();
    const RoutePreview::Step step = RoutePreview::stepAt(record, now);
    if (!step.inRange) {
        return context.fail(CtlFailed,
                            QStringLiteral("the 32-bit preview arithmetic gives index %1, outside "
                                           "the %2 route points")
                                .arg(step.index)
                                .arg(record.value(RecordKeys::points()).toList().size()));
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
        {QStringLiteral("route"), QStringLiteral("route show | route off"),
         QStringLiteral("Show the route record, or switch the trip off as the switch does."),
         route});
    table.append({QStringLiteral("where"), QStringLiteral("where [--at EPOCH_SECONDS]"),
                  QStringLiteral("The point the route preview shows at that time (default now)."),
                  where});
}

#include "RecordJson.h"

#include "settings/FavoriteEntry.h"
#include "settings/LocationRecord.h"
#include "settings/RouteRecord.h"
#include "settings/StoredValue.h"
#include "settings/WhitelistRecord.h"

#include <QDateTime>
#include <QTimeZone>

namespace RecordJson {

namespace {
QString describeTime(bool stored, double seconds)
{
    if (!stored)
        return QStringLiteral("none");
    const QDateTime time =
        QDateTime::fromMSecsSinceEpoch(qint64(seconds * 1000.0), QTimeZone::utc());
    return QStringLiteral("%1 (%2)").arg(StoredValue::formatReal(seconds),
                                         time.toString(Qt::ISODate));
}
} // namespace

QJsonObject location(const LocationRecord &record)
{
    return {{QStringLiteral("enable"), record.isEnabled()},
            {QStringLiteral("latitude"), record.latitude()},
            {QStringLiteral("longitude"), record.longitude()}};
}

QJsonObject route(const RouteRecord &record)
{
    auto textOrNull = [](bool isText, const QString &text) {
        return isText ? QJsonValue(text) : QJsonValue(QJsonValue::Null);
    };
    return {{QStringLiteral("enable"), record.isEnabled()},
            {QStringLiteral("start"), record.start()},
            {QStringLiteral("end"), record.end()},
            {QStringLiteral("s"), textOrNull(record.hasTextStartAddress(), record.startAddress())},
            {QStringLiteral("e"), textOrNull(record.hasTextEndAddress(), record.endAddress())},
            {QStringLiteral("points"), int(record.pointCount())}};
}

QJsonArray favorites(const QList<FavoriteEntry> &list)
{
    QJsonArray result;
    for (const FavoriteEntry &entry : list) {
        result.append(QJsonObject{{QStringLiteral("name"), entry.name()},
                                  {QStringLiteral("latitude"), entry.latitude()},
                                  {QStringLiteral("longitude"), entry.longitude()}});
    }
    return result;
}

QJsonObject whitelist(const WhitelistRecord &record)
{
    QJsonObject result;
    for (const QString &bundle : record.bundles())
        result.insert(bundle, record.isWhitelisted(bundle));
    return result;
}

QString describeRoute(const RouteRecord &record)
{
    return QStringLiteral("%1, start %2, end %3, from \"%4\" to \"%5\", %6 points")
        .arg(record.isEnabled() ? QStringLiteral("on") : QStringLiteral("off"),
             describeTime(record.hasStart(), record.start()),
             describeTime(record.hasEnd(), record.end()), record.startAddress(),
             record.endAddress())
        .arg(record.pointCount());
}

} // namespace RecordJson

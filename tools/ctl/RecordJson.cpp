#include "RecordJson.h"

#include "settings/FavoriteEntry.h"
#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"
#include "settings/TMPreferenceUtil.h"

#include <QDateTime>
#include <QTimeZone>

namespace RecordJson {

namespace {
QJsonValue textOrNull(const QVariant &value)
{
    return value.metaType().id() == QMetaType::QString ? QJsonValue(value.toString())
                                                       : QJsonValue(QJsonValue::Null);
}

QString describeTime(const QVariant &value)
{
    if (!value.isValid())
        return QStringLiteral("none");
    const double seconds = StoredValue::doubleValue(value);
    const QDateTime time =
        QDateTime::fromMSecsSinceEpoch(qint64(seconds * 1000.0), QTimeZone::utc());
    return QStringLiteral("%1 (%2)").arg(StoredValue::formatReal(seconds),
                                         time.toString(Qt::ISODate));
}
} // namespace

QJsonObject location()
{
    return {{QStringLiteral("enable"), TMPreferenceUtil::isLocationEnable()},
            {QStringLiteral("latitude"), TMPreferenceUtil::locationLatitude()},
            {QStringLiteral("longitude"), TMPreferenceUtil::locationLongitude()}};
}

QJsonObject route(const QVariantMap &record)
{
    using namespace RecordKeys;
    return {{QStringLiteral("enable"), StoredValue::boolValue(record.value(enable()))},
            {QStringLiteral("start"), StoredValue::doubleValue(record.value(start()))},
            {QStringLiteral("end"), StoredValue::doubleValue(record.value(end()))},
            {QStringLiteral("s"), textOrNull(record.value(startAddress()))},
            {QStringLiteral("e"), textOrNull(record.value(endAddress()))},
            {QStringLiteral("points"), int(record.value(points()).toList().size())}};
}

QJsonArray favorites(const QVariantList &list)
{
    QJsonArray result;
    for (const QVariant &entry : list) {
        result.append(QJsonObject{{QStringLiteral("name"), FavoriteEntry::name(entry)},
                                  {QStringLiteral("latitude"), FavoriteEntry::latitude(entry)},
                                  {QStringLiteral("longitude"), FavoriteEntry::longitude(entry)}});
    }
    return result;
}

QJsonObject whitelist(const QVariantMap &record)
{
    QJsonObject result;
    for (auto it = record.cbegin(); it != record.cend(); ++it)
        result.insert(it.key(), StoredValue::boolValue(it.value()));
    return result;
}

QString describeRoute(const QVariantMap &record)
{
    using namespace RecordKeys;
    const bool on = StoredValue::boolValue(record.value(enable()));
    return QStringLiteral("%1, start %2, end %3, from \"%4\" to \"%5\", %6 points")
        .arg(on ? QStringLiteral("on") : QStringLiteral("off"), describeTime(record.value(start())),
             describeTime(record.value(end())), record.value(startAddress()).toString(),
             record.value(endAddress()).toString())
        .arg(record.value(points()).toList().size());
}

} // namespace RecordJson

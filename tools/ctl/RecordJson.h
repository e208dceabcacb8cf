#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>

class FavoriteEntry;
class LocationRecord;
class RouteRecord;
class WhitelistRecord;

// The settings records as trekmime-ctl prints them.
namespace RecordJson {
QJsonObject location(const LocationRecord &record);
QJsonObject route(const RouteRecord &record);
QJsonArray favorites(const QList<FavoriteEntry> &favorites);
QJsonObject whitelist(const WhitelistRecord &whitelist);
QString describeRoute(const RouteRecord &record);
} // namespace RecordJson

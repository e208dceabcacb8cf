#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QVariantList>
#include <QVariantMap>

// The settings records as trekmime-ctl prints them.
namespace RecordJson {
QJsonObject location();
QJsonObject route(const QVariantMap &record);
QJsonArray favorites(const QVariantList &favorites);
QJsonObject whitelist(const QVariantMap &whitelist);
QString describeRoute(const QVariantMap &record);
} // namespace RecordJson

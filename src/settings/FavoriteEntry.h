#pragma once

#include <QString>
#include <QVariantMap>

// One saved place of the favorites file.
class FavoriteEntry
{
public:
    // The entry as it is stored: the typed name trimmed, or "Unknow" (the
    // stored spelling) when nothing is left; coordinates as "%f" texts.
    static QVariantMap make(const QString &typedName, double latitude, double longitude);

    static QString name(const QVariant &entry);
    static double latitude(const QVariant &entry);
    static double longitude(const QVariant &entry);
};

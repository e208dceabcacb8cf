#include "settings/FavoriteEntry.h"

#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"

#include <QCoreApplication>

QVariantMap FavoriteEntry::make(const QString &typedName, double lat, double lng)
{
    QString trimmed = typedName.trimmed();
    if (trimmed.isEmpty())
        trimmed = QCoreApplication::translate("FavoriteEntry", "Unknow");
    return {{RecordKeys::latitude(), StoredValue::formatReal(lat)},
            {RecordKeys::longitude(), StoredValue::formatReal(lng)},
            {RecordKeys::name(), trimmed}};
}

QString FavoriteEntry::name(const QVariant &entry)
{
    const QVariant value = entry.toMap().value(RecordKeys::name());
    return value.metaType().id() == QMetaType::QString ? value.toString() : QString();
}

double FavoriteEntry::latitude(const QVariant &entry)
{
    return StoredValue::doubleValue(entry.toMap().value(RecordKeys::latitude()));
}

double FavoriteEntry::longitude(const QVariant &entry)
{
    return StoredValue::doubleValue(entry.toMap().value(RecordKeys::longitude()));
}

#include "settings/FavoriteEntry.h"

#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"

#include <QCoreApplication>
#include <QVariantMap>

FavoriteEntry FavoriteEntry::make(const QString &typedName, double lat, double lng)
{
    QString trimmed = typedName.trimmed();
    if (trimmed.isEmpty())
        trimmed = QCoreApplication::translate("FavoriteEntry", "Unknow");
    return fromPropertyList(QVariantMap{{RecordKeys::latitude(), StoredValue::formatReal(lat)},
                                        {RecordKeys::longitude(), StoredValue::formatReal(lng)},
                                        {RecordKeys::name(), trimmed}});
}

FavoriteEntry FavoriteEntry::fromPropertyList(const QVariant &stored)
{
    FavoriteEntry entry;
    entry.m_stored = stored;
    return entry;
}

QList<FavoriteEntry> FavoriteEntry::listFromPropertyList(const QVariantList &stored)
{
    QList<FavoriteEntry> entries;
    entries.reserve(stored.size());
    for (const QVariant &value : stored)
        entries.append(fromPropertyList(value));
    return entries;
}

QVariantList FavoriteEntry::listToPropertyList(const QList<FavoriteEntry> &entries)
{
    QVariantList stored;
    stored.reserve(entries.size());
    for (const FavoriteEntry &entry : entries)
        stored.append(entry.toPropertyList());
    return stored;
}

bool FavoriteEntry::isPlace() const
{
    return m_stored.metaType().id() == QMetaType::QVariantMap;
}

QString FavoriteEntry::name() const
{
    const QVariant value = m_stored.toMap().value(RecordKeys::name());
    return value.metaType().id() == QMetaType::QString ? value.toString() : QString();
}

double FavoriteEntry::latitude() const
{
    return StoredValue::doubleValue(m_stored.toMap().value(RecordKeys::latitude()));
}

double FavoriteEntry::longitude() const
{
    return StoredValue::doubleValue(m_stored.toMap().value(RecordKeys::longitude()));
}

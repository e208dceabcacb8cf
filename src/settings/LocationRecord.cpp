#include "settings/LocationRecord.h"

#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"

LocationRecord LocationRecord::fromPropertyList(const QVariant &stored)
{
    LocationRecord record;
    if (stored.metaType().id() == QMetaType::QVariantMap)
        record.m_values = stored.toMap();
    return record;
}

bool LocationRecord::isEnabled() const
{
    return StoredValue::boolValue(m_values.value(RecordKeys::enable()));
}

void LocationRecord::setEnabled(bool on)
{
    m_values.insert(RecordKeys::enable(), StoredValue::formatFlag(on));
}

double LocationRecord::latitude() const
{
    return StoredValue::doubleValue(m_values.value(RecordKeys::latitude()));
}

double LocationRecord::longitude() const
{
    return StoredValue::doubleValue(m_values.value(RecordKeys::longitude()));
}

void LocationRecord::setCoordinate(double latitude, double longitude)
{
    m_values.insert(RecordKeys::latitude(), StoredValue::formatReal(latitude));
    m_values.insert(RecordKeys::longitude(), StoredValue::formatReal(longitude));
}

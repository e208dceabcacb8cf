#include "settings/MasterRecord.h"

#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"

MasterRecord MasterRecord::fromPropertyList(const QVariant &stored)
{
    MasterRecord record;
    if (stored.metaType().id() == QMetaType::QVariantMap)
        record.m_mode = StoredValue::intValue(stored.toMap().value(RecordKeys::mode()));
    return record;
}

QVariantMap MasterRecord::toPropertyList() const
{
    return {{RecordKeys::mode(), QString::asprintf("%d", m_mode)}};
}

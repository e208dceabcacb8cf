#include "settings/WhitelistRecord.h"

#include "settings/StoredValue.h"

WhitelistRecord WhitelistRecord::fromPropertyList(const QVariant &stored)
{
    WhitelistRecord record;
    if (stored.metaType().id() == QMetaType::QVariantMap)
        record.m_values = stored.toMap();
    return record;
}

bool WhitelistRecord::isWhitelisted(const QString &bundle) const
{
    return StoredValue::boolValue(m_values.value(bundle));
}

bool WhitelistRecord::toggle(const QString &bundle)
{
    const auto found = m_values.constFind(bundle);
    const bool value = found == m_values.cend() ? true : !StoredValue::boolValue(found.value());
    m_values.insert(bundle, value);
    return value;
}

#include "settings/WhitelistRecord.h"

#include "settings/StoredValue.h"

bool WhitelistRecord::isWhitelisted(const QVariantMap &record, const QString &bundle)
{
    return StoredValue::boolValue(record.value(bundle));
}

bool WhitelistRecord::toggle(QVariantMap &record, const QString &bundle)
{
    const auto found = record.constFind(bundle);
    const bool value = found == record.cend() ? true : !StoredValue::boolValue(found.value());
    record.insert(bundle, value);
    return value;
}

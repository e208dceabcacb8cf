#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

// The whitelist: bundle identifier to a boolean. Keys are never removed; a
// second tap stores false. Values never written here (a text "1", say) are
// kept as they were read.
class WhitelistRecord
{
public:
    WhitelistRecord() = default;
    // A root that is not a dictionary reads as an empty record.
    static WhitelistRecord fromPropertyList(const QVariant &stored);
    QVariantMap toPropertyList() const { return m_values; }

    // every bundle with a stored value, in key order
    QStringList bundles() const { return m_values.keys(); }
    qsizetype size() const { return m_values.size(); }
    // any stored value read as a flag, so a text "1" is on
    bool isWhitelisted(const QString &bundle) const;
    // What a tap on an application's row does: flips a stored flag, or stores
    // true for an application never tapped. Answers the new value.
    bool toggle(const QString &bundle);

private:
    QVariantMap m_values;
};

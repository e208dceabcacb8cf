#pragma once

#include <QVariantMap>

// The location file's record: the fixed location's on/off flag and its
// coordinate. Only what a setter changes is rewritten; every other key and
// value is written back exactly as it was read.
class LocationRecord
{
public:
    LocationRecord() = default;
    // A root that is not a dictionary reads as an empty record.
    static LocationRecord fromPropertyList(const QVariant &stored);
    QVariantMap toPropertyList() const { return m_values; }

    // "enable" read as a flag; stored as "%d"
    bool isEnabled() const;
    void setEnabled(bool on);

    // "latitude" and "longitude" read as numbers; stored as "%f"
    double latitude() const;
    double longitude() const;
    void setCoordinate(double latitude, double longitude);

private:
    QVariantMap m_values;
};

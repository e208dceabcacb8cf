#pragma once

#include <QVariantMap>

// The master file holds the mode the application starts in. It is written as
// a fresh one-key dictionary every time, so any other key in it is dropped.
class MasterRecord
{
public:
    enum Mode { RouteMode = 0, LocationMode = 1 };

    MasterRecord() = default;
    explicit MasterRecord(Mode mode) : m_mode(mode) {}

    // "mode" read as an integer: 0 when the root, the key or a number is
    // missing. Any value other than 0 means the fixed-location mode.
    static MasterRecord fromPropertyList(const QVariant &stored);
    // a text, not a number: that is how the mode has always been stored
    QVariantMap toPropertyList() const;

    int mode() const { return m_mode; }

private:
    int m_mode = RouteMode;
};

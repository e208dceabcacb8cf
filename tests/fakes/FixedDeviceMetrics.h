#pragma once

#include "platform/gui/DeviceMetrics.h"

#include <QString>

// One device, the same on every machine: a system version and screen size
// that what depends on them can be checked against.
class FixedDeviceMetrics : public DeviceMetrics
{
public:
    QString systemVersion() const override { return QStringLiteral("16.0"); }
    int screenPixelHeight() const override { return 1334; }
    int screenPixelWidth() const override { return 750; }
};

#pragma once

#include "platform/DeviceMetrics.h"

#include <QString>

// A device whose system version and screen height a test chooses.
class FixedDeviceMetrics : public DeviceMetrics
{
public:
    FixedDeviceMetrics(QString version = QStringLiteral("16.0"), int pixelHeight = 1334)
        : m_version(std::move(version)), m_pixelHeight(pixelHeight)
    {
    }
    QString systemVersion() const override { return m_version; }
    int screenPixelHeight() const override { return m_pixelHeight; }

private:
    QString m_version;
    int m_pixelHeight;
};

#pragma once

#include "platform/gui/DeviceMetrics.h"

#include <QString>

// A device whose system version and screen size a test chooses.
class FixedDeviceMetrics : public DeviceMetrics
{
public:
    FixedDeviceMetrics(QString version = QStringLiteral("16.0"), int pixelHeight = 1334,
                       int pixelWidth = 750)
        : m_version(std::move(version)), m_pixelHeight(pixelHeight), m_pixelWidth(pixelWidth)
    {
    }
    QString systemVersion() const override { return m_version; }
    int screenPixelHeight() const override { return m_pixelHeight; }
    int screenPixelWidth() const override { return m_pixelWidth; }

private:
    QString m_version;
    int m_pixelHeight;
    int m_pixelWidth;
};

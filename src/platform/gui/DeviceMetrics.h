#pragma once

#include <QString>

// What the screens ask of the device: the system version (screens place their
// top bar below a status bar from version 7.0 on) and the height of the
// display in pixels (above 2400 pixels screens leave room for the rounded
// corners and the home indicator).
class DeviceMetrics
{
public:
    virtual ~DeviceMetrics() = default;
    virtual QString systemVersion() const = 0;
    virtual int screenPixelHeight() const = 0;
    // 0 where the width is not known
    virtual int screenPixelWidth() const { return 0; }

    bool isVersion7OrLater() const;
    bool isTallScreen() const { return screenPixelHeight() > 2400; }
};

class ScreenDeviceMetrics : public DeviceMetrics
{
public:
    QString systemVersion() const override;
    int screenPixelHeight() const override;
    int screenPixelWidth() const override;
};

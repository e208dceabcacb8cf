#include "platform/gui/DeviceMetrics.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSysInfo>

#include <cmath>

namespace {
// the leading "major.minor" of a version text as a number
double versionNumber(const QString &version)
{
    const QStringList parts = version.trimmed().split(u'.');
    bool ok = false;
    const double major = parts.value(0).toInt(&ok);
    if (!ok)
        return 0.0;
    const QString minor = parts.value(1);
    return minor.isEmpty() ? major : major + minor.toDouble() / std::pow(10.0, minor.size());
}
} // namespace

bool DeviceMetrics::isVersion7OrLater() const
{
    return versionNumber(systemVersion()) >= 7.0;
}

QString ScreenDeviceMetrics::systemVersion() const
{
    // Linux phones and desktops always have a status bar or a title bar above
    // the window; report a version that lays the screens out for one.
    const QString version = QSysInfo::productVersion();
    return versionNumber(version) >= 7.0 ? version : QStringLiteral("7.0");
}

int ScreenDeviceMetrics::screenPixelHeight() const
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen)
        return 0;
    return int(screen->geometry().height() * screen->devicePixelRatio());
}

int ScreenDeviceMetrics::screenPixelWidth() const
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen)
        return 0;
    return int(screen->geometry().width() * screen->devicePixelRatio());
}

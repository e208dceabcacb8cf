#pragma once

#include <QString>

// Where the settings files live and what they are called. The names are the
// hooking component's and must not change. The directory is configuration:
// the device's preferences folder where it exists, otherwise a per-user
// folder chosen at start-up.
class PreferenceFiles
{
public:
    static QString directory();
    static void setDirectory(const QString &directory);

    static QString routeFile();
    static QString locationFile();
    static QString favoritesFile();
    static QString whitelistFile();
    static QString masterFile();
    // belongs to a sibling application; only ever read
    static QString hideListFile();

    static constexpr const char *DevicePreferencesDirectory = "/var/mobile/Library/Preferences/";

private:
    static QString file(const char *name);
};

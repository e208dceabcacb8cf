#pragma once

#include <QString>

// Where the settings files live and what they are called. The names are the
// hooking component's and must not change. The folder is configuration: the
// device's preferences folder where it exists, otherwise a per-user folder
// chosen at start-up; a test gives its own temporary folder.
class PreferenceFiles
{
public:
    // `directory` is kept with a trailing '/', so file names append to it.
    explicit PreferenceFiles(const QString &directory);

    QString directory() const { return m_directory; }
    QString routeFile() const;
    QString locationFile() const;
    QString favoritesFile() const;
    QString whitelistFile() const;
    QString masterFile() const;
    // belongs to a sibling application; only ever read
    QString hideListFile() const;

    static constexpr const char *DevicePreferencesDirectory = "/var/mobile/Library/Preferences/";

private:
    QString file(const char *name) const;

    QString m_directory;
};

#include "settings/PreferenceFiles.h"

#include <QDir>

namespace {
QString &storedDirectory()
{
    static QString directory = QString::fromLatin1(PreferenceFiles::DevicePreferencesDirectory);
    return directory;
}
} // namespace

QString PreferenceFiles::directory()
{
    return storedDirectory();
}

void PreferenceFiles::setDirectory(const QString &directory)
{
    QString normalized = QDir::cleanPath(directory);
    if (!normalized.endsWith(u'/'))
        normalized.append(u'/');
    storedDirectory() = normalized;
}

QString PreferenceFiles::file(const char *name)
{
    return storedDirectory() + QString::fromLatin1(name);
}

QString PreferenceFiles::routeFile()
{
    return file("com.velmora.trekmimex.route.plist");
}

QString PreferenceFiles::locationFile()
{
    return file("com.velmora.trekmimex.location.plist");
}

QString PreferenceFiles::favoritesFile()
{
    return file("com.velmora.trekmimex.favorites.plist");
}

QString PreferenceFiles::whitelistFile()
{
    return file("com.velmora.trekmimex.whitelist.plist");
}

QString PreferenceFiles::masterFile()
{
    return file("com.velmora.trekmimex.master.plist");
}

QString PreferenceFiles::hideListFile()
{
    return file("com.velmora.hushdeck.hidelist.plist");
}

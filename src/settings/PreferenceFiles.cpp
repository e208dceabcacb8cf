#include "settings/PreferenceFiles.h"

#include <QDir>

PreferenceFiles::PreferenceFiles(const QString &directory) : m_directory(QDir::cleanPath(directory))
{
    if (!m_directory.endsWith(u'/'))
        m_directory.append(u'/');
}

QString PreferenceFiles::file(const char *name) const
{
    return m_directory + QString::fromLatin1(name);
}

QString PreferenceFiles::routeFile() const
{
    return file("com.velmora.trekmimex.route.plist");
}

QString PreferenceFiles::locationFile() const
{
    return file("com.velmora.trekmimex.location.plist");
}

QString PreferenceFiles::favoritesFile() const
{
    return file("com.velmora.trekmimex.favorites.plist");
}

QString PreferenceFiles::whitelistFile() const
{
    return file("com.velmora.trekmimex.whitelist.plist");
}

QString PreferenceFiles::masterFile() const
{
    return file("com.velmora.trekmimex.master.plist");
}

QString PreferenceFiles::hideListFile() const
{
    return file("com.velmora.hushdeck.hidelist.plist");
}

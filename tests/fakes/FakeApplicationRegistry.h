#pragma once

#include "applications/ApplicationRegistry.h"

#include <QHash>
#include <QImage>
#include <QList>
#include <QSet>

#include <memory>

class QTemporaryDir;

// Installed applications a test lists: shown ones in order, hidden ones
// (installed, not on the home screen), names and icons, the running set.
// Counts every question so tests can see that nothing is cached. Icons are
// written as picture files to a folder of the fake's own and named by path,
// as a desktop entry names an icon file.
class FakeApplicationRegistry : public ApplicationRegistry
{
public:
    struct App
    {
        QString bundle;
        QString name; // a null string: installed without a name
        QImage icon;
        bool shown = true;
    };

    void add(const App &app);
    // Shown applications named after their identifiers' last piece, each
    // with a small icon of its own colour.
    void addShown(const QStringList &bundles);

    QStringList displayIdentifiers(bool onlyRunning, bool debuggable) const override;
    QString localizedName(const QString &bundle) const override;
    ApplicationIcon icon(const QString &bundle) const override;

    QList<App> apps;
    QSet<QString> running;
    mutable int identifierQueries = 0;
    mutable QHash<QString, int> iconQueries;

private:
    const App *find(const QString &bundle) const;
    QString iconFile(const QString &bundle) const;

    // shared by copies, removed with the last of them
    std::shared_ptr<QTemporaryDir> m_iconFolder;
};

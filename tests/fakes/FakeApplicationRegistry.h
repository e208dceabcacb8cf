#pragma once

#include "apps/ApplicationRegistry.h"

#include <QHash>
#include <QList>
#include <QSet>

// Installed applications a test lists: shown ones in order, hidden ones
// (installed, not on the home screen), names and icons, the running set.
// Counts every question so tests can see that nothing is cached.
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

    void add(const App &app) { apps.append(app); }
    // Shown applications named after their identifiers' last piece, each
    // with a small icon of its own colour.
    void addShown(const QStringList &bundles);

    QStringList displayIdentifiers(bool onlyRunning, bool debuggable) const override;
    QString localizedName(const QString &bundle) const override;
    QImage iconImage(const QString &bundle, int format, qreal scale) const override;

    QList<App> apps;
    QSet<QString> running;
    mutable int identifierQueries = 0;
    mutable QHash<QString, int> iconQueries;
    mutable QList<qreal> iconScales;

private:
    const App *find(const QString &bundle) const;
};

#pragma once

#include "applications/ApplicationRegistry.h"

#include <QList>
#include <QString>
#include <QStringList>

// One installed application as the whitelist shows it, and the class
// operations that fill such records from the registry. Every record costs
// one name query and two icon lookups; nothing is cached, so every list
// shows what is installed now. An icon is where the picture is found; the
// whitelist screen draws it (ApplicationIconLoader).
class ApplicationModel
{
public:
    QString appName() const { return m_appName; }
    void setAppName(const QString &name) { m_appName = name; }
    ApplicationIcon appIcon() const { return m_appIcon; }
    void setAppIcon(const ApplicationIcon &icon) { m_appIcon = icon; }
    // the same icon again, looked up a second time
    ApplicationIcon appIconBig() const { return m_appIconBig; }
    void setAppIconBig(const ApplicationIcon &icon) { m_appIconBig = icon; }
    QString appBundle() const { return m_appBundle; }
    void setAppBundle(const QString &bundle) { m_appBundle = bundle; }

    // One record per identifier, in order, duplicates kept.
    static QList<ApplicationModel> appModelListWithAppList(const ApplicationRegistry &registry,
                                                           const QStringList &appList);
    static ApplicationModel modelWithBundle(const ApplicationRegistry &registry,
                                            const QString &bundle);
    // A null string when the application is not installed.
    static QString appNameWithBundle(const ApplicationRegistry &registry, const QString &bundle);
    // Where the icon is found, or a null icon.
    static ApplicationIcon appIconWithBundle(const ApplicationRegistry &registry,
                                             const QString &bundle);
    // Answers appIconWithBundle(): the scale given is not used, on purpose.
    static ApplicationIcon appIconWithBundle(const ApplicationRegistry &registry,
                                             const QString &bundle, qreal scale);

private:
    QString m_appName;
    ApplicationIcon m_appIcon;
    ApplicationIcon m_appIconBig;
    QString m_appBundle;
};

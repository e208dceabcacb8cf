#pragma once

#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>

class ApplicationRegistry;

// One installed application as the whitelist shows it, and the class
// operations that fill such records from the registry. Every record costs
// one name query and two icon lookups; nothing is cached, so every list
// shows what is installed now.
class ApplicationModel
{
public:
    QString appName() const { return m_appName; }
    void setAppName(const QString &name) { m_appName = name; }
    QImage appIcon() const { return m_appIcon; }
    void setAppIcon(const QImage &icon) { m_appIcon = icon; }
    // the same icon again, looked up a second time
    QImage appIconBig() const { return m_appIconBig; }
    void setAppIconBig(const QImage &icon) { m_appIconBig = icon; }
    QString appBundle() const { return m_appBundle; }
    void setAppBundle(const QString &bundle) { m_appBundle = bundle; }

    // One record per identifier, in order, duplicates kept.
    static QList<ApplicationModel> appModelListWithAppList(const ApplicationRegistry &registry,
                                                           const QStringList &appList);
    static ApplicationModel modelWithBundle(const ApplicationRegistry &registry,
                                            const QString &bundle);
    // A null string when the application is not installed.
    static QString appNameWithBundle(const ApplicationRegistry &registry, const QString &bundle);
    // The small icon at the main screen's scale, or a null image.
    static QImage appIconWithBundle(const ApplicationRegistry &registry, const QString &bundle);
    // Answers appIconWithBundle(): the scale given is not used, on purpose.
    static QImage appIconWithBundle(const ApplicationRegistry &registry, const QString &bundle,
                                    qreal scale);

    // Device pixels per point of the primary screen; 1 without a screen.
    static qreal mainScreenScale();

private:
    QString m_appName;
    QImage m_appIcon;
    QImage m_appIconBig;
    QString m_appBundle;
};

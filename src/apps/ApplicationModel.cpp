#include "apps/ApplicationModel.h"

#include "apps/ApplicationRegistry.h"

#include <QGuiApplication>
#include <QScreen>

QList<ApplicationModel>
ApplicationModel::appModelListWithAppList(const ApplicationRegistry &registry,
                                          const QStringList &appList)
{
    QList<ApplicationModel> models;
    models.reserve(appList.size());
    for (const QString &bundle : appList)
        models.append(modelWithBundle(registry, bundle));
    return models;
}

ApplicationModel ApplicationModel::modelWithBundle(const ApplicationRegistry &registry,
                                                   const QString &bundle)
{
    ApplicationModel model;
    model.setAppBundle(bundle);
    model.setAppIcon(appIconWithBundle(registry, bundle));
    model.setAppIconBig(appIconWithBundle(registry, bundle));
    model.setAppName(appNameWithBundle(registry, bundle));
    return model;
}

QString ApplicationModel::appNameWithBundle(const ApplicationRegistry &registry,
                                            const QString &bundle)
{
    return registry.localizedName(bundle);
}

QImage ApplicationModel::appIconWithBundle(const ApplicationRegistry &registry,
                                           const QString &bundle)
{
    return registry.iconImage(bundle, ApplicationRegistry::SmallIconFormat, mainScreenScale());
}

QImage ApplicationModel::appIconWithBundle(const ApplicationRegistry &registry,
                                           const QString &bundle, qreal /*scale*/)
{
    return appIconWithBundle(registry, bundle);
}

qreal ApplicationModel::mainScreenScale()
{
    // trekmime-ctl runs a QCoreApplication: no screen there
    const bool gui = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    const QScreen *screen = gui ? QGuiApplication::primaryScreen() : nullptr;
    return screen ? screen->devicePixelRatio() : 1.0;
}

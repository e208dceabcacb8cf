#include "applications/ApplicationModel.h"

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

ApplicationIcon ApplicationModel::appIconWithBundle(const ApplicationRegistry &registry,
                                                    const QString &bundle)
{
    return registry.icon(bundle);
}

ApplicationIcon ApplicationModel::appIconWithBundle(const ApplicationRegistry &registry,
                                                    const QString &bundle, qreal /*scale*/)
{
    return appIconWithBundle(registry, bundle);
}

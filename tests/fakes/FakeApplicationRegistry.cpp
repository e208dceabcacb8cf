#include "fakes/FakeApplicationRegistry.h"

#include <QColor>
#include <QTemporaryDir>

void FakeApplicationRegistry::add(const App &app)
{
    apps.append(app);
    if (app.icon.isNull())
        return;
    if (!m_iconFolder)
        m_iconFolder = std::make_shared<QTemporaryDir>();
    app.icon.save(iconFile(app.bundle), "PNG");
}

QString FakeApplicationRegistry::iconFile(const QString &bundle) const
{
    return m_iconFolder ? m_iconFolder->filePath(bundle + QStringLiteral(".png")) : QString();
}

void FakeApplicationRegistry::addShown(const QStringList &bundles)
{
    for (const QString &bundle : bundles) {
        QImage icon(30, 30, QImage::Format_ARGB32_Premultiplied);
        icon.fill(QColor::fromHsv(int(qHash(bundle) % 360), 160, 220));
        add({bundle, bundle.section(QLatin1Char('.'), -1), icon, true});
    }
}

const FakeApplicationRegistry::App *FakeApplicationRegistry::find(const QString &bundle) const
{
    for (const App &app : apps)
        if (app.bundle == bundle)
            return &app;
    return nullptr;
}

QStringList FakeApplicationRegistry::displayIdentifiers(bool onlyRunning, bool) const
{
    ++identifierQueries;
    QStringList bundles;
    for (const App &app : apps)
        if (app.shown && (!onlyRunning || running.contains(app.bundle)))
            bundles.append(app.bundle);
    return bundles;
}

QString FakeApplicationRegistry::localizedName(const QString &bundle) const
{
    if (const App *app = find(bundle))
        return app->name.isNull() ? QLatin1String("") : app->name;
    return {};
}

ApplicationIcon FakeApplicationRegistry::icon(const QString &bundle) const
{
    ++iconQueries[bundle];
    const App *app = find(bundle);
    return app && !app->icon.isNull() ? ApplicationIcon{iconFile(bundle), {}} : ApplicationIcon{};
}

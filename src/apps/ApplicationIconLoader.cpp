#include "apps/ApplicationIconLoader.h"

#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QImageReader>
#include <QScreen>

namespace {

QImage imageFromFile(const QString &path, int pixels)
{
    QImageReader reader(path);
    const QSize size = reader.size();
    if (size.isValid() && size != QSize(pixels, pixels))
        reader.setScaledSize(size.scaled(pixels, pixels, Qt::KeepAspectRatio));
    return reader.read();
}

// Platforms without a desktop (offscreen, some phone shells) give Qt no
// icon theme and no folders to look in; desktop entries still name theme
// icons, so give Qt what the freedesktop icon theme rules say: the "hicolor"
// theme in the icons folder of every XDG data folder, then the pixmaps.
void useFreedesktopIconDefaults()
{
    if (QIcon::themeName().isEmpty())
        QIcon::setThemeName(QStringLiteral("hicolor"));
    const QStringList qtOwn{QStringLiteral(":/icons")};
    if (QIcon::themeSearchPaths() != qtOwn)
        return;
    QString home = qEnvironmentVariable("XDG_DATA_HOME");
    if (home.isEmpty())
        home = QDir::homePath() + QStringLiteral("/.local/share");
    QString dirs = qEnvironmentVariable("XDG_DATA_DIRS");
    if (dirs.isEmpty())
        dirs = QStringLiteral("/usr/local/share:/usr/share");
    QStringList paths;
    for (const QString &dir : QStringList{home} + dirs.split(QLatin1Char(':'), Qt::SkipEmptyParts))
        paths.append(dir + QStringLiteral("/icons"));
    QIcon::setThemeSearchPaths(paths + qtOwn);
    if (QIcon::fallbackSearchPaths().isEmpty())
        QIcon::setFallbackSearchPaths({QStringLiteral("/usr/share/pixmaps")});
}

QImage imageFromTheme(const QString &name, int points, qreal scale)
{
    // QIcon needs a QGuiApplication
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return {};
    useFreedesktopIconDefaults();
    const QIcon icon = QIcon::fromTheme(name);
    if (icon.isNull())
        return {};
    // a theme may hold only smaller pictures than asked for; the rows expect
    // the size they asked for
    const QImage image = icon.pixmap(QSize(points, points), scale).toImage();
    const int pixels = qRound(points * scale);
    if (image.isNull() || image.size() == QSize(pixels, pixels))
        return image;
    return image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace

QImage ApplicationIconLoader::load(const ApplicationIcon &icon, int format, qreal scale)
{
    const int points = iconPointSize(format);
    QImage image;
    if (!icon.filePath.isEmpty()) {
        image = imageFromFile(icon.filePath, qRound(points * scale));
    } else {
        // the names run from the most specific to the most generic
        for (qsizetype i = 0; i < icon.themeNames.size() && image.isNull(); ++i)
            image = imageFromTheme(icon.themeNames.at(i), points, scale);
    }
    if (!image.isNull())
        image.setDevicePixelRatio(scale);
    return image;
}

qreal ApplicationIconLoader::mainScreenScale()
{
    // a QCoreApplication has no screens
    const bool gui = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    const QScreen *screen = gui ? QGuiApplication::primaryScreen() : nullptr;
    return screen ? screen->devicePixelRatio() : 1.0;
}

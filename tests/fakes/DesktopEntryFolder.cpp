#include "fakes/DesktopEntryFolder.h"
#include "support/FileBytes.h"

#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

DesktopEntryFolder::DesktopEntryFolder(const QString &root) : m_root(root)
{
    QDir(root).mkpath(QStringLiteral("applications"));
    const QString theme = root + QStringLiteral("/icons/hicolor");
    QDir(theme).mkpath(QStringLiteral("48x48/apps"));
    QDir(theme).mkpath(QStringLiteral("scalable/apps"));
    writeBytes(theme + QStringLiteral("/index.theme"),
               "[Icon Theme]\nName=Hicolor\nDirectories=48x48/apps,scalable/apps\n\n"
               "[48x48/apps]\nSize=48\nMinSize=8\nMaxSize=512\nType=Scalable\n\n"
               "[scalable/apps]\nSize=128\nMinSize=8\nMaxSize=512\nType=Scalable\n");
}

void DesktopEntryFolder::addEntry(const QString &bundle, const QByteArray &contents) const
{
    writeBytes(m_root + QStringLiteral("/applications/") + bundle + QStringLiteral(".desktop"),
               contents);
}

void DesktopEntryFolder::addApplication(const QString &bundle, const QString &name,
                                        const QString &icon, bool noDisplay) const
{
    QByteArray contents =
        "[Desktop Entry]\nType=Application\nExec=true\nName=" + name.toUtf8() + "\n";
    if (!icon.isEmpty())
        contents += "Icon=" + icon.toUtf8() + "\n";
    if (noDisplay)
        contents += "NoDisplay=true\n";
    addEntry(bundle, contents);
}

QString DesktopEntryFolder::addThemeIcon(const QString &name, const QColor &color,
                                         const QString &glyph) const
{
    // the size its folder says, as an installed theme has it
    QImage image(48, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.scale(0.5, 0.5);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath square;
        square.addRoundedRect(QRectF(4, 4, 88, 88), 20, 20);
        QLinearGradient fill(0, 4, 0, 92);
        fill.setColorAt(0, color.lighter(115));
        fill.setColorAt(1, color);
        painter.fillPath(square, fill);
        // text needs the fonts of a GUI application; without one the square
        // is icon enough
        if (!glyph.isEmpty() && qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
            QFont font;
            font.setPixelSize(48);
            font.setBold(true);
            painter.setFont(font);
            painter.setPen(Qt::white);
            painter.drawText(QRectF(4, 4, 88, 88), Qt::AlignCenter, glyph);
        }
    }
    const QString file =
        m_root + QStringLiteral("/icons/hicolor/48x48/apps/") + name + QStringLiteral(".png");
    image.save(file, "PNG");
    return file;
}

QString DesktopEntryFolder::addSvgThemeIcon(const QString &name, const QColor &color) const
{
    const QString file =
        m_root + QStringLiteral("/icons/hicolor/scalable/apps/") + name + QStringLiteral(".svg");
    writeBytes(file, QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"128\" "
                                    "height=\"128\"><rect x=\"8\" y=\"8\" width=\"112\" "
                                    "height=\"112\" rx=\"26\" fill=\"%1\"/></svg>\n")
                         .arg(color.name())
                         .toUtf8());
    return file;
}

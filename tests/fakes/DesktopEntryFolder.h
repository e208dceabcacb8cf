#pragma once

#include <QColor>
#include <QString>

// A data folder (what XDG_DATA_HOME or one of XDG_DATA_DIRS names) that a
// test, the benchmark or a screenshot fills with desktop entries in
// applications/ and an icon theme of its own in icons/hicolor/.
class DesktopEntryFolder
{
public:
    explicit DesktopEntryFolder(const QString &root);

    QString root() const { return m_root; }

    // applications/<bundle>.desktop with exactly these bytes
    void addEntry(const QString &bundle, const QByteArray &contents) const;
    // A plain application entry; `icon` is a theme name or a file path.
    void addApplication(const QString &bundle, const QString &name, const QString &icon = {},
                        bool noDisplay = false) const;
    // icons/hicolor/48x48/apps/<name>.png: a rounded square of `color` with
    // `glyph` on it in white. Answers the file.
    QString addThemeIcon(const QString &name, const QColor &color, const QString &glyph) const;
    // icons/hicolor/scalable/apps/<name>.svg, as many applications ship
    // their only icon. Answers the file.
    QString addSvgThemeIcon(const QString &name, const QColor &color) const;

private:
    QString m_root;
};

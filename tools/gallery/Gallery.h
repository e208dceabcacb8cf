#pragma once

#include <QWidget>

class TileSource;

// One window with the flat switch, the flat buttons, the palette, the
// progress overlay in each of its modes, and the map with a route and its
// two end markers.
class Gallery : public QWidget
{
    Q_OBJECT

public:
    // `tiles` (not owned) feeds the map; without it the map shows its grid.
    explicit Gallery(TileSource *tiles = nullptr, QWidget *parent = nullptr);

    // Paints the window as it stands into a PNG file.
    bool saveScreenshot(const QString &path);

private:
    QWidget *switchesPanel();
    QWidget *buttonsPanel();
    QWidget *palettePanel();
    QWidget *overlaysPanel();
    QWidget *mapPanel();

    TileSource *m_tiles;
};

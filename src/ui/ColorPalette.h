#pragma once

#include <QColor>
#include <QStringView>

// The flat colour palette the screens draw their look from, and the two ways
// of making colours they rely on: hexadecimal codes and linear blends.
class ColorPalette
{
public:
    // "RGB", "RRGGBB" or "RRGGBBAA", any "#" ignored; anything else scans as
    // far as it is hexadecimal, like the parser the palette was tuned with.
    static QColor colorFromHexCode(QStringView hexCode);
    // Channel by channel foreground x percentBlend + background x (1 - percentBlend);
    // the result is always opaque.
    static QColor blendedColorWithForegroundColor(const QColor &foreground,
                                                  const QColor &background, double percentBlend);

    // Each colour is made on first use and the same object answered afterwards.
    static const QColor &turquoiseColor();
    static const QColor &greenSeaColor();
    static const QColor &emerlandColor();
    static const QColor &nephritisColor();
    static const QColor &peterRiverColor();
    static const QColor &belizeHoleColor();
    static const QColor &amethystColor();
    static const QColor &wisteriaColor();
    static const QColor &wetAsphaltColor();
    static const QColor &midnightBlueColor();
    static const QColor &sunflowerColor();
    static const QColor &tangerineColor();
    static const QColor &carrotColor();
    static const QColor &pumpkinColor();
    static const QColor &alizarinColor();
    static const QColor &pomegranateColor();
    static const QColor &cloudsColor();
    static const QColor &silverColor();
    static const QColor &concreteColor();
    static const QColor &asbestosColor();

    // The few colours the screens use besides the flat palette.
    static const QColor &whiteColor();
    static const QColor &blackColor();
    // the tint of a row that has the keyboard focus
    static const QColor &selectionColor();
    // the faint line above the modal screens' bottom bars
    static const QColor &dividerColor();
    // the text of a list row that can be chosen
    static const QColor &rowTextColor();
    // the map's own marks: the user's position and route lines, dropped pins,
    // the tile credit
    static const QColor &mapBlueColor();
    static const QColor &pinColor();
    static const QColor &pinOutlineColor();
    static const QColor &creditTextColor();
    // the ground of a map drawn as a sample
    static const QColor &landColor();
    // a planned route drawn on the map
    static const QColor &routeLineColor();
    // the street map drawn for pictures: paper, parks, water, avenues
    static const QColor &sketchPaperColor();
    static const QColor &sketchParkColor();
    static const QColor &sketchWaterColor();
    static const QColor &sketchAvenueColor();
    // the same colour at an alpha of 0 to 255
    static QColor withAlpha(const QColor &color, int alpha);
};

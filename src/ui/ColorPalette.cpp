#include "ui/ColorPalette.h"

#include <QString>

namespace {

// Reads leading hexadecimal digits into an unsigned 32-bit value, stopping at
// the first other character; more than eight digits saturate.
quint32 scanHex(const QString &text)
{
    quint64 value = 0;
    for (const QChar c : text) {
        const char16_t u = c.toLower().unicode();
        int digit;
        if (u >= u'0' && u <= u'9')
            digit = u - u'0';
        else if (u >= u'a' && u <= u'f')
            digit = 10 + (u - u'a');
        else
            break;
        value = value * 16 + quint64(digit);
        if (value > 0xFFFFFFFFull)
            return 0xFFFFFFFFu;
    }
    return quint32(value);
}

} // namespace

QColor ColorPalette::colorFromHexCode(QStringView hexCode)
{
    QString code = hexCode.toString();
    code.remove(u'#');
    if (code.size() == 3) {
        QString doubled;
        for (const QChar c : code)
            doubled.append(c).append(c);
        code = doubled;
    }
    if (code.size() == 6)
        code.append(QStringLiteral("ff"));
    const quint32 v = scanHex(code);
    // single-precision division, as the palette's codes were always read
    const float red = float(v >> 24) / 255.0f;
    const float green = float((v >> 16) & 255) / 255.0f;
    const float blue = float((v >> 8) & 255) / 255.0f;
    const float alpha = float(v & 255) / 255.0f;
    return QColor::fromRgbF(red, green, blue, alpha);
}

QColor ColorPalette::blendedColorWithForegroundColor(const QColor &foreground,
                                                     const QColor &background, double percentBlend)
{
    // every Qt colour converts to RGB, so a grey level comes out as the same
    // value in all three channels
    const QColor fg = foreground.toRgb();
    const QColor bg = background.toRgb();
    const double p = percentBlend;
    auto mix = [p](float f, float b) { return float(double(f) * p + double(b) * (1.0 - p)); };
    return QColor::fromRgbF(mix(fg.redF(), bg.redF()), mix(fg.greenF(), bg.greenF()),
                            mix(fg.blueF(), bg.blueF()), 1.0f);
}

QColor ColorPalette::withAlpha(const QColor &color, int alpha)
{
    QColor result = color;
    result.setAlpha(alpha);
    return result;
}

#define TREKMIME_PALETTE_COLOR(name, code)                                                         \
    const QColor &ColorPalette::name()                                                             \
    {                                                                                              \
        static const QColor color = colorFromHexCode(u"" code);                                    \
        return color;                                                                              \
    }

TREKMIME_PALETTE_COLOR(turquoiseColor, "1ABC9C")
TREKMIME_PALETTE_COLOR(greenSeaColor, "16A085")
TREKMIME_PALETTE_COLOR(emerlandColor, "2ECC71")
TREKMIME_PALETTE_COLOR(nephritisColor, "27AE60")
TREKMIME_PALETTE_COLOR(peterRiverColor, "#3498DB")
TREKMIME_PALETTE_COLOR(belizeHoleColor, "2980B9")
TREKMIME_PALETTE_COLOR(amethystColor, "9B59B6")
TREKMIME_PALETTE_COLOR(wisteriaColor, "8E44AD")
TREKMIME_PALETTE_COLOR(wetAsphaltColor, "34495E")
TREKMIME_PALETTE_COLOR(midnightBlueColor, "2C3E50")
TREKMIME_PALETTE_COLOR(sunflowerColor, "F1C40F")
TREKMIME_PALETTE_COLOR(tangerineColor, "F39C12")
TREKMIME_PALETTE_COLOR(carrotColor, "E67E22")
TREKMIME_PALETTE_COLOR(pumpkinColor, "D35400")
TREKMIME_PALETTE_COLOR(alizarinColor, "E74C3C")
TREKMIME_PALETTE_COLOR(pomegranateColor, "C0392B")
TREKMIME_PALETTE_COLOR(cloudsColor, "ECF0F1")
TREKMIME_PALETTE_COLOR(silverColor, "BDC3C7")
TREKMIME_PALETTE_COLOR(concreteColor, "95A5A6")
TREKMIME_PALETTE_COLOR(asbestosColor, "7F8C8D")

// Colours outside the flat palette are plain 8-bit values, exactly as the
// screens and the map have always drawn them.
#define TREKMIME_PLAIN_COLOR(name, rgb)                                                            \
    const QColor &ColorPalette::name()                                                             \
    {                                                                                              \
        static const QColor color = QColor::fromRgb(QRgb(rgb));                                    \
        return color;                                                                              \
    }

TREKMIME_PLAIN_COLOR(whiteColor, 0xffffff)
TREKMIME_PLAIN_COLOR(blackColor, 0x000000)
TREKMIME_PLAIN_COLOR(selectionColor, 0xe8f8f5)
TREKMIME_PLAIN_COLOR(dividerColor, 0xdde3e5)
TREKMIME_PLAIN_COLOR(rowTextColor, 0x555555)
TREKMIME_PLAIN_COLOR(mapBlueColor, 0x007aff)
TREKMIME_PLAIN_COLOR(pinColor, 0xe53935)
TREKMIME_PLAIN_COLOR(pinOutlineColor, 0x9b1c1c)
TREKMIME_PLAIN_COLOR(creditTextColor, 0x333333)
TREKMIME_PLAIN_COLOR(landColor, 0xd8e6d2)
TREKMIME_PLAIN_COLOR(routeLineColor, 0x00ff00)
TREKMIME_PLAIN_COLOR(sketchPaperColor, 0xf2efe9)
TREKMIME_PLAIN_COLOR(sketchParkColor, 0xc8facc)
TREKMIME_PLAIN_COLOR(sketchWaterColor, 0xaad3df)
TREKMIME_PLAIN_COLOR(sketchAvenueColor, 0xfcd6a4)

#undef TREKMIME_PLAIN_COLOR
#undef TREKMIME_PALETTE_COLOR

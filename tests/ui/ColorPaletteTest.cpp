#include "TestMain.h"

#include "ui/ColorPalette.h"

#include <QTest>

// Colours compare channel by channel in 8-bit steps: the codes are 8-bit.
static QString rgba(const QColor &c)
{
    return QStringLiteral("%1,%2,%3,%4").arg(c.red()).arg(c.green()).arg(c.blue()).arg(c.alpha());
}

class ColorPaletteTest : public QObject
{
    Q_OBJECT

private slots:
    void hexCodes_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("expected");
        QTest::newRow("three digits double up") << "F00"
                                                << "255,0,0,255";
        QTest::newRow("six digits are opaque") << "ECF0F1"
                                               << "236,240,241,255";
        QTest::newRow("leading hash ignored") << "#ECF0F1"
                                              << "236,240,241,255";
        QTest::newRow("every hash ignored") << "#EC#F0F1#"
                                            << "236,240,241,255";
        QTest::newRow("eight digits carry alpha") << "1ABC9C80"
                                                  << "26,188,156,128";
        QTest::newRow("lower case") << "2c3e50"
                                    << "44,62,80,255";
        QTest::newRow("three with hash") << "#0f0"
                                         << "0,255,0,255";
        // neither 3 nor 6 digits: read as they stand, the last byte as alpha
        QTest::newRow("four digits") << "1234"
                                     << "0,0,18,52";
        QTest::newRow("empty is clear black") << ""
                                              << "0,0,0,0";
        QTest::newRow("scan stops at a non-digit") << "12zz56"
                                                   << "0,0,0,18";
    }
    void hexCodes()
    {
        QFETCH(QString, code);
        QFETCH(QString, expected);
        QCOMPARE(rgba(ColorPalette::colorFromHexCode(code)), expected);
    }

    void alphaIsExactEighthBitFraction()
    {
        const QColor c = ColorPalette::colorFromHexCode(u"1ABC9C80");
        QCOMPARE(c.alphaF(), 128.0f / 255.0f);
    }

    void paletteColours_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("expected");
        QTest::newRow("turquoise") << ColorPalette::turquoiseColor() << "26,188,156,255";
        QTest::newRow("emerland") << ColorPalette::emerlandColor() << "46,204,113,255";
        QTest::newRow("peter river (code with hash)")
            << ColorPalette::peterRiverColor() << "52,152,219,255";
        QTest::newRow("midnight blue") << ColorPalette::midnightBlueColor() << "44,62,80,255";
        QTest::newRow("alizarin") << ColorPalette::alizarinColor() << "231,76,60,255";
        QTest::newRow("asbestos") << ColorPalette::asbestosColor() << "127,140,141,255";
    }
    void paletteColours()
    {
        QFETCH(QColor, color);
        QFETCH(QString, expected);
        QCOMPARE(rgba(color), expected);
    }

    void paletteColourIsMadeOnce()
    {
        QCOMPARE(&ColorPalette::cloudsColor(), &ColorPalette::cloudsColor());
        QVERIFY(&ColorPalette::cloudsColor() != &ColorPalette::silverColor());
    }

    void blending_data()
    {
        QTest::addColumn<QColor>("foreground");
        QTest::addColumn<QColor>("background");
        QTest::addColumn<double>("percent");
        QTest::addColumn<QColor>("expected");
        const QColor white = QColor::fromRgbF(1, 1, 1, 0.2f);
        const QColor black = QColor::fromRgbF(0, 0, 0, 0.6f);
        QTest::newRow("white over black by a quarter")
            << white << black << 0.25 << QColor::fromRgbF(0.25f, 0.25f, 0.25f, 1);
        QTest::newRow("all foreground")
            << QColor(Qt::red) << QColor(Qt::blue) << 1.0 << QColor(Qt::red);
        QTest::newRow("all background")
            << QColor(Qt::red) << QColor(Qt::blue) << 0.0 << QColor(Qt::blue);
        QTest::newRow("half and half, per channel")
            << QColor::fromRgbF(1, 0.5f, 0) << QColor::fromRgbF(0, 0.5f, 1) << 0.5
            << QColor::fromRgbF(0.5f, 0.5f, 0.5f);
        QTest::newRow("grey level as all channels")
            << QColor::fromHsvF(0, 0, 0.8f) << QColor(Qt::black) << 0.5
            << QColor::fromRgbF(0.4f, 0.4f, 0.4f);
    }
    void blending()
    {
        QFETCH(QColor, foreground);
        QFETCH(QColor, background);
        QFETCH(double, percent);
        QFETCH(QColor, expected);
        const QColor blended =
            ColorPalette::blendedColorWithForegroundColor(foreground, background, percent);
        QCOMPARE(blended.alphaF(), 1.0f);
        QVERIFY2(qAbs(blended.redF() - expected.redF()) < 1e-4f, qPrintable(rgba(blended)));
        QVERIFY2(qAbs(blended.greenF() - expected.greenF()) < 1e-4f, qPrintable(rgba(blended)));
        QVERIFY2(qAbs(blended.blueF() - expected.blueF()) < 1e-4f, qPrintable(rgba(blended)));
    }
};

TREKMIME_TEST(ColorPaletteTest)
#include "ColorPaletteTest.moc"

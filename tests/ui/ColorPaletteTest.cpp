#include "TestMain.h"

#include "ui/ColorPalette.h"

#include <QTest>

class ColorPaletteTest : public QObject
{
    Q_OBJECT

private slots:
    void colours_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QColor>("expected");
        const auto hex = [](const char *code) {
            return ColorPalette::colorFromHexCode(QString::fromLatin1(code));
        };
        QTest::newRow("three digits double up") << hex("F00") << QColor(255, 0, 0);
        QTest::newRow("six digits are opaque") << hex("ECF0F1") << QColor(236, 240, 241);
        QTest::newRow("every hash ignored") << hex("#EC#F0F1#") << QColor(236, 240, 241);
        QTest::newRow("eight digits carry alpha") << hex("1ABC9C80") << QColor(26, 188, 156, 128);
        QTest::newRow("lower case") << hex("2c3e50") << QColor(44, 62, 80);
        QTest::newRow("three with hash") << hex("#0f0") << QColor(0, 255, 0);
        // neither 3 nor 6 digits: read as they stand, the last byte as alpha
        QTest::newRow("four digits") << hex("1234") << QColor(0, 0, 18, 52);
        QTest::newRow("empty is clear black") << hex("") << QColor(0, 0, 0, 0);
        QTest::newRow("scan stops at a non-digit") << hex("12zz56") << QColor(0, 0, 0, 18);
        QTest::newRow("turquoise") << ColorPalette::turquoiseColor() << QColor(26, 188, 156);
        QTest::newRow("emerland") << ColorPalette::emerlandColor() << QColor(46, 204, 113);
        QTest::newRow("peter river (code with hash)")
            << ColorPalette::peterRiverColor() << QColor(52, 152, 219);
        QTest::newRow("midnight blue") << ColorPalette::midnightBlueColor() << QColor(44, 62, 80);
        QTest::newRow("alizarin") << ColorPalette::alizarinColor() << QColor(231, 76, 60);
        QTest::newRow("asbestos") << ColorPalette::asbestosColor() << QColor(127, 140, 141);
    }
    void colours()
    {
        QFETCH(QColor, color);
        QFETCH(QColor, expected);
        // the codes are 8-bit: channels compare in 8-bit steps, and the
        // alpha is an exact fraction of 255
        QCOMPARE(QString::number(color.rgba(), 16), QString::number(expected.rgba(), 16));
        QCOMPARE(color.alphaF(), float(expected.alpha()) / 255.0f);
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
        QTest::newRow("white over black by a quarter, alpha dropped")
            << QColor::fromRgbF(1, 1, 1, 0.2f) << QColor::fromRgbF(0, 0, 0, 0.6f) << 0.25
            << QColor::fromRgbF(0.25f, 0.25f, 0.25f);
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
        const QByteArray shown = blended.name(QColor::HexArgb).toLatin1();
        QCOMPARE(blended.alphaF(), 1.0f);
        QVERIFY2(qAbs(blended.redF() - expected.redF()) < 1e-4f, shown);
        QVERIFY2(qAbs(blended.greenF() - expected.greenF()) < 1e-4f, shown);
        QVERIFY2(qAbs(blended.blueF() - expected.blueF()) < 1e-4f, shown);
    }
};

TREKMIME_TEST(ColorPaletteTest)
#include "ColorPaletteTest.moc"

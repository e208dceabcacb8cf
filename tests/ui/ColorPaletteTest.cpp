#include "TestMain.h"

#include "ui/ColorPalette.h"

#include <QTest>

class ColorPaletteTest : public QObject
{
    Q_OBJECT

private slots:
    void hexCodes_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QColor>("expected");
        const auto row = [](const char *name, const char *code, QColor color) {
            QTest::newRow(name) << QString::fromLatin1(code) << color;
        };
        row("three digits double up", "#0f0", QColor(0, 255, 0));
        row("every hash ignored", "#EC#F0F1#", QColor(236, 240, 241));
        row("eight digits carry alpha", "1ABC9C80", QColor(26, 188, 156, 128));
        // neither 3 nor 6 digits: read as they stand, the last byte as alpha
        row("four digits", "1234", QColor(0, 0, 18, 52));
        row("empty is clear black", "", QColor(0, 0, 0, 0));
        row("scan stops at a non-digit", "12zz56", QColor(0, 0, 0, 18));
    }
    void hexCodes()
    {
        QFETCH(QString, code);
        QFETCH(QColor, expected);
        const QColor color = ColorPalette::colorFromHexCode(code);
        // the codes are 8-bit: channels compare in 8-bit steps
        QCOMPARE(QString::number(color.rgba(), 16), QString::number(expected.rgba(), 16));
    }

    void blendingDropsAlphaAndMixesEachChannel()
    {
        const QColor blended = ColorPalette::blendedColorWithForegroundColor(
            QColor::fromRgbF(1, 0.5f, 0, 0.2f), QColor::fromRgbF(0, 0.5f, 1, 0.6f), 0.25);
        QCOMPARE(blended.alphaF(), 1.0f);
        QVERIFY(qAbs(blended.redF() - 0.25f) < 1e-4f);
        QVERIFY(qAbs(blended.greenF() - 0.5f) < 1e-4f);
        QVERIFY(qAbs(blended.blueF() - 0.75f) < 1e-4f);
    }
};

TREKMIME_TEST(ColorPaletteTest)
#include "ColorPaletteTest.moc"

#include "TestMain.h"

#include "app/ProgressHUDLayout.h"

#include <QFontMetricsF>
#include <QTest>

namespace {

ProgressHUDLayout::Input baseInput()
{
    ProgressHUDLayout::Input in;
    in.bounds = QSizeF(320, 480);
    QFont bold;
    bold.setBold(true);
    bold.setPixelSize(16);
    in.labelFont = bold;
    bold.setPixelSize(12);
    in.detailsLabelFont = bold;
    return in;
}

} // namespace

class ProgressHUDLayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void boxAroundContent_data()
    {
        QTest::addColumn<bool>("square");
        QTest::addColumn<QSizeF>("minSize");
        QTest::addColumn<QSizeF>("box");
        // a 50 by 30 indicator inside margins of 20
        QTest::newRow("plain") << false << QSizeF() << QSizeF(90, 70);
        QTest::newRow("square: the longer side") << true << QSizeF() << QSizeF(90, 90);
        QTest::newRow("at least the minimum size") << false << QSizeF(150, 100) << QSizeF(150, 100);
    }
    void boxAroundContent()
    {
        QFETCH(bool, square);
        QFETCH(QSizeF, minSize);
        QFETCH(QSizeF, box);
        ProgressHUDLayout::Input in = baseInput();
        in.indicator = QSizeF(50, 30);
        in.square = square;
        in.minSize = minSize;
        const ProgressHUDLayout out = ProgressHUDLayout::compute(in);
        QCOMPARE(out.box.size(), box);
        QCOMPARE(out.box.center(), QPointF(160, 240)); // the overlay's centre
    }

    void offsetsMoveTheBoxRounded()
    {
        ProgressHUDLayout::Input in = baseInput();
        const ProgressHUDLayout centred = ProgressHUDLayout::compute(in);
        in.xOffset = 10.4f;
        in.yOffset = -50.6f;
        QCOMPARE(ProgressHUDLayout::compute(in).box.topLeft(),
                 centred.box.topLeft() + QPointF(10, -51));
    }

    void longLabelIsCutToOneLine()
    {
        ProgressHUDLayout::Input in = baseInput();
        in.labelText = QString(200, u'W');
        const ProgressHUDLayout out = ProgressHUDLayout::compute(in);
        const qreal maxWidth = 320 - 4 * 20;
        QVERIFY(out.labelText.endsWith(QChar(0x2026)));
        QVERIFY(QFontMetricsF(in.labelFont).horizontalAdvance(out.labelText) <= maxWidth);
        QCOMPARE(out.box.width(), maxWidth + 40);
    }

    void detailsWrapWithinTheWidth()
    {
        ProgressHUDLayout::Input in = baseInput();
        in.indicator = QSizeF(37, 37);
        in.labelText = QStringLiteral("Locating");
        in.detailsLabelText = QStringLiteral("words ").repeated(40);
        const ProgressHUDLayout out = ProgressHUDLayout::compute(in);
        const QFontMetricsF details(in.detailsLabelFont);
        QVERIFY(out.detailsLabel.width() <= 320 - 80);
        QVERIFY(out.detailsLabel.height() >= 3 * details.height());
        QCOMPARE(out.detailsLabel.top(), out.label.bottom() + 4);
        QCOMPARE(out.box.bottom(), out.detailsLabel.bottom() + 20);
    }
};

TREKMIME_TEST(ProgressHUDLayoutTest)
#include "ProgressHUDLayoutTest.moc"

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
        QTest::addColumn<QSizeF>("indicator");
        QTest::addColumn<QString>("label");
        QTest::addColumn<float>("margin");
        QTest::addColumn<bool>("square");
        QTest::addColumn<QSizeF>("minSize");
        QTest::addColumn<QSizeF>("box");
        const QFontMetricsF metrics(baseInput().labelFont);
        const QString loading = QStringLiteral("Loading");
        QTest::newRow("square") << QSizeF(50, 30) << QString() << 20.0f << true << QSizeF()
                                << QSizeF(90, 90);
        QTest::newRow("at least the minimum size") << QSizeF(37, 37) << QString() << 20.0f << false
                                                   << QSizeF(150, 100) << QSizeF(150, 100);
        // the label sits 4 points under the indicator
        QTest::newRow("spinner and label")
            << QSizeF(37, 37) << loading << 20.0f << false << QSizeF()
            << QSizeF(qMax(37.0, metrics.horizontalAdvance(loading)) + 40,
                      37 + 4 + metrics.height() + 40);
    }
    void boxAroundContent()
    {
        QFETCH(QSizeF, indicator);
        QFETCH(QString, label);
        QFETCH(float, margin);
        QFETCH(bool, square);
        QFETCH(QSizeF, minSize);
        QFETCH(QSizeF, box);
        ProgressHUDLayout::Input in = baseInput();
        in.indicator = indicator;
        in.labelText = label;
        in.margin = margin;
        in.square = square;
        in.minSize = minSize;
        const ProgressHUDLayout out = ProgressHUDLayout::compute(in);
        QCOMPARE(out.box.size(), box);
        // centred on the overlay's centre, on whole points
        QVERIFY(qAbs(out.box.center().x() - 160) <= 0.5);
        QVERIFY(qAbs(out.box.center().y() - 240) <= 0.5);
        QCOMPARE(out.box.x(), std::round(out.box.x()));
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

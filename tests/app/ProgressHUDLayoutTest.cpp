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
        QTest::addColumn<bool>("expectLabel");
        QTest::newRow("spinner alone")
            << QSizeF(37, 37) << QString() << 20.0f << false << QSizeF() << false;
        QTest::newRow("spinner and label")
            << QSizeF(37, 37) << QStringLiteral("Loading") << 20.0f << false << QSizeF() << true;
        QTest::newRow("text only") << QSizeF() << QStringLiteral("Trekmime is working") << 10.0f
                                   << false << QSizeF() << true;
        QTest::newRow("square") << QSizeF(37, 37) << QStringLiteral("A much longer label") << 20.0f
                                << true << QSizeF() << true;
        QTest::newRow("at least the minimum size")
            << QSizeF(37, 37) << QString() << 20.0f << false << QSizeF(150, 100) << false;
    }
    void boxAroundContent()
    {
        QFETCH(QSizeF, indicator);
        QFETCH(QString, label);
        QFETCH(float, margin);
        QFETCH(bool, square);
        QFETCH(QSizeF, minSize);
        QFETCH(bool, expectLabel);
        ProgressHUDLayout::Input in = baseInput();
        in.indicator = indicator;
        in.labelText = label;
        in.margin = margin;
        in.square = square;
        in.minSize = minSize;
        const ProgressHUDLayout out = ProgressHUDLayout::compute(in);

        const QFontMetricsF metrics(in.labelFont);
        const QSizeF labelSize =
            expectLabel ? QSizeF(metrics.horizontalAdvance(label), metrics.height()) : QSizeF(0, 0);
        const bool both = !indicator.isEmpty() && expectLabel;
        const QSizeF shown = indicator.isEmpty() ? QSizeF(0, 0) : indicator;
        QSizeF box(qMax(shown.width(), labelSize.width()) + 2 * margin,
                   shown.height() + labelSize.height() + (both ? 4 : 0) + 2 * margin);
        if (square)
            box = QSizeF(qMax(box.width(), box.height()), qMax(box.width(), box.height()));
        box = box.expandedTo(minSize);
        QCOMPARE(out.box.size(), box);
        // centred on the overlay's centre, on whole points
        QVERIFY(qAbs(out.box.center().x() - 160) <= 0.5);
        QVERIFY(qAbs(out.box.center().y() - 240) <= 0.5);
        QCOMPARE(out.box.x(), std::round(out.box.x()));
        QCOMPARE(out.labelText, label);
        if (both) {
            QCOMPARE(out.label.top(), out.indicator.bottom() + 4);
            QVERIFY(out.indicator.top() >= out.box.top() + margin);
        }
    }

    void offsetsMoveTheBoxRounded()
    {
        ProgressHUDLayout::Input in = baseInput();
        in.indicator = QSizeF(37, 37);
        const ProgressHUDLayout centred = ProgressHUDLayout::compute(in);
        in.xOffset = 10.4f;
        in.yOffset = -50.6f;
        const ProgressHUDLayout moved = ProgressHUDLayout::compute(in);
        QCOMPARE(moved.box.topLeft(), centred.box.topLeft() + QPointF(10, -51));
        QCOMPARE(moved.indicator.topLeft(), centred.indicator.topLeft() + QPointF(10, -51));
    }

    void longLabelIsCutToOneLine()
    {
        ProgressHUDLayout::Input in = baseInput();
        in.labelText = QString(200, u'W');
        const ProgressHUDLayout out = ProgressHUDLayout::compute(in);
        const qreal maxWidth = 320 - 4 * 20;
        QVERIFY(out.labelText.endsWith(QChar(0x2026)));
        QVERIFY(QFontMetricsF(in.labelFont).horizontalAdvance(out.labelText) <= maxWidth);
        QCOMPARE(out.label.width(), maxWidth);
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

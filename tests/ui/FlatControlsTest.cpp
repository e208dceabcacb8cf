#include "SendMouse.h"
#include "TestMain.h"

#include "ui/FlatButton.h"
#include "ui/FlatImages.h"
#include "ui/FlatSwitch.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTest>

// The flat controls: stretchable images, the button's pressed face and the
// switch (an 80 by 30 switch scrolls its strip over 50 points).
class FlatControlsTest : public QObject
{
    Q_OBJECT

private slots:
    void onlyTheMiddleStretches()
    {
        QImage image(QSize(100, 40), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        FlatImages::imageWithColor(Qt::red, 8, 1).draw(&painter, QRectF(0, 0, 100, 40));
        painter.end();
        // the corners stay arcs of radius 8: a corner scaled up would be clear further in
        QCOMPARE(qAlpha(image.pixel(99, 39)), 0);
        QCOMPARE(qAlpha(image.pixel(1, 1)), 0);
        QCOMPARE(qAlpha(image.pixel(4, 4)), 255);
        QCOMPARE(qAlpha(image.pixel(50, 0)), 255);
    }

    void pressedButtonShowsItsShadowSide()
    {
        FlatButton button(QRect(0, 0, 120, 44));
        button.setButtonColor(QColor(10, 200, 10));
        button.setShadowColor(QColor(200, 10, 10));
        button.setShadowHeight(3);
        QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(60, 22));
        QCOMPARE(button.titleEdgeInsets(), EdgeInsets{});
        QCOMPARE(button.grab().toImage().pixel(60, 5), qRgb(200, 10, 10));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(60, 22));
        QCOMPARE(button.titleEdgeInsets(), (EdgeInsets{-3, 0, 0, 0}));
        QCOMPARE(button.grab().toImage().pixel(60, 5), qRgb(10, 200, 10));
    }

    void geometry_data()
    {
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<double>("knob");
        QTest::addColumn<double>("inset");
        // 31 x 0.75 = 23.25: the knob is floored, the inset takes the rest
        QTest::newRow("51 by 31") << QSizeF(51, 31) << 23.0 << 4.0;
        QTest::newRow("odd inset") << QSizeF(60, 33) << 24.0 << 4.5;
        QTest::newRow("square: nothing to scroll") << QSizeF(30, 30) << 22.0 << 4.0;
    }
    void geometry()
    {
        QFETCH(QSizeF, size);
        QFETCH(double, knob);
        QFETCH(double, inset);
        const FlatSwitch::Geometry g = FlatSwitch::geometryFor(size);
        QCOMPARE(g.scrollRange, size.width() - size.height());
        QCOMPARE(g.knob, QRectF(size.width() - size.height() + inset, inset, knob, knob));
        // the off label ends where the strip ends, a whole range to the right
        QCOMPARE(g.offLabel.right(), g.contentWidth);
        QCOMPARE(g.contentWidth, size.width() + g.scrollRange);
    }

    void offStaysOffWhenResized()
    {
        FlatSwitch control(QRect(0, 0, 80, 30));
        control.show();
        control.setOn(false);
        QCOMPARE(control.thumbView()->mapTo(&control, QPoint(0, 0)), QPoint(4, 4));
        control.resize(100, 40);
        QVERIFY(!control.isOn());
        QCOMPARE(control.contentOffset(), 60.0);
        QCOMPARE(control.thumbView()->mapTo(&control, QPoint(0, 0)), QPoint(5, 5));
    }

    void setOnSendsOnlyWhenAsked_data()
    {
        QTest::addColumn<bool>("start");
        QTest::addColumn<double>("shown");
        QTest::addColumn<bool>("target");
        QTest::addColumn<bool>("sendEvent");
        QTest::addColumn<int>("events");
        QTest::newRow("change, no event asked") << true << 1.0 << false << false << 0;
        QTest::newRow("change, event asked") << true << 1.0 << false << true << 1;
        QTest::newRow("same value, event asked") << true << 1.0 << true << true << 0;
        QTest::newRow("turn on, event asked") << false << 0.0 << true << true << 1;
        // the display follows the value even when the value stays
        QTest::newRow("same value, display moved away") << true << 0.3 << true << true << 0;
    }
    void setOnSendsOnlyWhenAsked()
    {
        QFETCH(bool, start);
        QFETCH(double, shown);
        QFETCH(bool, target);
        QFETCH(bool, sendEvent);
        QFETCH(int, events);
        FlatSwitch control(QRect(0, 0, 80, 30));
        control.setOn(start);
        control.setPercentOn(shown);
        QSignalSpy spy(&control, &FlatSwitch::valueChanged);
        control.setOn(target, false, sendEvent);
        QCOMPARE(spy.count(), events);
        QCOMPARE(control.isOn(), target);
        QCOMPARE(control.percentOn(), target ? 1.0 : 0.0);
        QCOMPARE(control.contentOffset(), target ? 0.0 : 50.0);
    }

    void touchSettlesOnTheNearerEnd_data()
    {
        QTest::addColumn<bool>("start");
        QTest::addColumn<double>("from");
        QTest::addColumn<double>("dx");
        QTest::addColumn<bool>("expected");
        // a tap flips the switch wherever it lands; dragging left turns off
        QTest::newRow("tap turns off") << true << 40.0 << 0.0 << false;
        QTest::newRow("tap turns on") << false << 10.0 << 0.0 << true;
        QTest::newRow("past half turns off") << true << 60.0 << -26.0 << false;
        QTest::newRow("exactly half keeps on") << true << 60.0 << -25.0 << true;
        QTest::newRow("far past the end is clamped") << true << 60.0 << -200.0 << false;
        QTest::newRow("the wrong way stays on") << true << 60.0 << 40.0 << true;
        QTest::newRow("from off, exactly half turns on") << false << 20.0 << 25.0 << true;
        QTest::newRow("from off, short of half stays off") << false << 20.0 << 24.0 << false;
    }
    void touchSettlesOnTheNearerEnd()
    {
        QFETCH(bool, start);
        QFETCH(double, from);
        QFETCH(double, dx);
        QFETCH(bool, expected);
        FlatSwitch control(QRect(0, 0, 80, 30));
        control.setScrollDuration(60);
        control.setOn(start);
        QSignalSpy spy(&control, &FlatSwitch::valueChanged);
        sendMouse(&control, QEvent::MouseButtonPress, QPointF(from, 15));
        QVERIFY(control.isHighlighted());
        for (int i = 1; dx != 0 && i <= 5; ++i)
            sendMouse(&control, QEvent::MouseMove, QPointF(from + dx * i / 5, 15));
        // the strip follows the finger within its range, and nothing is sent yet
        QCOMPARE(control.contentOffset(), qBound(0.0, (start ? 0.0 : 50.0) - dx, 50.0));
        QCOMPARE(spy.count(), 0);
        sendMouse(&control, QEvent::MouseButtonRelease, QPointF(from + dx, 15));
        QVERIFY(!control.isHighlighted());
        QCOMPARE(control.isOn(), expected);
        QCOMPARE(spy.count(), start != expected ? 1 : 0);
        if (start != expected)
            QCOMPARE(spy.first().first().toBool(), expected);
        // the value is there at once; the knob slides after it
        QCOMPARE(control.percentOn(), expected ? 1.0 : 0.0);
        QTRY_COMPARE_WITH_TIMEOUT(control.contentOffset(), expected ? 0.0 : 50.0, 500);
    }
};

TREKMIME_TEST(FlatControlsTest)
#include "FlatControlsTest.moc"

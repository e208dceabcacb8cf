#include "SendMouse.h"
#include "TestMain.h"

#include "ui/FlatSwitch.h"

#include <QSignalSpy>

#include <functional>

using Act = std::function<void(FlatSwitch &)>;
Q_DECLARE_METATYPE(Act)

// The flat controls (an 80 by 30 switch scrolls its strip over 50 points).
class FlatControlsTest : public QObject
{
    Q_OBJECT

private slots:
    void geometryAndResizing_data()
    {
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<double>("knob");
        QTest::addColumn<double>("inset");
        // 31 x 0.75 = 23.25: the knob is floored, the inset takes the rest
        QTest::newRow("51 by 31") << QSizeF(51, 31) << 23.0 << 4.0;
        QTest::newRow("odd inset") << QSizeF(60, 33) << 24.0 << 4.5;
    }
    void geometryAndResizing()
    {
        QFETCH(QSizeF, size);
        QFETCH(double, knob);
        QFETCH(double, inset);
        const FlatSwitch::Geometry g = FlatSwitch::geometryFor(size);
        QCOMPARE(g.knob, QRectF(size.width() - size.height() + inset, inset, knob, knob));
        QCOMPARE(g.offLabel.right(), 2 * size.width() - size.height());
        // a switch turned off stays off when resized, its knob moved to the new inset
        FlatSwitch control(QRect(0, 0, 80, 30));
        control.show();
        control.setOn(false);
        control.resize(size.toSize());
        QVERIFY(!control.isOn());
        QCOMPARE(control.contentOffset(), g.scrollRange);
        const QPoint knobAt = control.thumbView()->mapTo(&control, QPoint(0, 0));
        QVERIFY(qAbs(knobAt.x() - inset) < 1 && qAbs(knobAt.y() - inset) < 1);
    }

    void settlesOnTheAskedEnd_data()
    {
        QTest::addColumn<bool>("start");
        QTest::addColumn<Act>("act");
        QTest::addColumn<bool>("expected");
        QTest::addColumn<bool>("sent");
        const auto set = [](double shown, bool on, bool send) {
            return Act([=](FlatSwitch &c) {
                c.setPercentOn(shown);
                c.setOn(on, false, send);
            });
        };
        const auto touch = [](double from, double dx) {
            return Act([=](FlatSwitch &c) { drag(c, from, dx); });
        };
        QTest::newRow("set, no event asked") << true << set(1, false, false) << false << false;
        QTest::newRow("set on, event asked") << false << set(0, true, true) << true << true;
        // the display follows the value even when the value stays
        QTest::newRow("same value, display moved") << true << set(0.3, true, true) << true << false;
        // a tap flips the switch wherever it lands; dragging left turns off
        QTest::newRow("tap turns off") << true << touch(40, 0) << false << true;
        QTest::newRow("past half turns off") << true << touch(60, -26) << false << true;
        QTest::newRow("exactly half keeps on") << true << touch(60, -25) << true << false;
        QTest::newRow("the wrong way stays on") << true << touch(60, 40) << true << false;
        QTest::newRow("from off, exactly half turns on") << false << touch(20, 25) << true << true;
    }
    void settlesOnTheAskedEnd()
    {
        QFETCH(bool, start);
        QFETCH(Act, act);
        QFETCH(bool, expected);
        QFETCH(bool, sent);
        FlatSwitch control(QRect(0, 0, 80, 30));
        control.setScrollDuration(60);
        control.setOn(start);
        QSignalSpy spy(&control, &FlatSwitch::valueChanged);
        act(control);
        QCOMPARE(control.isOn(), expected);
        QCOMPARE(spy.count(), int(sent));
        if (sent)
            QCOMPARE(spy.first().first().toBool(), expected);
        QCOMPARE(control.percentOn(), expected ? 1.0 : 0.0);
        QTRY_COMPARE_WITH_TIMEOUT(control.contentOffset(), expected ? 0.0 : 50.0, 500);
    }

private:
    // a touch at x = `from`, moved by `dx` before it is lifted
    static void drag(FlatSwitch &control, double from, double dx)
    {
        const double offset = control.contentOffset();
        QSignalSpy spy(&control, &FlatSwitch::valueChanged);
        sendMouse(&control, QEvent::MouseButtonPress, QPointF(from, 15));
        QVERIFY(control.isHighlighted());
        for (int i = 1; dx != 0 && i <= 5; ++i)
            sendMouse(&control, QEvent::MouseMove, QPointF(from + dx * i / 5, 15));
        QCOMPARE(control.contentOffset(), qBound(0.0, offset - dx, 50.0));
        QVERIFY(spy.isEmpty());
        sendMouse(&control, QEvent::MouseButtonRelease, QPointF(from + dx, 15));
        QVERIFY(!control.isHighlighted());
    }
};

TREKMIME_TEST(FlatControlsTest)
#include "FlatControlsTest.moc"

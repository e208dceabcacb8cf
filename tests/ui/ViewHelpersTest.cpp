#include "SendMouse.h"
#include "TestMain.h"

#include "ui/FlatSwitch.h"
#include "ui/ViewHelpers.h"

#include <QSignalSpy>

#include <functional>
#include <memory>

using namespace ViewHelpers;

using FrameChange = std::function<void(QWidget *)>;
Q_DECLARE_METATYPE(FrameChange)
using Act = std::function<void(FlatSwitch &)>;
Q_DECLARE_METATYPE(Act)

class ViewHelpersTest : public QObject
{
    Q_OBJECT

    static QWidget *childOf(QWidget *parent, QSize size, QRect frame)
    {
        parent->resize(size);
        QWidget *child = viewWithFrame(frame);
        child->setParent(parent);
        parent->show();
        return child;
    }

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

private slots:
    void frames_data()
    {
        QTest::addColumn<FrameChange>("change");
        QTest::addColumn<QRect>("expected");
        using F = FrameChange;
        // a child at (10, 20, 100, 50) of a 320 by 480 parent that then grows
        // by 100 both ways; the flexible parts share the growth by their sizes
        QTest::newRow("setBottom and setRight move it by its size") << FrameChange([](QWidget *v) {
            setBottom(v, 100);
            setRight(v, 150);
        }) << QRect(50, 50, 100, 50);
        QTest::newRow("height then tail uses the new height") << FrameChange([](QWidget *v) {
            setHeight(v, 80);
            setTail(v, 200);
        }) << QRect(10, 120, 100, 80);
        QTest::newRow("origin and size") << FrameChange([](QWidget *v) {
            setOrigin(v, QPoint(5, 6));
            setSize(v, QSize(30, 40));
        }) << QRect(5, 6, 30, 40);
        QTest::newRow("x, y and width") << FrameChange([](QWidget *v) {
            setX(v, 7);
            setY(v, 8);
            setWidth(v, 9);
        }) << QRect(7, 8, 9, 50);
        QTest::newRow("full") << F(frameSetInSuperViewForFull) << QRect(13, 24, 131, 61);
        QTest::newRow("left top") << F(frameSetInSuperViewForLeftTop) << QRect(110, 20, 100, 50);
        QTest::newRow("bottom") << F(frameSetInSuperViewForBottom) << QRect(10, 20, 100, 50);
        QTest::newRow("left bottom height right")
            << F(frameSetInSuperViewForLeftBottmHeightRight) << QRect(15, 20, 100, 61);
        QTest::newRow("right bottom height top")
            << F(frameSetInSuperViewForRightBottmHeightTop) << QRect(10, 24, 100, 61);
    }
    void frames()
    {
        QFETCH(FrameChange, change);
        QFETCH(QRect, expected);
        QWidget parent;
        QWidget *child = childOf(&parent, QSize(320, 480), QRect(10, 20, 100, 50));
        change(child);
        parent.resize(420, 580);
        QCOMPARE(child->geometry(), expected);
        QCOMPARE(QPoint(right(child), tail(child)), expected.bottomRight() + QPoint(1, 1));
        QCOMPARE(QRect(origin(child), size(child)), expected);
        QCOMPARE(QRect(x(child), y(child), width(child), height(child)), expected);
    }

    // a filled view reads back its colour, a clear one transparent; a wide
    // circle takes its radius from the width only
    void madeViewsKeepTheirFrameColourAndRadius()
    {
        const QRect frame(1, 2, 100, 40);
        const std::unique_ptr<QWidget> clear(clearViewWithFrame(frame));
        const std::unique_ptr<QWidget> filled(viewWithColor(Qt::red, frame));
        QVERIFY(clear->geometry() == frame && filled->geometry() == frame);
        QCOMPARE(color(clear.get()), QColor(Qt::transparent));
        QCOMPARE(color(filled.get()), QColor(Qt::red));
        circleWithWhiteBorder(filled.get());
        QCOMPARE(cornerRadius(filled.get()), 50.0);
    }

    void resizingFollowsANewParent()
    {
        QWidget first, second;
        second.resize(100, 100);
        QWidget *child = childOf(&first, QSize(100, 100), QRect(0, 0, 100, 100));
        frameSetInSuperViewForFull(child);
        child->setParent(&second);
        second.resize(200, 150);
        // a hidden parent tells its new size when it is shown
        second.show();
        QCOMPARE(child->geometry(), QRect(0, 0, 200, 150));
    }

    void fadesEndOpaque_data()
    {
        QTest::addColumn<bool>("show");
        QTest::newRow("show starts transparent") << true;
        QTest::newRow("hide leaves an opaque hidden view") << false;
    }
    void fadesEndOpaque()
    {
        QFETCH(bool, show);
        QWidget parent;
        QWidget *child = childOf(&parent, QSize(10, 10), QRect(0, 0, 10, 10));
        child->setVisible(!show);
        int completions = 0;
        (show ? fadeShowAnimationDuration : fadeHideAnimationDuration)(child, 0.05,
                                                                       [&] { ++completions; });
        QVERIFY(!child->isHidden());
        QCOMPARE(alpha(child), show ? 0.0 : 1.0);
        QTRY_COMPARE_WITH_TIMEOUT(completions, 1, 500);
        QCOMPARE(child->isHidden(), !show);
        QCOMPARE(alpha(child), 1.0);
    }

    void gesturesReportToTheirTarget()
    {
        QWidget target;
        QWidget *v = childOf(&target, QSize(200, 100), QRect(0, 0, 200, 100));
        int taps = 0, swipes = 0;
        QList<GestureRecognizer::State> pans;
        addTapGestureWithTarget(v, &target, [&](TapGestureRecognizer *) { ++taps; });
        addSwipeGestureWithTarget(v, &target, [&](SwipeGestureRecognizer *) { ++swipes; });
        addPanGestureWithTarget(v, &target,
                                [&](PanGestureRecognizer *pan) { pans.append(pan->state()); });
        // pressed at the first point, moved through the middle ones, let go at the last
        const auto stroke = [v](const QList<QPointF> &points) {
            sendMouse(v, QEvent::MouseButtonPress, points.first());
            for (const QPointF &point : points.mid(1, points.size() - 2))
                sendMouse(v, QEvent::MouseMove, point);
            sendMouse(v, QEvent::MouseButtonRelease, points.last());
        };
        stroke({{20, 50}, {22, 51}});
        stroke({{20, 50}, {60, 52}, {120, 55}, {120, 55}});
        stroke({{150, 50}, {40, 50}}); // to the left: not a right swipe
        QVERIFY(taps == 1 && swipes == 1);
        using G = GestureRecognizer;
        QCOMPARE(pans.mid(0, 3), (QList<G::State>{G::Began, G::Changed, G::Ended}));
    }

    // the flat switch (80 by 30) scrolls its strip over 50 points
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
};

TREKMIME_TEST(ViewHelpersTest)
#include "ViewHelpersTest.moc"

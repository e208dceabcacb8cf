#include "SendMouse.h"
#include "TestMain.h"

#include "ui/ViewHelpers.h"

#include <functional>
#include <memory>

using namespace ViewHelpers;

using FrameChange = std::function<void(QWidget *)>;
Q_DECLARE_METATYPE(FrameChange)

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
};

TREKMIME_TEST(ViewHelpersTest)
#include "ViewHelpersTest.moc"

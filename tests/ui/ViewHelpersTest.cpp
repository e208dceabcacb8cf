#include "SendMouse.h"
#include "TestMain.h"

#include "ui/ViewHelpers.h"

#include <QTest>

#include <functional>
#include <memory>

using namespace ViewHelpers;

using FrameChange = std::function<void(QWidget *)>;
Q_DECLARE_METATYPE(FrameChange)

class ViewHelpersTest : public QObject
{
    Q_OBJECT

private slots:
    void frameComponents_data()
    {
        QTest::addColumn<FrameChange>("change");
        QTest::addColumn<QRect>("expected");
        // every case starts from (10, 20, 40, 30)
        QTest::newRow("setBottom moves up by the height")
            << FrameChange([](QWidget *v) { setBottom(v, 100); }) << QRect(10, 70, 40, 30);
        QTest::newRow("setRight moves left by the width")
            << FrameChange([](QWidget *v) { setRight(v, 100); }) << QRect(60, 20, 40, 30);
        QTest::newRow("height then tail uses the new height") << FrameChange([](QWidget *v) {
            setHeight(v, 50);
            setTail(v, 100);
        }) << QRect(10, 50, 40, 50);
    }
    void frameComponents()
    {
        QFETCH(FrameChange, change);
        QFETCH(QRect, expected);
        QWidget parent;
        QWidget *child = viewWithFrame(QRect(10, 20, 40, 30));
        child->setParent(&parent);
        change(child);
        QCOMPARE(child->geometry(), expected);
        QCOMPARE(tail(child), expected.y() + expected.height());
        QCOMPARE(right(child), expected.x() + expected.width());
    }

    void resizingRules_data()
    {
        QTest::addColumn<FrameChange>("rule");
        QTest::addColumn<QRect>("expected");
        // a child at (10, 20, 100, 50) of a 320 by 480 parent that grows by 100
        // both ways; the flexible parts share the growth by their sizes
        QTest::newRow("full") << FrameChange(frameSetInSuperViewForFull) << QRect(13, 24, 131, 61);
        QTest::newRow("left top") << FrameChange(frameSetInSuperViewForLeftTop)
                                  << QRect(110, 20, 100, 50);
        QTest::newRow("bottom") << FrameChange(frameSetInSuperViewForBottom)
                                << QRect(10, 20, 100, 50);
        QTest::newRow("center") << FrameChange(frameSetInSuperViewForCenter)
                                << QRect(10, 20, 100, 50);
        QTest::newRow("left bottom height right")
            << FrameChange(frameSetInSuperViewForLeftBottmHeightRight) << QRect(15, 20, 100, 61);
        QTest::newRow("right bottom height top")
            << FrameChange(frameSetInSuperViewForRightBottmHeightTop) << QRect(10, 24, 100, 61);
    }
    void resizingRules()
    {
        QFETCH(FrameChange, rule);
        QFETCH(QRect, expected);
        QWidget parent;
        parent.resize(320, 480);
        QWidget *child = viewWithFrame(QRect(10, 20, 100, 50));
        child->setParent(&parent);
        rule(child);
        parent.show();
        parent.resize(420, 580);
        QCOMPARE(child->geometry(), expected);
    }

    void resizingFollowsANewParent()
    {
        QWidget first, second;
        first.resize(100, 100);
        second.resize(100, 100);
        QWidget *child = viewWithFrame(QRect(0, 0, 100, 100));
        child->setParent(&first);
        frameSetInSuperViewForFull(child);
        child->setParent(&second);
        second.resize(200, 150);
        // a hidden parent learns of its new size when it is shown
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
        QWidget *child = viewWithFrame(QRect(0, 0, 10, 10));
        child->setParent(&parent);
        child->setVisible(!show);
        parent.show();
        int completions = 0;
        if (show)
            fadeShowAnimationDuration(child, 0.05, [&] { ++completions; });
        else
            fadeHideAnimationDuration(child, 0.05, [&] { ++completions; });
        QVERIFY(!child->isHidden());
        QCOMPARE(alpha(child), show ? 0.0 : 1.0);
        QTRY_COMPARE_WITH_TIMEOUT(completions, 1, 500);
        QCOMPARE(child->isHidden(), !show);
        QCOMPARE(alpha(child), 1.0);
    }

    void circleUsesHalfTheWidth_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("radius");
        QTest::newRow("wide: the width only") << QSize(100, 40) << 50.0;
        QTest::newRow("tall") << QSize(20, 60) << 10.0;
    }
    void circleUsesHalfTheWidth()
    {
        QFETCH(QSize, size);
        QFETCH(qreal, radius);
        QWidget parent;
        parent.resize(size);
        setColor(&parent, Qt::black);
        QWidget *round = viewWithColor(Qt::red, QRect(QPoint(0, 0), size));
        round->setParent(&parent);
        circle(round);
        QCOMPARE(cornerRadius(round), radius);
        circleWithWhiteBorder(round);
        // what is drawn is clipped to the round shape, inside a white rim
        const QImage image = parent.grab().toImage();
        QCOMPARE(image.pixel(1, 1), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(size.width() / 2, size.height() / 2), qRgb(255, 0, 0));
        const QRgb rim = image.pixel(size.width() / 2, 1);
        QVERIFY2(qRed(rim) == 255 && qGreen(rim) > 240 && qBlue(rim) > 240,
                 qPrintable(QString::number(rim, 16)));
    }

    void gesturesReportToTheirTarget()
    {
        QWidget target;
        QWidget *v = viewWithFrame(QRect(0, 0, 200, 100));
        v->setParent(&target);
        int taps = 0, swipes = 0;
        QList<GestureRecognizer::State> pans;
        addTapGestureWithTarget(v, &target, [&](TapGestureRecognizer *) { ++taps; });
        addSwipeGestureWithTarget(v, &target, [&](SwipeGestureRecognizer *) { ++swipes; });
        addPanGestureWithTarget(v, &target,
                                [&](PanGestureRecognizer *pan) { pans.append(pan->state()); });
        sendMouse(v, QEvent::MouseButtonPress, {20, 50});
        sendMouse(v, QEvent::MouseButtonRelease, {22, 51});
        QCOMPARE(taps, 1);
        QCOMPARE(swipes, 0);
        QVERIFY(pans.isEmpty());

        sendMouse(v, QEvent::MouseButtonPress, {20, 50});
        sendMouse(v, QEvent::MouseMove, {60, 52});
        sendMouse(v, QEvent::MouseMove, {120, 55});
        sendMouse(v, QEvent::MouseButtonRelease, {120, 55});
        QCOMPARE(taps, 1);
        QCOMPARE(swipes, 1);
        QCOMPARE(pans, (QList<GestureRecognizer::State>{GestureRecognizer::Began,
                                                        GestureRecognizer::Changed,
                                                        GestureRecognizer::Ended}));
        // a stroke to the left is not a right swipe
        sendMouse(v, QEvent::MouseButtonPress, {150, 50});
        sendMouse(v, QEvent::MouseButtonRelease, {40, 50});
        QCOMPARE(swipes, 1);
    }
};

TREKMIME_TEST(ViewHelpersTest)
#include "ViewHelpersTest.moc"

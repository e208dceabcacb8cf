#include "TestMain.h"

#include "app/ModalPresentation.h"

#include <QPointer>
#include <QTest>

class ModalPresentationTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_window = new QWidget;
        m_window->resize(390, 844);
        m_presenter = new QWidget(m_window);
        m_presenter->setGeometry(0, 0, 390, 844);
        m_window->show();
    }
    void cleanup()
    {
        delete m_window;
        setModalAnimationsEnabled(true);
    }

    void presentsCoversAndDismissesOnce_data()
    {
        QTest::addColumn<int>("transition");
        QTest::addColumn<bool>("animated");
        for (bool animated : {false, true}) {
            const char *how = animated ? "animated" : "at once";
            QTest::addRow("cover, %s", how) << int(ModalTransition::CoverVertical) << animated;
            QTest::addRow("flip, %s", how) << int(ModalTransition::FlipHorizontal) << animated;
            QTest::addRow("dissolve, %s", how) << int(ModalTransition::CrossDissolve) << animated;
        }
    }
    void presentsCoversAndDismissesOnce()
    {
        QFETCH(int, transition);
        QFETCH(bool, animated);
        setModalAnimationsEnabled(animated);
        QPointer<QWidget> screen = new QWidget;
        int presented = 0;
        presentViewController(m_presenter, screen, ModalTransition(transition),
                              [&] { ++presented; });
        QCOMPARE(presentedViewController(m_presenter), screen.data());
        QCOMPARE(screen->parentWidget(), m_window);
        QTRY_COMPARE_WITH_TIMEOUT(presented, 1, 2000);
        QCOMPARE(screen->geometry(), m_window->rect());
        m_window->resize(400, 700); // the screen keeps covering the window
        QCOMPARE(screen->geometry(), m_window->rect());

        int dismissed = 0;
        dismissViewController(screen, [&] { ++dismissed; });
        dismissViewController(screen, [&] { ++dismissed; });
        // gone from the presenter's view at once, deleted after its exit
        QVERIFY(!presentedViewController(m_presenter));
        QTRY_VERIFY_WITH_TIMEOUT(screen.isNull(), 2000);
        QCOMPARE(dismissed, 1);
        QCOMPARE(presented, 1);
    }

    void aScreenGoneMidwayCallsNothing()
    {
        QPointer<QWidget> screen = new QWidget;
        bool called = false;
        presentViewController(m_presenter, screen, ModalTransition::CoverVertical,
                              [&] { called = true; });
        delete screen;
        QTest::qWait(400);
        QVERIFY(!called);
        QVERIFY(!presentedViewController(m_presenter));
    }

private:
    QWidget *m_window = nullptr;
    QWidget *m_presenter = nullptr;
};

TREKMIME_TEST(ModalPresentationTest)
#include "ModalPresentationTest.moc"

#include "TestMain.h"

#include "app/BaseViewController.h"
#include "app/ModalPresentation.h"
#include "app/ProgressHUD.h"
#include "fakes/ManualClock.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>

class BaseViewControllerTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_window = new QWidget;
        m_window->resize(390, 844);
        m_screen = new BaseViewController(m_window);
        m_screen->setClock(&m_clock);
        m_screen->setGeometry(0, 60, 390, 700);
        m_window->show();
        m_screen->loadViewIfNeeded();
    }
    void cleanup()
    {
        delete m_window;
        setModalAnimationsEnabled(true);
    }

    void showsTheOneOverlay_data()
    {
        QTest::addColumn<bool>("onWindow");
        QTest::addColumn<QString>("text");
        QTest::addColumn<float>("offset");
        QTest::newRow("screen, text and offset") << false << u"Saving"_s << 10.0f;
        QTest::newRow("window, neither") << true << QString() << 0.0f;
    }
    void showsTheOneOverlay()
    {
        QFETCH(bool, onWindow);
        QFETCH(QString, text);
        QFETCH(float, offset);
        const auto show = [&](bool overWindow, const QString &label, float y) {
            overWindow ? m_screen->showHUDViewOnWindowWithText(label, y)
                       : m_screen->showHUDViewWithText(label, y);
        };
        // the one overlay moves from the other host, on top of what this one has gained
        show(!onWindow, u"earlier text"_s, 99.0f);
        QWidget *host = onWindow ? static_cast<QWidget *>(m_window) : m_screen;
        (new QWidget(host))->show();
        show(onWindow, text, offset);
        ProgressHUD *hud = m_screen->HUD();
        host->resize(300, 400); // covering its host, whatever the host's size
        QCOMPARE(hud->geometry(), host->rect());
        QCOMPARE(host->children().last(), hud);
        QVERIFY(ProgressHUD::allHUDsForView(onWindow ? m_screen : m_window).isEmpty());
        QCOMPARE(std::pair(hud->labelText(), hud->yOffset()), std::pair(text, offset));
        QCOMPARE(hud->findChild<QLabel *>(u"label"_s)->isHidden(), text.isEmpty());
    }

    void hintsVanishOnTheirOwnAndTheOverlayStays()
    {
        m_screen->setHintHideDelay(0.1);
        m_screen->showHUDView();
        QPointer<ProgressHUD> first = m_screen->showHUDHintText(u"Trekmime is working"_s);
        m_clock.advance(300);
        QPointer<ProgressHUD> second = m_screen->showHUDHintText(QString(), -30.0f);
        // each fades 0.1 s after its own start, and is gone after the fade
        QTRY_VERIFY_WITH_TIMEOUT(first.isNull(), 1000);
        QTRY_COMPARE_WITH_TIMEOUT(second->alpha(), 1.0, 1000);
        m_clock.advance(99);
        QCOMPARE(second->alpha(), 1.0);
        m_clock.advance(1);
        QTRY_VERIFY_WITH_TIMEOUT(second.isNull(), 1000);
        ProgressHUD *hud = m_screen->HUD();
        QCOMPARE(hud->alpha(), 1.0);
        m_screen->hideHUDView();
        QTRY_VERIFY_WITH_TIMEOUT(hud->isFinished(), 600); // no minimum show time: the fade alone
        QCOMPARE(ProgressHUD::allHUDsForView(m_screen), QList<ProgressHUD *>{hud});
    }

    void presentsCoversAndDismissesOnce_data()
    {
        QTest::addColumn<int>("transition");
        QTest::addColumn<bool>("animated");
        QTest::newRow("cover at once") << int(ModalTransition::CoverVertical) << false;
        QTest::newRow("flip") << int(ModalTransition::FlipHorizontal) << true;
        QTest::newRow("dissolve") << int(ModalTransition::CrossDissolve) << true;
    }
    void presentsCoversAndDismissesOnce()
    {
        QFETCH(int, transition);
        QFETCH(bool, animated);
        setModalAnimationsEnabled(animated);
        auto *opener = new QPushButton(m_screen);
        opener->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
        opener->setFocus();
        QPointer<QWidget> screen = new QWidget;
        new QLabel(screen); // not a control: the keyboard goes past it
        auto *first = new QPushButton(screen);
        int presented = 0, dismissed = 0;
        presentViewController(m_screen, screen, ModalTransition(transition), [&] { ++presented; });
        QCOMPARE(presentedViewController(m_screen), screen.data());
        QTRY_COMPARE_WITH_TIMEOUT(presented, 1, 2000);
        QCOMPARE(QApplication::focusWidget(), first);
        QVERIFY(m_screen->isHidden()); // no Tab nor screen reader reaches it
        m_window->resize(400, 700);    // the screen keeps covering the window
        QCOMPARE(screen->geometry(), m_window->rect());
        for (int i = 0; i < 2; ++i)
            dismissViewController(screen, [&] { ++dismissed; });
        QVERIFY(!presentedViewController(m_screen)); // gone at once, deleted after its exit
        QTRY_VERIFY_WITH_TIMEOUT(screen.isNull(), 2000);
        QCOMPARE(dismissed + presented, 2);
        // the screen under it is back, with the keyboard where it was
        QVERIFY(m_screen->isVisible());
        QCOMPARE(QApplication::focusWidget(), opener);
    }

    void aScreenGoneMidwayCallsNothing()
    {
        bool called = false;
        QWidget *screen = new QWidget;
        presentViewController(m_screen, screen, ModalTransition::CoverVertical,
                              [&] { called = true; });
        delete screen;
        QTest::qWait(400);
        QVERIFY(!called && !presentedViewController(m_screen));
    }

private:
    ManualClock m_clock;
    QWidget *m_window = nullptr;
    BaseViewController *m_screen = nullptr;
};

TREKMIME_TEST(BaseViewControllerTest)
#include "BaseViewControllerTest.moc"

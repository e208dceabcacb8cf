#include "TestMain.h"

#include "app/BaseViewController.h"
#include "app/ModalPresentation.h"
#include "app/ProgressHUD.h"
#include "fakes/ManualClock.h"

#include <QLabel>
#include <QPointer>
#include <QTest>

// A screen in a window: its overlays and hints, and the screens it presents.
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
        QTest::newRow("screen, text") << false << QStringLiteral("Planning the route") << 0.0f;
        QTest::newRow("window, both") << true << QStringLiteral("Saving") << 10.0f;
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
        // shown before over the other host with other settings: the one
        // overlay moves, on top of what the host has gained since
        show(!onWindow, QStringLiteral("earlier text"), 99.0f);
        QWidget *host = onWindow ? static_cast<QWidget *>(m_window) : m_screen;
        (new QWidget(host))->show();
        show(onWindow, text, offset);
        ProgressHUD *hud = m_screen->HUD();
        QCOMPARE(hud->geometry(), host->rect());
        QCOMPARE(host->children().last(), hud);
        QVERIFY(ProgressHUD::allHUDsForView(onWindow ? m_screen : m_window).isEmpty());
        QCOMPARE(hud->labelText(), text);
        QCOMPARE(hud->yOffset(), offset);
        QCOMPARE(hud->findChild<QLabel *>(QStringLiteral("label"))->isHidden(), text.isEmpty());
        QTRY_COMPARE_WITH_TIMEOUT(hud->alpha(), 1.0, 1000);
    }

    void overlayMadeOnLoadAndKeptAfterHiding()
    {
        BaseViewController screen;
        QVERIFY(!screen.HUD());
        screen.resize(200, 300);
        screen.loadViewIfNeeded();
        ProgressHUD *hud = screen.HUD();
        QCOMPARE(ProgressHUD::allHUDsForView(&screen), QList<ProgressHUD *>{hud});
        QCOMPARE(hud->alpha(), 0.0);
        screen.showHUDView();
        screen.hideHUDView();
        // no minimum show time: finished after the fade alone, and kept for the next show
        QTRY_VERIFY_WITH_TIMEOUT(hud->isFinished(), 600);
        QCOMPARE(hud->parentWidget(), &screen);
    }

    void hintsStackAndVanishOnTheirOwn()
    {
        m_screen->setHintHideDelay(0.1);
        m_screen->showHUDView();
        QPointer<ProgressHUD> first =
            m_screen->showHUDHintText(QStringLiteral("Trekmime is working"));
        m_clock.advance(300);
        QPointer<ProgressHUD> second = m_screen->showHUDHintText(QString(), -30.0f);
        QCOMPARE(ProgressHUD::allHUDsForView(m_screen).size(), 3);
        QCOMPARE(second->mode(), int(ProgressHUD::Text));
        QCOMPARE(second->yOffset(), -30.0f);
        QCOMPARE(second->boxSize(), QSizeF(20, 20)); // an empty hint is an empty box
        // each fades 0.1 s after its own start, and is gone after the fade
        QTRY_VERIFY_WITH_TIMEOUT(first.isNull(), 1000);
        QTRY_COMPARE_WITH_TIMEOUT(second->alpha(), 1.0, 1000);
        m_clock.advance(99);
        QCOMPARE(second->alpha(), 1.0);
        m_clock.advance(1);
        QTRY_VERIFY_WITH_TIMEOUT(second.isNull(), 1000);
        QCOMPARE(m_screen->HUD()->mode(), int(ProgressHUD::Indeterminate));
        QCOMPARE(m_screen->HUD()->alpha(), 1.0);
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
        int presented = 0, dismissed = 0;
        presentViewController(m_screen, screen, ModalTransition(transition), [&] { ++presented; });
        QCOMPARE(presentedViewController(m_screen), screen.data());
        QTRY_COMPARE_WITH_TIMEOUT(presented, 1, 2000);
        m_window->resize(400, 700); // the screen keeps covering the window
        QCOMPARE(screen->geometry(), m_window->rect());
        dismissViewController(screen, [&] { ++dismissed; });
        dismissViewController(screen, [&] { ++dismissed; });
        // gone from the presenter at once, deleted after its exit
        QVERIFY(!presentedViewController(m_screen));
        QTRY_VERIFY_WITH_TIMEOUT(screen.isNull(), 2000);
        QCOMPARE(dismissed, 1);
        QCOMPARE(presented, 1);
    }

    void aScreenGoneMidwayCallsNothing()
    {
        QPointer<QWidget> screen = new QWidget;
        bool called = false;
        presentViewController(m_screen, screen, ModalTransition::CoverVertical,
                              [&] { called = true; });
        delete screen;
        QTest::qWait(400);
        QVERIFY(!called);
        QVERIFY(!presentedViewController(m_screen));
    }

private:
    ManualClock m_clock;
    QWidget *m_window = nullptr;
    BaseViewController *m_screen = nullptr;
};

TREKMIME_TEST(BaseViewControllerTest)
#include "BaseViewControllerTest.moc"

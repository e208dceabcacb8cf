#include "TestMain.h"

#include "app/BaseViewController.h"
#include "app/ProgressHUD.h"

#include <QLabel>
#include <QPointer>
#include <QTest>

class BaseViewControllerTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_window = new QWidget;
        m_window->resize(390, 844);
        m_screen = new BaseViewController(m_window);
        m_screen->setGeometry(0, 60, 390, 700);
        m_window->show();
        m_screen->loadViewIfNeeded();
    }
    void cleanup() { delete m_window; }

    void overlayMadeWhenTheViewLoadsAndStaysInvisible()
    {
        BaseViewController screen;
        QVERIFY(!screen.HUD());
        screen.resize(200, 300);
        screen.loadViewIfNeeded();
        QCOMPARE(ProgressHUD::allHUDsForView(&screen), QList<ProgressHUD *>{screen.HUD()});
        QCOMPARE(screen.HUD()->geometry(), screen.rect());
        QCOMPARE(screen.HUD()->alpha(), 0.0);
    }

    void showingTwiceMovesTheOneOverlay()
    {
        auto *button = new QWidget(m_screen);
        button->show();
        m_screen->showHUDView();
        m_screen->showHUDView();
        QCOMPARE(ProgressHUD::allHUDsForView(m_screen), QList<ProgressHUD *>{m_screen->HUD()});
        // on top of everything the screen holds
        QCOMPARE(m_screen->children().last(), m_screen->HUD());
        QCOMPARE(m_screen->HUD()->mode(), int(ProgressHUD::Indeterminate));
        QTRY_COMPARE_WITH_TIMEOUT(m_screen->HUD()->alpha(), 1.0, 1000);
    }

    void textAndOffset_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<float>("offset");
        QTest::newRow("text") << QStringLiteral("Planning the route") << 0.0f;
        QTest::newRow("offset only") << QString() << -40.0f;
        QTest::newRow("both") << QStringLiteral("Locating") << 25.0f;
    }
    void textAndOffset()
    {
        QFETCH(QString, text);
        QFETCH(float, offset);
        m_screen->showHUDViewWithText(QStringLiteral("earlier text"), 99.0f);
        m_screen->showHUDViewWithText(text, offset);
        QCOMPARE(m_screen->HUD()->labelText(), text);
        QCOMPARE(m_screen->HUD()->yOffset(), offset);
        auto *label = m_screen->HUD()->findChild<QLabel *>(QStringLiteral("label"));
        QCOMPARE(label->isHidden(), text.isEmpty());
    }

    void windowVariantCoversTheWindow()
    {
        m_screen->showHUDViewOnWindowWithText(QStringLiteral("Saving"), 10.0f);
        ProgressHUD *hud = m_screen->HUD();
        QCOMPARE(hud->parentWidget(), m_window);
        QCOMPARE(hud->geometry(), m_window->rect());
        QCOMPARE(m_window->children().last(), hud);
        QVERIFY(ProgressHUD::allHUDsForView(m_screen).isEmpty());
        QCOMPARE(hud->yOffset(), 10.0f);
        // and back over the screen alone
        m_screen->showHUDViewYOffset(5.0f);
        QCOMPARE(hud->parentWidget(), m_screen);
        QCOMPARE(hud->geometry(), m_screen->rect());
        QVERIFY(hud->labelText().isEmpty());
        QVERIFY(ProgressHUD::allHUDsForView(m_window).isEmpty());
    }

    void hideRightAfterShowStartsAtOnce()
    {
        m_screen->showHUDView();
        m_screen->hideHUDView();
        // no minimum show time: finished after the fade alone
        QTRY_VERIFY_WITH_TIMEOUT(m_screen->HUD()->isFinished(), 600);
        QCOMPARE(m_screen->HUD()->alpha(), 0.0);
        QCOMPARE(m_screen->HUD()->parentWidget(), m_screen); // kept for the next show
    }

    void hintsStackAndVanishOnTheirOwn()
    {
        m_screen->setHintHideDelay(0.1);
        m_screen->showHUDView();
        QPointer<ProgressHUD> first =
            m_screen->showHUDHintText(QStringLiteral("Trekmime is working"));
        QTest::qWait(300);
        QPointer<ProgressHUD> second = m_screen->showHUDHintText(QString(), -30.0f);
        QCOMPARE(ProgressHUD::allHUDsForView(m_screen).size(), 3);
        for (ProgressHUD *hint : {first.data(), second.data()}) {
            QCOMPARE(hint->mode(), int(ProgressHUD::Text));
            QCOMPARE(hint->margin(), 10.0f);
            QVERIFY(hint->removeFromSuperViewOnHide());
            QVERIFY(hint != m_screen->HUD());
        }
        QCOMPARE(second->yOffset(), -30.0f);
        QCOMPARE(second->boxSize(), QSizeF(20, 20)); // an empty hint is an empty box
        // each goes 0.1 s after its own start plus the 0.3 s fade
        QTRY_VERIFY_WITH_TIMEOUT(first.isNull(), 600);
        QVERIFY(!second.isNull());
        QTRY_VERIFY_WITH_TIMEOUT(second.isNull(), 600);
        QCOMPARE(m_screen->HUD()->mode(), int(ProgressHUD::Indeterminate));
        QCOMPARE(m_screen->HUD()->alpha(), 1.0);
    }

private:
    QWidget *m_window = nullptr;
    BaseViewController *m_screen = nullptr;
};

TREKMIME_TEST(BaseViewControllerTest)
#include "BaseViewControllerTest.moc"

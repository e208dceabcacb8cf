#include "TestMain.h"

#include "app/ActivityIndicatorView.h"
#include "app/ProgressHUD.h"
#include "app/ProgressHUDDelegate.h"
#include "app/RoundProgressView.h"
#include "fakes/ManualClock.h"

#include <QLabel>
#include <QPointer>
#include <QTest>
#include <QThread>

#include <atomic>

namespace {

struct RecordingDelegate : ProgressHUDDelegate
{
    QList<ProgressHUD *> hidden;
    QList<bool> onGuiThread;
    void hudWasHidden(ProgressHUD *hud) override
    {
        hidden.append(hud);
        onGuiThread.append(QThread::currentThread() == qApp->thread());
    }
};

} // namespace

class ProgressHUDTest : public QObject
{
    Q_OBJECT

    // an overlay placed on the host, hidden, with a manual clock and a delegate
    ProgressHUD *addedHUD()
    {
        auto *hud = new ProgressHUD(m_host);
        hud->addTo(m_host);
        hud->setClock(&m_clock);
        hud->setDelegate(&m_delegate);
        return hud;
    }

private slots:
    void init()
    {
        m_host = new QWidget;
        m_host->resize(320, 480);
        m_host->show();
        m_delegate = RecordingDelegate();
    }
    void cleanup() { delete m_host; }

    void showsAfterTheGraceTimeOnlyForARunningTask_data()
    {
        QTest::addColumn<float>("graceTime");
        QTest::addColumn<bool>("task");
        QTest::addColumn<qreal>("alphaLater");
        QTest::newRow("no grace time: at once") << 0.0f << false << 1.0;
        QTest::newRow("no task: never visible") << 0.05f << false << 0.0;
        QTest::newRow("task still running: visible") << 0.05f << true << 1.0;
    }
    void showsAfterTheGraceTimeOnlyForARunningTask()
    {
        QFETCH(float, graceTime);
        QFETCH(bool, task);
        QFETCH(qreal, alphaLater);
        ProgressHUD *hud = addedHUD();
        // transparent, and letting touches through, until shown
        QCOMPARE(hud->geometry(), m_host->rect());
        QCOMPARE(hud->alpha(), 0.0);
        QVERIFY(hud->testAttribute(Qt::WA_TransparentForMouseEvents));
        hud->setGraceTime(graceTime);
        hud->setTaskInProgress(task);
        const QDateTime visibleFrom = m_clock.now().addMSecs(qRound(graceTime * 1000));
        hud->show(false);
        QCOMPARE(hud->alpha(), graceTime > 0 ? 0.0 : 1.0);
        m_clock.advance(49);
        QCOMPARE(hud->alpha(), graceTime > 0 ? 0.0 : 1.0);
        m_clock.advance(1);
        QCOMPARE(hud->alpha(), alphaLater);
        QCOMPARE(hud->testAttribute(Qt::WA_TransparentForMouseEvents), alphaLater == 0.0);
        QCOMPARE(hud->showStarted(), alphaLater > 0.0 ? visibleFrom : QDateTime());
    }

    void hideTiming_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<float>("minShowTime");
        QTest::addColumn<int>("shownForMs");
        QTest::addColumn<double>("delay");
        QTest::addColumn<int>("waitMs");
        QTest::newRow("no minimum: at once") << true << 0.0f << 0 << 0.0 << 0;
        QTest::newRow("never shown: finished all the same") << false << 0.6f << 0 << 0.0 << 0;
        // the remaining 100 ms, not the whole minimum
        QTest::newRow("minimum not yet over") << true << 0.6f << 500 << 0.0 << 100;
        // the minimum is a single-precision value, a hair above 0.6 s
        QTest::newRow("minimum over") << true << 0.6f << 601 << 0.0 << 0;
        QTest::newRow("asked to wait") << true << 0.0f << 0 << 0.05 << 50;
    }
    void hideTiming()
    {
        QFETCH(bool, shown);
        QFETCH(float, minShowTime);
        QFETCH(int, shownForMs);
        QFETCH(double, delay);
        QFETCH(int, waitMs);
        ProgressHUD *hud = addedHUD();
        hud->setMinShowTime(minShowTime);
        if (shown)
            hud->show(false);
        m_clock.advance(shownForMs);
        if (delay > 0)
            hud->hide(false, delay);
        else
            hud->hide(false);
        // without animation nothing is left of the overlay once it is told
        QCOMPARE(m_delegate.hidden.size(), waitMs == 0 ? 1 : 0);
        QCOMPARE(hud->alpha(), waitMs == 0 || !shown ? 0.0 : 1.0);
        if (waitMs > 0) {
            m_clock.advance(waitMs - 1);
            QVERIFY(m_delegate.hidden.isEmpty());
            m_clock.advance(1);
        }
        QCOMPARE(m_delegate.hidden, QList<ProgressHUD *>{hud});
        QCOMPARE(hud->alpha(), 0.0);
        QVERIFY(hud->isFinished());
        QVERIFY(!hud->showStarted().isValid());
        QCOMPARE(hud->parentWidget(), m_host); // it stays unless asked to leave
    }

    void animatedFades_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<qreal>("startScale");
        QTest::newRow("fade") << int(ProgressHUD::Fade) << 1.0;
        QTest::newRow("fade with zoom") << int(ProgressHUD::Zoom) << 1.5;
    }
    void animatedFades()
    {
        QFETCH(int, type);
        QFETCH(qreal, startScale);
        ProgressHUD *hud = addedHUD();
        hud->setAnimationType(type);
        hud->show(true);
        QCOMPARE(hud->alpha(), 0.0);
        QCOMPARE(hud->scale(), startScale);
        QTRY_COMPARE_WITH_TIMEOUT(hud->alpha(), 1.0, 1000);
        QCOMPARE(hud->scale(), 1.0);
        hud->hide(true);
        QVERIFY(m_delegate.hidden.isEmpty()); // told once the fade is over
        QTRY_COMPARE_WITH_TIMEOUT(m_delegate.hidden.size(), 1, 1000);
        QCOMPARE(hud->alpha(), 0.0);
    }

    void classOperationsLookAtDirectChildrenInOrder()
    {
        QVERIFY(!ProgressHUD::HUDForView(m_host));
        QVERIFY(!ProgressHUD::hideHUDForView(m_host, false));
        QVERIFY(!ProgressHUD::hideAllHUDsForView(m_host, false));
        auto *inner = new QWidget(m_host);
        ProgressHUD::showHUDAddedTo(inner, false); // not a direct child of the host
        QPointer<ProgressHUD> first = ProgressHUD::showHUDAddedTo(m_host, false);
        ProgressHUD *second = ProgressHUD::showHUDAddedTo(m_host, false);
        QCOMPARE(ProgressHUD::HUDForView(m_host), first);
        QCOMPARE(ProgressHUD::allHUDsForView(m_host), (QList<ProgressHUD *>{first, second}));

        // what these hide leaves its parent and is deleted
        QVERIFY(ProgressHUD::hideHUDForView(m_host, false));
        QVERIFY(!first || first->parentWidget() == nullptr);
        QCOMPARE(ProgressHUD::allHUDsForView(m_host), QList<ProgressHUD *>{second});
        QTRY_VERIFY_WITH_TIMEOUT(first.isNull(), 500);
        QVERIFY(ProgressHUD::hideAllHUDsForView(m_host, false));
        QVERIFY(ProgressHUD::allHUDsForView(m_host).isEmpty());
        QCOMPARE(ProgressHUD::allHUDsForView(inner).size(), 1);
    }

    void contentFollowsTheModeAndTexts()
    {
        ProgressHUD hud(m_host);
        QVERIFY(static_cast<ActivityIndicatorView *>(hud.indicator())->isAnimating());
        hud.setProgress(0.4f);
        hud.setMode(ProgressHUD::Determinate);
        auto *pie = qobject_cast<RoundProgressView *>(hud.indicator());
        QVERIFY(pie && !pie->isAnnular());
        QCOMPARE(pie->progress(), 0.4f); // set before the mode, kept
        hud.setProgress(0.7f);
        QCOMPARE(pie->progress(), 0.7f);
        hud.setMode(ProgressHUD::AnnularDeterminate);
        QVERIFY(qobject_cast<RoundProgressView *>(hud.indicator())->isAnnular());
        auto *custom = new QLabel(QStringLiteral("✓"));
        custom->resize(50, 30);
        hud.setCustomView(custom);
        hud.setMode(ProgressHUD::CustomView);
        QCOMPARE(hud.indicator(), custom);
        QCOMPARE(custom->parentWidget(), &hud);
        QCOMPARE(hud.boxSize(), QSizeF(90, 70));
        hud.setMode(ProgressHUD::Text);
        QVERIFY(!hud.indicator());
        QVERIFY(!custom->isVisibleTo(&hud));
        const QSizeF empty = hud.boxSize(); // no text: the margins alone
        hud.setLabelText(QStringLiteral("Searching"));
        auto *label = hud.findChild<QLabel *>(QStringLiteral("label"));
        QCOMPARE(label->text(), QStringLiteral("Searching"));
        QVERIFY(hud.boxSize().width() > empty.width());
        hud.setLabelText(QString());
        hud.setDetailsLabelText(QStringLiteral("Two\nlines"));
        QVERIFY(!hud.findChild<QLabel *>(QStringLiteral("detailsLabel"))->isHidden());
        QVERIFY(hud.boxSize().height() > empty.height());
    }

    void workRunsOnItsOwnThread()
    {
        ProgressHUD *hud = addedHUD();
        std::atomic<bool> release{false};
        std::atomic<bool> onGui{true};
        hud->showWhileExecuting(
            [&] {
                onGui = QThread::currentThread() == qApp->thread();
                while (!release)
                    QThread::msleep(2);
            },
            false);
        QVERIFY(hud->taskInProgress());
        QCOMPARE(hud->alpha(), 1.0);
        release = true;
        QTRY_COMPARE_WITH_TIMEOUT(m_delegate.hidden.size(), 1, 1000);
        QVERIFY(!onGui);
        QCOMPARE(m_delegate.onGuiThread, QList<bool>{true});
        QVERIFY(!hud->taskInProgress());
        QCOMPARE(hud->alpha(), 0.0);
        // shown again, it builds a fresh indicator
        hud->show(false);
        QVERIFY(qobject_cast<ActivityIndicatorView *>(hud->indicator()));
    }

    void coversItsParentDimmedWithTheBox()
    {
        ProgressHUD *hud = ProgressHUD::showHUDAddedTo(m_host, false);
        // it keeps covering its parent, the box in the middle
        m_host->resize(400, 300);
        QCOMPARE(hud->geometry(), QRect(0, 0, 400, 300));
        QVERIFY(qAbs(hud->currentLayout().box.center().x() - 200) <= 0.5);
        hud->setMode(ProgressHUD::Text);
        hud->setDimBackground(true);
        hud->setOpacity(1.0f);
        const QImage image = m_host->grab().toImage();
        const QRectF box = hud->currentLayout().box;
        QCOMPARE(image.pixel(box.center().toPoint()), qRgb(0, 0, 0));
        // just outside the box the shade is light; in the corners it is dark
        const QColor nearCentre = image.pixelColor(box.right() + 3, int(box.center().y()));
        QVERIFY(nearCentre.lightness() > image.pixelColor(2, 2).lightness() + 40);
    }

private:
    QWidget *m_host = nullptr;
    ManualClock m_clock{5000};
    RecordingDelegate m_delegate;
};

TREKMIME_TEST(ProgressHUDTest)
#include "ProgressHUDTest.moc"

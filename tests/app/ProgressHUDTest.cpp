#include "TestMain.h"

#include "app/ActivityIndicatorView.h"
#include "app/ProgressHUD.h"
#include "app/ProgressHUDDelegate.h"
#include "app/RoundProgressView.h"
#include "platform/Clock.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <atomic>

namespace {

struct RecordingDelegate : ProgressHUDDelegate
{
    QList<ProgressHUD *> hidden;
    QList<bool> onGuiThread;
    QElapsedTimer sinceStart;
    qint64 hiddenAfter = -1;
    void hudWasHidden(ProgressHUD *hud) override
    {
        hidden.append(hud);
        if (sinceStart.isValid())
            hiddenAfter = sinceStart.elapsed();
        onGuiThread.append(QThread::currentThread() == qApp->thread());
    }
};

} // namespace

class ProgressHUDTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_host = new QWidget;
        m_host->resize(320, 480);
        m_host->show();
    }
    void cleanup() { delete m_host; }

    void newOverlayIsTransparentAndLetsTouchesThrough()
    {
        ProgressHUD hud(m_host);
        QCOMPARE(hud.geometry(), m_host->rect());
        QCOMPARE(hud.alpha(), 0.0);
        QVERIFY(hud.testAttribute(Qt::WA_TransparentForMouseEvents));
        QCOMPARE(hud.mode(), int(ProgressHUD::Indeterminate));
        QCOMPARE(hud.opacity(), 0.8f);
        QCOMPARE(hud.margin(), 20.0f);
        QCOMPARE(hud.labelFont().pixelSize(), 16);
        QVERIFY(hud.labelFont().bold());
        QCOMPARE(hud.detailsLabelFont().pixelSize(), 12);
        QVERIFY(!hud.showStarted().isValid());
    }

    void showAndHideWithoutAnimation()
    {
        ManualClock clock(5000);
        RecordingDelegate delegate;
        ProgressHUD *hud = new ProgressHUD(m_host);
        hud->addTo(m_host);
        hud->setClock(&clock);
        hud->setDelegate(&delegate);
        hud->show(false);
        QCOMPARE(hud->alpha(), 1.0);
        QVERIFY(!hud->testAttribute(Qt::WA_TransparentForMouseEvents));
        QCOMPARE(hud->showStarted().toMSecsSinceEpoch(), 5000);
        hud->hide(false);
        // no animation: transparent and reported at once
        QCOMPARE(hud->alpha(), 0.0);
        QVERIFY(hud->isFinished());
        QCOMPARE(delegate.hidden, QList<ProgressHUD *>{hud});
        QVERIFY(!hud->showStarted().isValid());
        QCOMPARE(hud->parentWidget(), m_host); // it stays unless asked to leave
    }

    void hidingWhatIsNotShownStillFinishes()
    {
        RecordingDelegate delegate;
        ProgressHUD hud(m_host);
        hud.setDelegate(&delegate);
        hud.hide(true);
        QCOMPARE(hud.alpha(), 0.0);
        QCOMPARE(delegate.hidden.size(), 1);
    }

    void animatedFades_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<qreal>("startScale");
        QTest::addColumn<qreal>("hideScale");
        QTest::newRow("fade") << int(ProgressHUD::Fade) << 1.0 << 1.0;
        QTest::newRow("fade with zoom") << int(ProgressHUD::Zoom) << 1.5 << 0.5;
    }
    void animatedFades()
    {
        QFETCH(int, type);
        QFETCH(qreal, startScale);
        QFETCH(qreal, hideScale);
        RecordingDelegate delegate;
        ProgressHUD *hud = ProgressHUD::showHUDAddedTo(m_host, false);
        hud->hide(false);
        hud->setAnimationType(type);
        hud->setDelegate(&delegate);
        delegate.hidden.clear();
        hud->show(true);
        QCOMPARE(hud->alpha(), 0.0);
        QCOMPARE(hud->scale(), startScale);
        QTRY_COMPARE_WITH_TIMEOUT(hud->alpha(), 1.0, 1000);
        QCOMPARE(hud->scale(), 1.0);

        // the animated hide stops at 0.02; finishing takes it to 0
        QList<qreal> alphas;
        qreal lowestScale = 1.0;
        connect(&m_tick, &QTimer::timeout, hud, [&] {
            if (hud->isFinished())
                return;
            alphas.append(hud->alpha());
            lowestScale = qMin(lowestScale, hud->scale());
        });
        m_tick.start(10);
        hud->hide(true);
        QVERIFY(delegate.hidden.isEmpty());
        QTRY_COMPARE_WITH_TIMEOUT(delegate.hidden.size(), 1, 1000);
        m_tick.stop();
        m_tick.disconnect();
        QCOMPARE(hud->alpha(), 0.0);
        QVERIFY(!alphas.isEmpty());
        QVERIFY(
            std::all_of(alphas.begin(), alphas.end(), [](qreal a) { return a >= 0.02 - 1e-9; }));
        QVERIFY(lowestScale <= hideScale + 0.1);
    }

    void graceTimeNeedsARunningTask_data()
    {
        QTest::addColumn<bool>("task");
        QTest::addColumn<qreal>("alpha");
        QTest::newRow("no task: never visible") << false << 0.0;
        QTest::newRow("task still running: visible") << true << 1.0;
    }
    void graceTimeNeedsARunningTask()
    {
        QFETCH(bool, task);
        QFETCH(qreal, alpha);
        ProgressHUD *hud = new ProgressHUD(m_host);
        hud->addTo(m_host);
        hud->setGraceTime(0.05f);
        hud->setTaskInProgress(task);
        hud->show(false);
        QCOMPARE(hud->alpha(), 0.0);
        if (alpha > 0) {
            QTRY_COMPARE_WITH_TIMEOUT(hud->alpha(), alpha, 500);
        } else {
            QTest::qWait(150);
            QCOMPARE(hud->alpha(), alpha);
        }
    }

    void minimumShowTimeDelaysTheHide()
    {
        ManualClock clock(10000);
        RecordingDelegate delegate;
        ProgressHUD *hud = new ProgressHUD(m_host);
        hud->addTo(m_host);
        hud->setClock(&clock);
        hud->setDelegate(&delegate);
        hud->setMinShowTime(0.6f);
        hud->show(false);
        clock.advance(500);
        delegate.sinceStart.start();
        hud->hide(false);
        QCOMPARE(hud->alpha(), 1.0);
        QTRY_COMPARE_WITH_TIMEOUT(delegate.hidden.size(), 1, 1000);
        // the remaining 100 ms, not the whole minimum
        QVERIFY2(delegate.hiddenAfter >= 90 && delegate.hiddenAfter < 400,
                 qPrintable(QString::number(delegate.hiddenAfter)));

        // shown long enough already: hides at once (the minimum is a
        // single-precision value, a hair above 0.6 s)
        hud->show(false);
        clock.advance(601);
        hud->hide(false);
        QCOMPARE(delegate.hidden.size(), 2);
    }

    void removedOnHideWhenAsked()
    {
        QPointer<ProgressHUD> hud = ProgressHUD::showHUDAddedTo(m_host, false);
        hud->setRemoveFromSuperViewOnHide(true);
        hud->hide(false);
        QVERIFY(!hud || hud->parentWidget() == nullptr);
        QTRY_VERIFY_WITH_TIMEOUT(hud.isNull(), 500);
    }

    void hideAfterDelay()
    {
        RecordingDelegate delegate;
        ProgressHUD *hud = ProgressHUD::showHUDAddedTo(m_host, false);
        hud->setDelegate(&delegate);
        hud->hide(false, 0.05);
        QCOMPARE(hud->alpha(), 1.0);
        QTRY_COMPARE_WITH_TIMEOUT(delegate.hidden.size(), 1, 500);
    }

    void classOperationsLookAtDirectChildrenInOrder()
    {
        QVERIFY(!ProgressHUD::HUDForView(m_host));
        QVERIFY(!ProgressHUD::hideHUDForView(m_host, false));
        QVERIFY(!ProgressHUD::hideAllHUDsForView(m_host, false));
        auto *inner = new QWidget(m_host);
        ProgressHUD::showHUDAddedTo(inner, false); // not a direct child of the host
        ProgressHUD *first = ProgressHUD::showHUDAddedTo(m_host, false);
        ProgressHUD *second = ProgressHUD::showHUDAddedTo(m_host, false);
        QCOMPARE(ProgressHUD::HUDForView(m_host), first);
        QCOMPARE(ProgressHUD::allHUDsForView(m_host), (QList<ProgressHUD *>{first, second}));

        QVERIFY(ProgressHUD::hideHUDForView(m_host, false));
        QVERIFY(first->removeFromSuperViewOnHide());
        QCOMPARE(ProgressHUD::allHUDsForView(m_host), QList<ProgressHUD *>{second});
        QVERIFY(ProgressHUD::hideAllHUDsForView(m_host, false));
        QVERIFY(ProgressHUD::allHUDsForView(m_host).isEmpty());
        QCOMPARE(ProgressHUD::allHUDsForView(inner).size(), 1);
    }

    void indicatorFollowsTheMode()
    {
        ProgressHUD hud(m_host);
        QVERIFY(qobject_cast<ActivityIndicatorView *>(hud.indicator()));
        QVERIFY(static_cast<ActivityIndicatorView *>(hud.indicator())->isAnimating());
        hud.setProgress(0.4f);
        hud.setMode(ProgressHUD::Determinate);
        auto *pie = qobject_cast<RoundProgressView *>(hud.indicator());
        QVERIFY(pie);
        QVERIFY(!pie->isAnnular());
        QCOMPARE(pie->progress(), 0.4f);
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
    }

    void labelsFollowTheirTexts()
    {
        ProgressHUD hud(m_host);
        hud.setMode(ProgressHUD::Text);
        auto *label = hud.findChild<QLabel *>(QStringLiteral("label"));
        auto *details = hud.findChild<QLabel *>(QStringLiteral("detailsLabel"));
        QVERIFY(label && details);
        hud.setLabelText(QStringLiteral("Searching"));
        QCOMPARE(label->text(), QStringLiteral("Searching"));
        QVERIFY(!label->isHidden());
        QCOMPARE(label->palette().color(QPalette::WindowText), QColor(Qt::white));
        const QSizeF withText = hud.boxSize();
        hud.setLabelText(QString());
        QVERIFY(label->isHidden());
        QCOMPARE(hud.boxSize(), QSizeF(40, 40));
        QVERIFY(withText.width() > 40);
        hud.setDetailsLabelText(QStringLiteral("Two\nlines"));
        QVERIFY(!details->isHidden());
        QVERIFY(hud.boxSize().height() > 40);
    }

    void followsItsParentsSize()
    {
        ProgressHUD *hud = ProgressHUD::showHUDAddedTo(m_host, false);
        m_host->resize(400, 300);
        QCOMPARE(hud->geometry(), QRect(0, 0, 400, 300));
        QVERIFY(qAbs(hud->currentLayout().box.center().x() - 200) <= 0.5);
    }

    void workRunsOnItsOwnThread()
    {
        RecordingDelegate delegate;
        ProgressHUD *hud = new ProgressHUD(m_host);
        hud->addTo(m_host);
        hud->setDelegate(&delegate);
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
        QTRY_COMPARE_WITH_TIMEOUT(delegate.hidden.size(), 1, 1000);
        QVERIFY(!onGui);
        QCOMPARE(delegate.onGuiThread, QList<bool>{true});
        QVERIFY(!hud->taskInProgress());
        QCOMPARE(hud->alpha(), 0.0);
        // shown again, it builds a fresh indicator
        hud->show(false);
        QVERIFY(qobject_cast<ActivityIndicatorView *>(hud->indicator()));
    }

    void drawsADimmedBackgroundAndTheBox()
    {
        ProgressHUD *hud = ProgressHUD::showHUDAddedTo(m_host, false);
        hud->setMode(ProgressHUD::Text);
        hud->setDimBackground(true);
        hud->setOpacity(1.0f);
        const QImage image = m_host->grab().toImage();
        const QRectF box = hud->currentLayout().box;
        QCOMPARE(image.pixel(box.center().toPoint()), qRgb(0, 0, 0));
        // just outside the box the shade is light; in the corners it is dark
        const QColor nearCentre = image.pixelColor(box.right() + 3, int(box.center().y()));
        const QColor corner = image.pixelColor(2, 2);
        QVERIFY(nearCentre.lightness() > corner.lightness() + 40);
    }

private:
    QWidget *m_host = nullptr;
    QTimer m_tick;
};

TREKMIME_TEST(ProgressHUDTest)
#include "ProgressHUDTest.moc"

#include "TestMain.h"

#include "app/ActivityIndicatorView.h"
#include "app/ProgressHUD.h"
#include "app/ProgressHUDDelegate.h"
#include "app/ProgressHUDLayout.h"
#include "app/RoundProgressView.h"
#include "fakes/ManualClock.h"

#include <QFontMetricsF>
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

ProgressHUDLayout::Input layoutInput()
{
    ProgressHUDLayout::Input in;
    in.bounds = QSizeF(320, 480);
    in.labelFont.setPixelSize(16);
    in.detailsLabelFont.setPixelSize(12);
    return in;
}

} // namespace

class ProgressHUDTest : public QObject
{
    Q_OBJECT

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

    void layoutBoxAroundContent_data()
    {
        QTest::addColumn<bool>("square");
        QTest::addColumn<QSizeF>("minSize");
        QTest::addColumn<QPointF>("offset");
        QTest::addColumn<QRectF>("box");
        // a 50 by 30 indicator inside margins of 20, in the middle of the overlay
        QTest::newRow("plain") << false << QSizeF() << QPointF() << QRectF(115, 205, 90, 70);
        QTest::newRow("square: the longer side")
            << true << QSizeF() << QPointF() << QRectF(115, 195, 90, 90);
        QTest::newRow("at least the minimum size")
            << false << QSizeF(150, 100) << QPointF() << QRectF(85, 190, 150, 100);
        QTest::newRow("offsets move it rounded")
            << false << QSizeF() << QPointF(10.4, -50.6) << QRectF(125, 154, 90, 70);
    }
    void layoutBoxAroundContent()
    {
        QFETCH(bool, square);
        QFETCH(QSizeF, minSize);
        QFETCH(QPointF, offset);
        QFETCH(QRectF, box);
        ProgressHUDLayout::Input in = layoutInput();
        in.indicator = QSizeF(50, 30);
        in.square = square;
        in.minSize = minSize;
        in.xOffset = float(offset.x());
        in.yOffset = float(offset.y());
        QCOMPARE(ProgressHUDLayout::compute(in).box, box);
    }

    void layoutFitsTheTextsToTheWidth()
    {
        ProgressHUDLayout::Input in = layoutInput();
        in.indicator = QSizeF(37, 37);
        in.labelText = QString(200, u'W');
        in.detailsLabelText = QStringLiteral("words ").repeated(40);
        const ProgressHUDLayout out = ProgressHUDLayout::compute(in);
        // 320 less four margins of 20: the label cut to one line, the details wrapped
        QVERIFY(out.labelText.endsWith(QChar(0x2026)));
        QCOMPARE(out.box.width(), 280.0);
        QVERIFY(out.detailsLabel.width() <= 240);
        QVERIFY(out.detailsLabel.height() >= 3 * QFontMetricsF(in.detailsLabelFont).height());
        QCOMPARE(out.detailsLabel.top(), out.label.bottom() + 4);
        QCOMPARE(out.box.bottom(), out.detailsLabel.bottom() + 20);
    }

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
        // letting touches through until shown
        QVERIFY(hud->testAttribute(Qt::WA_TransparentForMouseEvents));
        hud->setGraceTime(graceTime);
        hud->setTaskInProgress(task);
        const QDateTime visibleFrom = m_clock.now().addMSecs(qRound(graceTime * 1000));
        hud->show(false);
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
        QCOMPARE(hud->alpha(), waitMs == 0 || !shown ? 0.0 : 1.0);
        m_clock.advance(qMax(0, waitMs - 1));
        QCOMPARE(m_delegate.hidden.size(), waitMs == 0 ? 1 : 0);
        m_clock.advance(1);
        // without animation nothing is left of the overlay once it is told
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
        // what these hide leaves its parent and is deleted
        QVERIFY(ProgressHUD::hideHUDForView(m_host, false));
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
        QCOMPARE(hud.boxSize(), QSizeF(90, 70));
        hud.setMode(ProgressHUD::Text);
        QVERIFY(!hud.indicator() && !custom->isVisibleTo(&hud));
        const QSizeF empty = hud.boxSize(); // no text: the margins alone
        hud.setLabelText(QStringLiteral("Searching"));
        QCOMPARE(hud.findChild<QLabel *>(QStringLiteral("label"))->text(),
                 QStringLiteral("Searching"));
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
        QCOMPARE(hud->alpha(), 1.0);
        release = true;
        QTRY_COMPARE_WITH_TIMEOUT(m_delegate.hidden.size(), 1, 1000);
        QVERIFY(!onGui);
        QCOMPARE(m_delegate.onGuiThread, QList<bool>{true});
        QVERIFY(!hud->taskInProgress());
        // shown again, it builds a fresh indicator
        hud->show(false);
        QVERIFY(qobject_cast<ActivityIndicatorView *>(hud->indicator()));
    }

    void coversItsParentDimmedAroundTheBox()
    {
        ProgressHUD *hud = ProgressHUD::showHUDAddedTo(m_host, false);
        m_host->resize(400, 300);
        QCOMPARE(hud->geometry(), QRect(0, 0, 400, 300));
        hud->setMode(ProgressHUD::Text);
        hud->setDimBackground(true);
        hud->setOpacity(1.0f);
        const QRectF box = hud->currentLayout().box;
        QVERIFY(qAbs(box.center().x() - 200) <= 0.5);
        // just outside the box the shade is light; in the corners it is dark
        const QImage image = m_host->grab().toImage();
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

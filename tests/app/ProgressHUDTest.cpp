#include "TestMain.h"

#include "app/ProgressHUD.h"
#include "app/ProgressHUDDelegate.h"
#include "app/ProgressHUDLayout.h"
#include "app/RoundProgressView.h"
#include "fakes/ManualClock.h"

#include <QFontMetricsF>
#include <QLabel>
#include <QPointer>
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
        addRow("plain", false, QSizeF(), QPointF(), QRectF(115, 205, 90, 70));
        addRow("square: the longer side", true, QSizeF(), QPointF(), QRectF(115, 195, 90, 90));
        addRow("minimum size, offsets moving it rounded", false, QSizeF(150, 100),
               QPointF(10.4, -50.6), QRectF(95, 139, 150, 100));
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
        in.labelText = QString(200, u'W');
        in.detailsLabelText = u"words "_s.repeated(40);
        const ProgressHUDLayout out = ProgressHUDLayout::compute(in);
        // 320 less two margins of 20 around the box: the label cut short, the details wrapped
        QVERIFY(out.labelText.endsWith(QChar(0x2026)) && out.box.width() == 280.0);
        QVERIFY(out.detailsLabel.height() >= 3 * QFontMetricsF(in.detailsLabelFont).height());
    }

    void showsAfterTheGraceTimeOnlyForARunningTask_data()
    {
        QTest::addColumn<bool>("task");
        addRow("no task: never visible", false);
        addRow("task still running: visible", true);
    }
    void showsAfterTheGraceTimeOnlyForARunningTask()
    {
        QFETCH(bool, task);
        ProgressHUD *hud = addedHUD();
        hud->setGraceTime(0.05f);
        hud->setTaskInProgress(task);
        hud->show(false);
        m_clock.advance(49);
        QCOMPARE(hud->alpha(), 0.0);
        m_clock.advance(1);
        QCOMPARE(hud->alpha(), task ? 1.0 : 0.0);
        QCOMPARE(hud->testAttribute(Qt::WA_TransparentForMouseEvents), !task);
    }

    void hideTiming_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<int>("shownForMs");
        QTest::addColumn<int>("waitMs");
        addRow("never shown: finished all the same", false, 0, 0);
        addRow("minimum not yet over: the remaining 100 ms", true, 500, 100);
        // the minimum is a single-precision value, a hair above 0.6 s
        addRow("minimum over", true, 601, 0);
    }
    void hideTiming()
    {
        QFETCH(bool, shown);
        QFETCH(int, shownForMs);
        QFETCH(int, waitMs);
        ProgressHUD *hud = addedHUD();
        hud->setMinShowTime(0.6f);
        if (shown)
            hud->show(false);
        m_clock.advance(shownForMs);
        hud->hide(false);
        QCOMPARE(hud->alpha(), waitMs == 0 || !shown ? 0.0 : 1.0);
        m_clock.advance(qMax(0, waitMs - 1));
        QCOMPARE(m_delegate.hidden.size(), waitMs == 0 ? 1 : 0);
        m_clock.advance(1);
        QCOMPARE(m_delegate.hidden, QList<ProgressHUD *>{hud});
        QVERIFY(hud->isFinished() && !hud->showStarted().isValid());
    }

    void animatedFades()
    {
        ProgressHUD *hud = addedHUD();
        hud->setAnimationType(ProgressHUD::Zoom);
        hud->show(true);
        QCOMPARE(hud->scale(), 1.5);
        QTRY_COMPARE_WITH_TIMEOUT(hud->alpha(), 1.0, 1000);
        hud->hide(true);
        QVERIFY(m_delegate.hidden.isEmpty()); // told once the fade is over
        QTRY_COMPARE_WITH_TIMEOUT(m_delegate.hidden.size(), 1, 1000);
    }

    void classOperationsLookAtDirectChildrenInOrder()
    {
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
        QCOMPARE(ProgressHUD::allHUDsForView(inner).size(), 1);
    }

    void contentFollowsTheModeAndTexts()
    {
        ProgressHUD hud(m_host);
        hud.setProgress(0.4f);
        hud.setMode(ProgressHUD::Determinate);
        auto *pie = qobject_cast<RoundProgressView *>(hud.indicator());
        QCOMPARE(pie->progress(), 0.4f); // set before the mode, kept
        auto *custom = new QLabel(u"✓"_s);
        hud.setCustomView(custom);
        hud.setMode(ProgressHUD::CustomView);
        QCOMPARE(hud.indicator(), custom);
        hud.setMode(ProgressHUD::Text);
        QVERIFY(!hud.indicator() && !custom->isVisibleTo(&hud));
        const QSizeF empty = hud.boxSize(); // no text: the margins alone
        hud.setDetailsLabelText(u"Two\nlines"_s);
        QVERIFY(hud.boxSize().height() > empty.height());
    }

    void workRunsOnItsOwnThread()
    {
        std::atomic<bool> onGui{true};
        addedHUD()->showWhileExecuting([&] { onGui = QThread::currentThread() == qApp->thread(); },
                                       false);
        QTRY_COMPARE_WITH_TIMEOUT(m_delegate.onGuiThread, QList<bool>{true}, 1000);
        QVERIFY(!onGui);
    }

private:
    QWidget *m_host = nullptr;
    ManualClock m_clock{5000};
    RecordingDelegate m_delegate;
};

TREKMIME_TEST(ProgressHUDTest)
#include "ProgressHUDTest.moc"

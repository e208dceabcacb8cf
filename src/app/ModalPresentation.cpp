#include "app/ModalPresentation.h"

#include "app/BaseViewController.h"
#include "ui/ColorPalette.h"

#include <QApplication>
#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QPainter>
#include <QPointer>
#include <QPropertyAnimation>
#include <QVariantAnimation>
#include <QWidget>

namespace {

bool g_animated = true;
constexpr int TransitionMs = 300;
constexpr int FlipMs = 500;
const char *const RecordName = "trekmime-modal-record";

// What a presented screen remembers of its presentation; a child of the
// screen, so it goes with it. It also keeps the screen covering the window.
class ModalRecord : public QObject
{
public:
    ModalRecord(QWidget *screen, QWidget *presenter, ModalTransition transition)
        : QObject(screen), screen(screen), presenter(presenter), transition(transition)
    {
        setObjectName(QLatin1String(RecordName));
        screen->parentWidget()->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == screen->parentWidget() && event->type() == QEvent::Resize && !moving)
            screen->setGeometry(screen->parentWidget()->rect());
        return false;
    }

    QWidget *screen;
    QPointer<QWidget> presenter;
    ModalTransition transition;
    bool dismissing = false;
    bool moving = false;
    // where the keyboard was before, to go back to
    QPointer<QWidget> returnFocus;
    // what the screen hid of the window under it, to show again
    QList<QPointer<QWidget>> covered;
};

ModalRecord *recordOf(QWidget *screen)
{
    return screen ? screen->findChild<ModalRecord *>(QLatin1String(RecordName),
                                                     Qt::FindDirectChildrenOnly)
                  : nullptr;
}

// Hides what lies under the arrived screen, so that neither Tab nor a
// screen reader reaches a control the user cannot see. Only what is below
// the screen: a screen presented on top of it meanwhile stays.
void hideCovered(ModalRecord *record)
{
    QWidget *screen = record->screen;
    for (QObject *object : screen->parentWidget()->children()) {
        if (object == screen)
            break; // children are listed bottom to top
        auto *sibling = qobject_cast<QWidget *>(object);
        if (sibling && !sibling->isWindow() && !sibling->isHidden()) {
            sibling->hide();
            record->covered.append(sibling);
        }
    }
}

// Shows again what the screen hid, before it leaves: the leaving
// animations picture the window without it.
void showCovered(ModalRecord *record)
{
    for (const QPointer<QWidget> &sibling : std::as_const(record->covered)) {
        if (sibling)
            sibling->show();
    }
    record->covered.clear();
}

// The first control of `screen` the keyboard can reach, or null.
QWidget *firstControl(QWidget *screen)
{
    for (QWidget *next = screen->nextInFocusChain(); next && next != screen;
         next = next->nextInFocusChain()) {
        if (screen->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) &&
            next->isEnabled() && next->isVisibleTo(screen))
            return next;
    }
    return nullptr;
}

// A card turning over: the leaving picture narrows to its middle line, then
// the arriving one widens from it. Widgets cannot turn in 3D; this reads the
// same at a phone's speed.
class FlipOverlay : public QWidget
{
public:
    FlipOverlay(QWidget *window, QPixmap from, QPixmap to)
        : QWidget(window), m_from(std::move(from)), m_to(std::move(to))
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(window->rect());
        raise();
        show();
    }

    void setProgress(qreal progress)
    {
        m_progress = progress;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), ColorPalette::midnightBlueColor());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const bool first = m_progress < 0.5;
        const qreal turn = first ? 1.0 - m_progress * 2.0 : (m_progress - 0.5) * 2.0;
        const qreal width = rect().width() * turn;
        const QRectF target((rect().width() - width) / 2.0, 0, width, rect().height());
        painter.drawPixmap(target, first ? m_from : m_to, QRectF(m_from.rect()));
    }

private:
    QPixmap m_from;
    QPixmap m_to;
    qreal m_progress = 0.0;
};

void runAnimation(QWidget *screen, ModalTransition transition, bool arriving,
                  std::function<void()> done)
{
    QWidget *window = screen->parentWidget();
    switch (transition) {
    case ModalTransition::CoverVertical: {
        auto *animation = new QPropertyAnimation(screen, "pos", screen);
        animation->setDuration(TransitionMs);
        animation->setEasingCurve(arriving ? QEasingCurve::OutCubic : QEasingCurve::InCubic);
        const QPoint below(0, window->height());
        animation->setStartValue(arriving ? below : QPoint(0, 0));
        animation->setEndValue(arriving ? QPoint(0, 0) : below);
        if (ModalRecord *record = recordOf(screen))
            record->moving = true;
        QObject::connect(animation, &QAbstractAnimation::finished, screen,
                         [screen, done = std::move(done)] {
                             if (ModalRecord *record = recordOf(screen))
                                 record->moving = false;
                             done();
                         });
        animation->start(QAbstractAnimation::DeleteWhenStopped);
        return;
    }
    case ModalTransition::CrossDissolve: {
        auto *effect = new QGraphicsOpacityEffect(screen);
        effect->setOpacity(arriving ? 0.0 : 1.0);
        screen->setGraphicsEffect(effect);
        auto *animation = new QPropertyAnimation(effect, "opacity", screen);
        animation->setDuration(TransitionMs);
        animation->setStartValue(arriving ? 0.0 : 1.0);
        animation->setEndValue(arriving ? 1.0 : 0.0);
        QObject::connect(animation, &QAbstractAnimation::finished, screen,
                         [screen, arriving, done = std::move(done)] {
                             // the effect costs every paint: drop it once in place
                             if (arriving)
                                 screen->setGraphicsEffect(nullptr);
                             done();
                         });
        animation->start(QAbstractAnimation::DeleteWhenStopped);
        return;
    }
    case ModalTransition::FlipHorizontal: {
        // pictures of the window without and with the screen
        screen->hide();
        const QPixmap without = window->grab();
        screen->show();
        const QPixmap with = window->grab();
        if (!arriving)
            screen->hide();
        auto *overlay =
            new FlipOverlay(window, arriving ? without : with, arriving ? with : without);
        auto *animation = new QVariantAnimation(overlay);
        animation->setDuration(FlipMs);
        animation->setStartValue(0.0);
        animation->setEndValue(1.0);
        animation->setEasingCurve(QEasingCurve::InOutSine);
        QObject::connect(
            animation, &QVariantAnimation::valueChanged, overlay,
            [overlay](const QVariant &value) { overlay->setProgress(value.toReal()); });
        QPointer<QWidget> guard(screen);
        QObject::connect(animation, &QAbstractAnimation::finished, overlay,
                         [overlay, guard, done = std::move(done)] {
                             overlay->deleteLater();
                             if (guard)
                                 done();
                         });
        animation->start(QAbstractAnimation::DeleteWhenStopped);
        return;
    }
    }
}

} // namespace

void setModalAnimationsEnabled(bool enabled)
{
    g_animated = enabled;
}

void presentViewController(QWidget *presenter, QWidget *screen, ModalTransition transition,
                           std::function<void()> completion)
{
    QWidget *window = presenter->window();
    screen->setParent(window);
    screen->setGeometry(window->rect());
    screen->setAutoFillBackground(true);
    auto *record = new ModalRecord(screen, presenter, transition);
    record->returnFocus = QApplication::focusWidget();
    screen->show();
    screen->raise();
    // the keyboard follows the screen on top, to its first control
    if (QWidget *first = firstControl(screen))
        first->setFocus(Qt::OtherFocusReason);
    else
        screen->setFocus(Qt::OtherFocusReason);
    QPointer<ModalRecord> arrived(record);
    auto finished = [arrived, completion = std::move(completion)] {
        if (arrived && !arrived->dismissing)
            hideCovered(arrived);
        if (completion)
            completion();
    };
    if (!g_animated) {
        finished();
        return;
    }
    runAnimation(screen, transition, true, std::move(finished));
}

void dismissViewController(QWidget *screen, std::function<void()> completion)
{
    ModalRecord *record = recordOf(screen);
    if (!record || record->dismissing)
        return;
    record->dismissing = true;
    showCovered(record);
    screen->raise();
    screen->setEnabled(false); // leaving: no press may act twice
    QPointer<QWidget> presenter = record->presenter;
    QPointer<QWidget> returnFocus = record->returnFocus;
    // the screen under it shows again what the files say now
    if (auto *under = qobject_cast<BaseViewController *>(presenter.data()))
        under->viewWillAppear(g_animated);
    auto finished = [screen, presenter, returnFocus, completion = std::move(completion)] {
        screen->hide();
        screen->deleteLater();
        if (returnFocus && returnFocus->isVisible() && returnFocus->isEnabled())
            returnFocus->setFocus(Qt::OtherFocusReason);
        else if (presenter && presenter->isVisible())
            presenter->setFocus(Qt::OtherFocusReason);
        if (completion)
            completion();
    };
    if (!g_animated) {
        finished();
        return;
    }
    runAnimation(screen, record->transition, false, std::move(finished));
}

QWidget *presentedViewController(QWidget *presenter)
{
    if (!presenter)
        return nullptr;
    const QList<ModalRecord *> records =
        presenter->window()->findChildren<ModalRecord *>(QLatin1String(RecordName));
    for (ModalRecord *record : records) {
        if (record->presenter == presenter && !record->dismissing)
            return record->screen;
    }
    return nullptr;
}

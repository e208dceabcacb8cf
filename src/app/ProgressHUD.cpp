#include "app/ProgressHUD.h"

#include "app/ActivityIndicatorView.h"
#include "app/ProgressHUDDelegate.h"
#include "platform/Clock.h"
#include "ui/Accessibility.h"
#include "ui/ColorPalette.h"
#include "ui/ViewLayer.h"

#include <QEvent>
#include <QLabel>
#include <QThread>
#include <QTimer>
#include <QVariantAnimation>

namespace {

int milliseconds(double seconds)
{
    return qMax(0, qRound(seconds * 1000.0));
}

// below this alpha a view takes no touches, as on the phone
constexpr qreal TouchableAlpha = 0.01;
// the animated hide stops just short of transparent; the finish step takes
// it the rest of the way
constexpr qreal HideAnimationAlpha = 0.02;

QFont boldSystemFont(qreal pixelSize)
{
    QFont font;
    font.setBold(true);
    font.setPixelSize(qRound(pixelSize));
    return font;
}

} // namespace

ProgressHUD *ProgressHUD::showHUDAddedTo(QWidget *view, bool animated)
{
    auto *hud = new ProgressHUD(view);
    hud->addTo(view);
    hud->show(animated);
    return hud;
}

bool ProgressHUD::hideHUDForView(QWidget *view, bool animated)
{
    ProgressHUD *hud = HUDForView(view);
    if (!hud)
        return false;
    hud->setRemoveFromSuperViewOnHide(true);
    hud->hide(animated);
    return true;
}

bool ProgressHUD::hideAllHUDsForView(QWidget *view, bool animated)
{
    const QList<ProgressHUD *> huds = allHUDsForView(view);
    for (ProgressHUD *hud : huds) {
        hud->setRemoveFromSuperViewOnHide(true);
        hud->hide(animated);
    }
    return !huds.isEmpty();
}

ProgressHUD *ProgressHUD::HUDForView(const QWidget *view)
{
    const QList<ProgressHUD *> huds = allHUDsForView(view);
    return huds.isEmpty() ? nullptr : huds.first();
}

QList<ProgressHUD *> ProgressHUD::allHUDsForView(const QWidget *view)
{
    // children() keeps the order in which they were added, the subview order
    QList<ProgressHUD *> huds;
    for (QObject *child : view->children()) {
        if (auto *hud = qobject_cast<ProgressHUD *>(child))
            huds.append(hud);
    }
    return huds;
}

ProgressHUD::ProgressHUD(QWidget *view) : QWidget(nullptr)
{
    setGeometry(view->rect());
    setUp();
}

ProgressHUD::ProgressHUD(const QRect &frame) : QWidget(nullptr)
{
    setGeometry(frame);
    setUp();
}

ProgressHUD::~ProgressHUD()
{
    // the work still refers to nothing of ours, but the thread object must
    // not be destroyed while it runs
    if (m_worker && m_worker->isRunning())
        m_worker->wait();
}

void ProgressHUD::setUp()
{
    m_clock = SystemClock::instance();
    m_labelFont = boldSystemFont(16);
    m_detailsLabelFont = boldSystemFont(12);
    setAttribute(Qt::WA_NoSystemBackground);
    setAutoFillBackground(false);
    setAlpha(0.0);

    auto makeLabel = [this](const char *name) {
        auto *label = new QLabel(this);
        label->setObjectName(QLatin1String(name));
        label->setAlignment(Qt::AlignCenter);
        label->setAttribute(Qt::WA_TranslucentBackground);
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, ColorPalette::whiteColor());
        label->setPalette(palette);
        return label;
    };
    m_label = makeLabel("label");
    m_detailsLabel = makeLabel("detailsLabel");
    m_detailsLabel->setWordWrap(true);

    makeTimers();
    m_animation = new QVariantAnimation(this);

    updateIndicators();
    updateLabels();
}

void ProgressHUD::setClock(const Clock *clock)
{
    m_clock = clock ? clock : SystemClock::instance();
    // a timer already running keeps the time it was started on
    if (!m_graceTimer->isActive() && !m_minShowTimer->isActive())
        makeTimers();
}

void ProgressHUD::makeTimers()
{
    delete m_graceTimer;
    delete m_minShowTimer;
    m_graceTimer = m_clock->createTimer(this);
    m_graceTimer->setSingleShot(true);
    connect(m_graceTimer, &ClockTimer::timeout, this, [this] {
        // a show with a grace time becomes visible only if the task still runs
        if (m_taskInProgress)
            showUsingAnimation(m_useAnimation);
    });
    m_minShowTimer = m_clock->createTimer(this);
    m_minShowTimer->setSingleShot(true);
    connect(m_minShowTimer, &ClockTimer::timeout, this,
            [this] { hideUsingAnimation(m_useAnimation); });
}

qreal ProgressHUD::alpha() const
{
    const ViewLayer *layer = ViewLayer::existing(this);
    return layer ? layer->opacity() : 1.0;
}

qreal ProgressHUD::scale() const
{
    const ViewLayer *layer = ViewLayer::existing(this);
    return layer ? layer->scale() : 1.0;
}

void ProgressHUD::setAlpha(qreal alpha)
{
    ViewLayer::of(this)->setOpacity(alpha);
    setAttribute(Qt::WA_TransparentForMouseEvents, alpha < TouchableAlpha);
    if (auto *spinner = qobject_cast<ActivityIndicatorView *>(m_indicator.data()))
        spinner->setSuspended(alpha <= 0.0);
    // an overlay faded out stays in place, but there is nothing to read on it
    setDecorative(this, alpha <= 0.0);
}

void ProgressHUD::setScale(qreal scale)
{
    ViewLayer::of(this)->setScale(scale);
}

// --- the view hierarchy

void ProgressHUD::addTo(QWidget *view)
{
    if (parentWidget() != view)
        setParent(view);
    setGeometry(view->rect());
    watchParent(view);
    raise();
    QWidget::show();
    layoutContent();
}

void ProgressHUD::removeFromSuperview()
{
    watchParent(nullptr);
    if (parentWidget()) {
        QWidget::hide();
        setParent(nullptr);
    }
    if (m_deleteWhenRemoved)
        deleteLater();
}

void ProgressHUD::watchParent(QWidget *parent)
{
    if (m_watchedParent)
        m_watchedParent->removeEventFilter(this);
    m_watchedParent = parent;
    if (parent)
        parent->installEventFilter(this);
}

bool ProgressHUD::eventFilter(QObject *watched, QEvent *event)
{
    // the overlay keeps covering its parent whatever size it takes
    if (watched == m_watchedParent && event->type() == QEvent::Resize &&
        m_watchedParent == parentWidget())
        setGeometry(m_watchedParent->rect());
    return QWidget::eventFilter(watched, event);
}

// --- showing and hiding

void ProgressHUD::show(bool animated)
{
    m_useAnimation = animated;
    if (m_graceTime > 0.0f) {
        m_graceTimer->start(milliseconds(m_graceTime));
        return;
    }
    showUsingAnimation(animated);
}

void ProgressHUD::showUsingAnimation(bool animated)
{
    m_isFinished = false;
    m_minShowTimer->stop();
    m_animation->stop();
    if (!m_indicator)
        updateIndicators();
    layoutContent();
    update();
    setAlpha(0.0);
    const bool zoom = animated && m_animationType == Zoom;
    if (zoom)
        setScale(1.5);
    m_showStarted = m_clock->now();
    if (animated)
        animateTo(1.0, 1.0, nullptr);
    else
        setAlpha(1.0);
}

void ProgressHUD::hide(bool animated)
{
    m_useAnimation = animated;
    m_graceTimer->stop();
    if (m_minShowTime > 0.0f && m_showStarted.isValid()) {
        const double shown =
            double(m_clock->currentMSecsSinceEpoch() - m_showStarted.toMSecsSinceEpoch()) / 1000.0;
        if (shown < double(m_minShowTime)) {
            m_minShowTimer->start(milliseconds(double(m_minShowTime) - shown));
            return;
        }
    }
    hideUsingAnimation(animated);
}

void ProgressHUD::hide(bool animated, double afterDelay)
{
    m_clock->singleShot(milliseconds(afterDelay), this, [this, animated] { hide(animated); });
}

void ProgressHUD::hideUsingAnimation(bool animated)
{
    m_animation->stop();
    if (animated && m_showStarted.isValid()) {
        const qreal endScale = m_animationType == Zoom ? 0.5 : scale();
        animateTo(HideAnimationAlpha, endScale, [this] { done(); });
    } else {
        setAlpha(0.0);
        done();
    }
    m_showStarted = QDateTime();
}

void ProgressHUD::animateTo(qreal alpha, qreal scale, std::function<void()> finished)
{
    const qreal fromAlpha = this->alpha();
    const qreal fromScale = this->scale();
    // a fresh animation each time, so that an interrupted one never finishes
    m_animation->deleteLater();
    m_animation = new QVariantAnimation(this);
    m_animation->setDuration(AnimationDuration);
    m_animation->setStartValue(0.0);
    m_animation->setEndValue(1.0);
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_animation, &QVariantAnimation::valueChanged, this, [=, this](const QVariant &v) {
        const qreal t = v.toDouble();
        setAlpha(fromAlpha + (alpha - fromAlpha) * t);
        setScale(fromScale + (scale - fromScale) * t);
    });
    if (finished)
        connect(m_animation, &QVariantAnimation::finished, this, std::move(finished));
    m_animation->start();
}

void ProgressHUD::done()
{
    m_isFinished = true;
    setAlpha(0.0);
    setScale(1.0);
    if (m_delegate)
        m_delegate->hudWasHidden(this);
    if (m_removeFromSuperViewOnHide)
        removeFromSuperview();
}

void ProgressHUD::showWhileExecuting(std::function<void()> work, bool animated)
{
    m_useAnimation = animated;
    m_taskInProgress = true;
    QThread *thread = QThread::create(std::move(work));
    m_worker = thread;
    // finished is sent from the worker; received here it runs on the GUI thread
    connect(thread, &QThread::finished, this, &ProgressHUD::cleanUp);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
    show(animated);
}

void ProgressHUD::cleanUp()
{
    m_taskInProgress = false;
    // the indicator is let go (a later show builds a fresh one); a custom
    // view belongs to the caller and stays
    if (m_indicator && m_indicator != m_customView)
        delete m_indicator.data();
    hide(m_useAnimation);
}

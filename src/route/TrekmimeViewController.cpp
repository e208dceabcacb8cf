#include "route/TrekmimeViewController.h"

#include "app/ApplicationShell.h"
#include "app/ModalPresentation.h"
#include "location/Location.h"
#include "platform/AlertPresenter.h"
#include "platform/Clock.h"
#include "platform/DeviceMetrics.h"
#include "platform/Services.h"
#include "route/DateTimePicker.h"
#include "route/DirectionsService.h"
#include "route/RouteImages.h"
#include "route/RoutePreview.h"
#include "route/SelectAddressViewController.h"
#include "settings/ModeChange.h"
#include "settings/RecordKeys.h"
#include "settings/RouteSwitch.h"
#include "settings/StoredValue.h"
#include "settings/TMPreferenceUtil.h"
#include "ui/ColorPalette.h"
#include "ui/CoordinateRegion.h"
#include "ui/FlatSwitch.h"
#include "ui/MapView.h"

#include <QLabel>
#include <QPushButton>
#include <QVariantAnimation>

namespace {
const QString UpArrow = QStringLiteral("\u2b06\ufe0f");
const QString DownArrow = QStringLiteral("\u2b07\ufe0f");
constexpr int PanelStrip = 54;
constexpr int TallPanelOffset = 24;

QVariantMap routePoint(const Coordinate &c)
{
    return {{RecordKeys::pointLatitude(), c.latitude}, {RecordKeys::pointLongitude(), c.longitude}};
}

Coordinate pointCoordinate(const QVariant &point)
{
    const QVariantMap map = point.toMap();
    return {StoredValue::doubleValue(map.value(RecordKeys::pointLatitude())),
            StoredValue::doubleValue(map.value(RecordKeys::pointLongitude()))};
}

QString timeText(double seconds)
{
    // the device's own time zone, as the user reads a clock
    return QDateTime::fromSecsSinceEpoch(qint64(seconds)).toString(QStringLiteral("MM-dd HH:mm"));
}
} // namespace

TrekmimeViewController::TrekmimeViewController(const Services &services, ApplicationShell &shell,
                                               QWidget *parent)
    : BaseViewController(parent), m_services(services), m_shell(shell)
{
    setObjectName(QStringLiteral("TrekmimeViewController"));
    setClock(services.clock);
    buildViews();
}

TrekmimeViewController::~TrekmimeViewController() = default;

void TrekmimeViewController::viewDidLoad()
{
    mPoints.clear();
    lb_startTip->setText(tr("Start"));
    lb_endTip->setText(tr("End"));
    lb_startTimeTip->setText(tr("Start Time"));
    lb_endTimeTip->setText(tr("End Time"));
    lb_start->setText(tr("Please choose Start"));
    lb_end->setText(tr("Please choose End"));
    lb_startTime->setText(tr("Please choose Start Time"));
    lb_endTime->setText(tr("Please choose End Time"));
    for (QPushButton *row : std::as_const(m_choiceRows)) {
        const auto labels = row->findChildren<QLabel *>();
        // a screen reader reads the row as "caption: value"
        row->setAccessibleName(labels.value(0)->text());
    }

    enableSwitch->setOnColor(ColorPalette::turquoiseColor());
    enableSwitch->setOffColor(ColorPalette::cloudsColor());
    enableSwitch->setOnBackgroundColor(ColorPalette::midnightBlueColor());
    enableSwitch->setOffBackgroundColor(ColorPalette::silverColor());

    dp_drive->setMinimumDate(m_services.clock->now());
    dp_drive->setMaximumDate(DateTimePicker::distantFuture());
    dp_drive->setDate(m_services.clock->now());

    const bool tall = m_services.deviceMetrics && m_services.deviceMetrics->isTallScreen();
    m_panelTop = tall ? TallPanelOffset : 0;
    btn_upDown->setText(UpArrow);
    btn_upDown->setAccessibleName(tr("Hide choices"));
    restore();
    layoutViews();
    mv_main->setFocus(); // a person starts on the map, not inside the panel
}

void TrekmimeViewController::restore()
{
    m_preferences = TMPreferenceUtil::routePreference();
    m_recordFollowsPoints = false;
    if (!m_preferences.isEmpty() &&
        StoredValue::boolValue(m_preferences.value(RecordKeys::enable()))) {
        enableSwitch->setOn(true);
        setTip(tr("Trekmime is working"));
        mStartTime = StoredValue::intValue(m_preferences.value(RecordKeys::start()));
        mEndTime = StoredValue::intValue(m_preferences.value(RecordKeys::end()));
        mPoints = m_preferences.value(RecordKeys::points()).toList();
        mStartCoordinate = mPoints.isEmpty() ? Coordinate{} : pointCoordinate(mPoints.first());
        mEndCoordinate = mPoints.isEmpty() ? Coordinate{} : pointCoordinate(mPoints.last());
        drawMapLine();
        up();
        lb_start->setText(m_preferences.value(RecordKeys::startAddress()).toString());
        lb_end->setText(m_preferences.value(RecordKeys::endAddress()).toString());
        lb_startTime->setText(timeText(mStartTime));
        lb_endTime->setText(timeText(mEndTime));
        refreshLocation();
        startTimer();
    } else {
        enableSwitch->setOn(false);
        setTip(QString());
        if (m_preferences.isEmpty())
            m_preferences = QVariantMap();
        startLocating();
    }
    for (QPushButton *row : std::as_const(m_choiceRows)) {
        const auto labels = row->findChildren<QLabel *>();
        row->setAccessibleName(labels.value(0)->text());
        row->setAccessibleDescription(labels.value(1)->text());
    }
}

void TrekmimeViewController::viewWillAppear(bool animated)
{
    BaseViewController::viewWillAppear(animated);
    m_preferences = TMPreferenceUtil::routePreference();
    m_recordFollowsPoints = false;
    enableSwitch->setOn(!m_preferences.isEmpty() &&
                        StoredValue::boolValue(m_preferences.value(RecordKeys::enable())));
}

void TrekmimeViewController::resizeEvent(QResizeEvent *event)
{
    BaseViewController::resizeEvent(event);
    layoutViews();
}

void TrekmimeViewController::setTip(const QString &text)
{
    lb_tip->setText(text);
    enableSwitch->setAccessibleDescription(text);
}

// --- route planning ---------------------------------------------------------

void TrekmimeViewController::drawMapLine()
{
    if (!mStartCoordinate.isChosen() || !mEndCoordinate.isChosen())
        return;
    findDirections(mStartCoordinate, mEndCoordinate);
}

void TrekmimeViewController::findDirections(const Coordinate &from, const Coordinate &to)
{
    showHUDView();
    mIsRouteError = false;
    if (!m_services.directions) {
        routeAnswered(DirectionsAnswer::failure(tr("No route planning service.")), from, to);
        return;
    }
    m_services.directions->calculateDirections(
        from, to, this,
        [this, from, to](const DirectionsAnswer &answer) { routeAnswered(answer, from, to); });
}

void TrekmimeViewController::routeAnswered(const DirectionsAnswer &answer, const Coordinate &from,
                                           const Coordinate &to)
{
    hideHUDView();
    cleanStart();
    cleanEnd();
    cleanPath();
    if (answer.isError() || answer.routes.isEmpty()) {
        // the user hears of it when switching on; the old points stay
        mIsRouteError = true;
        return;
    }
    const DirectionsRoute &route = answer.routes.first();
    QVariantList points;
    points.reserve(route.coordinates.size());
    for (const Coordinate &c : route.coordinates)
        points.append(routePoint(c));
    setPoints(std::move(points));
    buildStart();
    buildEnd();
    mv_main->addOverlay(std::make_shared<MapPolyline>(route.coordinates));

    // framed on the two chosen places, not on the route's own bounds
    CoordinateRegion region;
    region.center = {(from.latitude + to.latitude) / 2, (from.longitude + to.longitude) / 2};
    region.span = {std::abs(from.latitude - to.latitude), std::abs(from.longitude - to.longitude)};
    mv_main->setRegion(mv_main->regionThatFits(region), true);
}

void TrekmimeViewController::setPoints(QVariantList points)
{
    mPoints = std::move(points);
    if (m_recordFollowsPoints)
        m_preferences.insert(RecordKeys::points(), mPoints);
}

void TrekmimeViewController::cleanPath()
{
    const QList<MapOverlayPtr> overlays = mv_main->overlays();
    for (const MapOverlayPtr &overlay : overlays)
        mv_main->removeOverlay(overlay);
}

namespace {
// only the first marker with the tag goes; later ones stay, as they always have
void removeFirstWithTag(MapView *map, int tag)
{
    const QList<MapAnnotationPtr> annotations = map->annotations();
    for (const MapAnnotationPtr &annotation : annotations) {
        if (annotation->tag() == tag) {
            map->removeAnnotation(annotation);
            return;
        }
    }
}
} // namespace

void TrekmimeViewController::cleanStart()
{
    removeFirstWithTag(mv_main, RouteStartAnnotationTag);
}

void TrekmimeViewController::cleanEnd()
{
    removeFirstWithTag(mv_main, RouteEndAnnotationTag);
}

void TrekmimeViewController::buildStart()
{
    // the start marker stands at the route's last point: kept as it has always been
    const Coordinate at = mPoints.isEmpty() ? Coordinate{} : pointCoordinate(mPoints.last());
    mv_main->addAnnotation(std::make_shared<MapPointAnnotation>(at, RouteStartAnnotationTag));
}

void TrekmimeViewController::buildEnd()
{
    const Coordinate at = mPoints.isEmpty() ? Coordinate{} : pointCoordinate(mPoints.first());
    mv_main->addAnnotation(std::make_shared<MapPointAnnotation>(at, RouteEndAnnotationTag));
}

QImage TrekmimeViewController::viewForAnnotation(MapView *, const MapPointAnnotation &annotation)
{
    if (annotation.tag() == RouteEndAnnotationTag)
        return RouteImages::named(QStringLiteral("icon_end"));
    if (annotation.tag() == RouteStartAnnotationTag)
        return RouteImages::named(QStringLiteral("icon_start"));
    return {};
}

std::optional<MapPolylineRenderer> TrekmimeViewController::rendererForOverlay(MapView *,
                                                                              const MapPolyline &)
{
    return MapPolylineRenderer{2.5, QColor(Qt::green)};
}

// --- the switch and the preview ---------------------------------------------

void TrekmimeViewController::setEnable(bool on)
{
    if (on) {
        RouteSwitch::Choices choices;
        choices.startLatitude = mStartCoordinate.latitude;
        choices.startLongitude = mStartCoordinate.longitude;
        choices.endLatitude = mEndCoordinate.latitude;
        choices.endLongitude = mEndCoordinate.longitude;
        choices.startTime = mStartTime;
        choices.endTime = mEndTime;
        choices.points = mPoints;
        choices.routeError = mIsRouteError;
        const QString failure = RouteSwitch::check(choices);
        if (!failure.isEmpty()) {
            m_services.alerts->showMessage(failure, tr("OK"), this);
            enableSwitch->setOn(false, true);
            return;
        }
        mStartTime = RouteSwitch::normalizedStartTime(mStartTime, mEndTime,
                                                      RoutePreview::nowSeconds(*m_services.clock));
        setTip(tr("Trekmime is working"));
        up();
        drawMapLine();
        choices.startTime = mStartTime;
        choices.startAddress = lb_start->text();
        choices.endAddress = lb_end->text();
        choices.points = mPoints;
        RouteSwitch::writeOn(m_preferences, choices);
        m_recordFollowsPoints = true;
        startTimer();
    } else {
        setTip(QString());
        down();
        cleanPath();
        cleanStart();
        cleanEnd();
        RouteSwitch::writeOff(m_preferences);
        stopTimer();
    }
}

void TrekmimeViewController::startTimer()
{
    // one preview timer at most
    stopTimer();
    mTimer = m_services.clock->createTimer(this);
    connect(mTimer, &ClockTimer::timeout, this, &TrekmimeViewController::refreshLocation);
    mTimer->start(1000);
}

void TrekmimeViewController::stopTimer()
{
    if (!mTimer)
        return;
    mTimer->stop();
    mTimer->deleteLater();
    mTimer = nullptr;
}

void TrekmimeViewController::refreshLocation()
{
    const RoutePreview::Step step =
        RoutePreview::stepAt(m_preferences, RoutePreview::nowSeconds(*m_services.clock));
    if (!step.inRange)
        return; // the 32-bit index left the list: nothing sensible to show
    const CoordinateRegion region = CoordinateRegionMakeWithDistance(step.coordinate, 2000, 2000);
    mv_main->setRegion(mv_main->regionThatFits(region));
    mv_main->setCenterCoordinate(step.coordinate);
}

void TrekmimeViewController::exchange()
{
    const ModeChange::Result change = ModeChange::fromRouteMode(m_preferences);
    if (change.refused()) {
        m_services.alerts->showMessage(change.refusal, tr("OK"), this);
        return;
    }
    // a failed write still swaps the screen; the stored mode wins again the
    // next time the application becomes active
    m_shell.changeToLocation();
}

// --- the choices --------------------------------------------------------------

bool TrekmimeViewController::guardChoice()
{
    if (!StoredValue::boolValue(m_preferences.value(RecordKeys::enable())))
        return true;
    showHUDHintText(RouteSwitch::workingRefusal());
    return false;
}

void TrekmimeViewController::chooseStart()
{
    if (guardChoice())
        chooseAddress(true);
}

void TrekmimeViewController::chooseEnd()
{
    if (guardChoice())
        chooseAddress(false);
}

void TrekmimeViewController::chooseAddress(bool start)
{
    QPointer<TrekmimeViewController> self(this);
    auto *picker = new SelectAddressViewController(
        m_services, [self, start](double latitude, double longitude, const QString &address) {
            if (!self)
                return;
            if (start)
                self->startChosen(latitude, longitude, address);
            else
                self->endChosen(latitude, longitude, address);
        });
    m_picker = picker;
    picker->loadViewIfNeeded();
    presentViewController(this, picker, ModalTransition::CoverVertical);
    picker->viewWillAppear(true);
}

void TrekmimeViewController::startChosen(double latitude, double longitude, const QString &address)
{
    if (latitude == 0.0 || longitude == 0.0)
        return;
    mStartCoordinate = {latitude, longitude};
    lb_start->setText(address);
    m_choiceRows[0]->setAccessibleDescription(address);
    drawMapLine();
}

void TrekmimeViewController::endChosen(double latitude, double longitude, const QString &address)
{
    if (latitude == 0.0 || longitude == 0.0)
        return;
    mEndCoordinate = {latitude, longitude};
    lb_end->setText(address);
    m_choiceRows[1]->setAccessibleDescription(address);
    drawMapLine();
}

void TrekmimeViewController::chooseStartTime()
{
    if (!guardChoice())
        return;
    mIsStart = true;
    showDatePicker();
}

void TrekmimeViewController::chooseEndTime()
{
    if (!guardChoice())
        return;
    mIsStart = false;
    showDatePicker();
}

// --- the date picker ----------------------------------------------------------

namespace {
void animate(QVariantAnimation *&animation, QObject *owner, int msecs,
             std::function<void(double)> step, std::function<void()> done = {})
{
    if (animation)
        animation->stop();
    if (msecs <= 0) {
        step(1.0);
        if (done)
            done();
        return;
    }
    animation = new QVariantAnimation(owner);
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
    animation->setDuration(msecs);
    animation->setEasingCurve(QEasingCurve::OutCubic);
    QObject::connect(animation, &QVariantAnimation::valueChanged, owner,
                     [step](const QVariant &value) { step(value.toDouble()); });
    QVariantAnimation **slot = &animation;
    QVariantAnimation *current = animation;
    QObject::connect(animation, &QVariantAnimation::finished, owner, [slot, current, done] {
        if (*slot == current)
            *slot = nullptr;
        if (done)
            done();
    });
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

void setBackdrop(QPushButton *backdrop, double alpha)
{
    backdrop->setStyleSheet(
        QStringLiteral("QPushButton { border: none; background: rgba(0, 0, 0, %1); }")
            .arg(int(alpha * 255)));
}
} // namespace

void TrekmimeViewController::showDatePicker()
{
    const QDateTime now = m_services.clock->now();
    dp_drive->setMinimumDate(now);
    dp_drive->setMaximumDate(DateTimePicker::distantFuture());
    dp_drive->setDate(now);
    m_pickerTitle->setText(mIsStart ? tr("Start Time") : tr("End Time"));
    v_picker->setGeometry(rect());
    v_picker->show();
    v_picker->raise();
    m_pickerSheet->setProperty("shown", true);
    const int h = height();
    const int sheetHeight = m_pickerSheet->height();
    animate(m_pickerAnimation, this, m_animationDuration, [this, h, sheetHeight](double t) {
        m_pickerSheet->move(0, int(h - sheetHeight * t));
        setBackdrop(btn_picker, 0.3 * t);
    });
    dp_drive->setFocus();
}

void TrekmimeViewController::hideDatePicker()
{
    m_pickerSheet->setProperty("shown", false);
    const int h = height();
    const int from = m_pickerSheet->y();
    animate(
        m_pickerAnimation, this, m_animationDuration,
        [this, h, from](double t) {
            m_pickerSheet->move(0, int(from + (h - from) * t));
            setBackdrop(btn_picker, 0.3 * (1.0 - t));
        },
        [this] { v_picker->hide(); });
    (mIsStart ? m_choiceRows[2] : m_choiceRows[3])->setFocus();
}

void TrekmimeViewController::pickerValueChanged()
{
    const QDateTime value = dp_drive->date();
    // whole seconds, cut toward zero to 32 bits, seconds as the picker holds them
    const double seconds = RoutePreview::nowSeconds(double(value.toMSecsSinceEpoch()) / 1000.0);
    const QString text = value.toLocalTime().toString(QStringLiteral("MM-dd HH:mm"));
    if (mIsStart) {
        lb_startTime->setText(text);
        m_choiceRows[2]->setAccessibleDescription(text);
        mStartTime = seconds;
    } else {
        lb_endTime->setText(text);
        m_choiceRows[3]->setAccessibleDescription(text);
        mEndTime = seconds;
    }
}

void TrekmimeViewController::pickerButtonClicked()
{
    hideDatePicker();
    pickerValueChanged();
}

// --- the panel ----------------------------------------------------------------

void TrekmimeViewController::movePanel(int top, bool animated)
{
    const int from = m_panelTop;
    m_panelTop = top;
    animate(m_panelAnimation, this, animated ? m_animationDuration : 0,
            [this, from, top](double t) {
                v_top->move(0, int(from + (top - from) * t));
                fitMapToPanel();
            });
}

void TrekmimeViewController::up()
{
    const bool tall = m_services.deviceMetrics && m_services.deviceMetrics->isTallScreen();
    movePanel(PanelStrip - v_top->height() + (tall ? TallPanelOffset : 0), true);
    btn_upDown->setText(DownArrow);
    btn_upDown->setAccessibleName(tr("Show choices"));
}

void TrekmimeViewController::down()
{
    movePanel(0, true);
    btn_upDown->setText(UpArrow);
    btn_upDown->setAccessibleName(tr("Hide choices"));
}

void TrekmimeViewController::upDown()
{
    if (m_panelTop < 0)
        down();
    else
        up();
}

// --- own position -------------------------------------------------------------

bool TrekmimeViewController::startLocating()
{
    if (!m_services.location)
        return false; // no location service to ask
    m_services.location->startLocation(this, [this](const PositionAnswer &answer) {
        if (answer.succeeded())
            locationSuccess(answer.value->latitude, answer.value->longitude);
        else
            locationFailed(answer.error);
    });
    return true;
}

void TrekmimeViewController::mineLocationButtonClicked()
{
    showHUDView();
    if (!startLocating())
        hideHUDView();
}

void TrekmimeViewController::locationSuccess(double, double)
{
    hideHUDView();
    // the service's last-known place, not the answer's values
    const Coordinate centre{m_services.location->latitude(), m_services.location->longitude()};
    const CoordinateRegion region =
        mv_main->regionThatFits(CoordinateRegionMakeWithDistance(centre, 2000, 2000));
    QPointer<MapView> map(mv_main);
    mv_main->animateCenterCoordinate(centre, m_animationDuration, [map, region] {
        if (map)
            map->setRegion(region, true);
    });
}

void TrekmimeViewController::locationFailed(const QString &)
{
    hideHUDView();
}

void TrekmimeViewController::showInfoView()
{
    m_shell.showInfoView(this, ModalTransition::FlipHorizontal);
}

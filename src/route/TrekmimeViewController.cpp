#include "route/TrekmimeViewController.h"

#include "app/ApplicationShell.h"
#include "app/ModalPresentation.h"
#include "app/SafeArea.h"
#include "location/Location.h"
#include "modes/ModeChange.h"
#include "platform/AlertPresenter.h"
#include "platform/Clock.h"
#include "platform/gui/DeviceMetrics.h"
#include "route/DateTimePicker.h"
#include "route/SelectAddressViewController.h"
#include "routing/RoutePreview.h"
#include "ui/Accessibility.h"
#include "ui/ColorPalette.h"
#include "ui/CoordinateRegion.h"
#include "ui/FlatSwitch.h"
#include "ui/MapView.h"
#include "ui/Theme.h"

#include <QLabel>
#include <QPushButton>
#include <QVariantAnimation>

namespace {
const QString UpArrow = QStringLiteral("\u2b06\ufe0f");
const QString DownArrow = QStringLiteral("\u2b07\ufe0f");
constexpr int PanelStrip = 54;
constexpr int TallPanelOffset = 24;

QString timeText(double seconds)
{
    // the device's own time zone, as the user reads a clock
    return QDateTime::fromSecsSinceEpoch(qint64(seconds)).toString(QStringLiteral("MM-dd HH:mm"));
}
} // namespace

TrekmimeViewController::TrekmimeViewController(const Needs &needs, ApplicationShell &shell,
                                               QWidget *parent)
    : BaseViewController(parent), m_needs(needs), m_shell(shell)
{
    setObjectName(QStringLiteral("TrekmimeViewController"));
    setClock(&needs.clock);
    m_trip = new TripController(needs.preferences, needs.directions, needs.clock, this);
    connect(m_trip, &TripController::planningStarted, this, [this] { showHUDView(); });
    connect(m_trip, &TripController::planningFinished, this,
            &TrekmimeViewController::routeAnswered);
    connect(m_trip, &TripController::previewAt, this, &TrekmimeViewController::showPreview);
    buildViews();
}

TrekmimeViewController::~TrekmimeViewController() = default;

void TrekmimeViewController::viewDidLoad()
{
    lb_startTip->setText(tr("Start"));
    lb_endTip->setText(tr("End"));
    lb_startTimeTip->setText(tr("Start Time"));
    lb_endTimeTip->setText(tr("End Time"));
    lb_start->setText(tr("Please choose Start"));
    lb_end->setText(tr("Please choose End"));
    lb_startTime->setText(tr("Please choose Start Time"));
    lb_endTime->setText(tr("Please choose End Time"));
    readRows();

    enableSwitch->setOnColor(ColorPalette::turquoiseColor());
    enableSwitch->setOffColor(ColorPalette::cloudsColor());
    enableSwitch->setOnBackgroundColor(ColorPalette::midnightBlueColor());
    enableSwitch->setOffBackgroundColor(ColorPalette::silverColor());

    dp_drive->setMinimumDate(m_needs.clock.now());
    dp_drive->setMaximumDate(DateTimePicker::distantFuture());
    dp_drive->setDate(m_needs.clock.now());

    const bool tall = SafeArea::of(m_needs.deviceMetrics).tallScreen;
    m_panelTop = tall ? TallPanelOffset : 0;
    btn_upDown->setText(UpArrow);
    btn_upDown->setAccessibleName(tr("Hide choices"));
    restore();
    layoutViews();
    mv_main->setFocus(); // a person starts on the map, not inside the panel
}

void TrekmimeViewController::restore()
{
    m_trip->restore();
    if (m_trip->isOn()) {
        enableSwitch->setOn(true);
        setTip(tr("Trekmime is working"));
        m_trip->plan();
        up();
        lb_start->setText(m_trip->startAddress());
        lb_end->setText(m_trip->endAddress());
        lb_startTime->setText(timeText(m_trip->startTime()));
        lb_endTime->setText(timeText(m_trip->endTime()));
        m_trip->previewNow();
        m_trip->startPreview();
    } else {
        enableSwitch->setOn(false);
        setTip(QString());
        startLocating();
    }
    showStops(); // a restored trip has none
    readRows();
}

void TrekmimeViewController::readRows()
{
    // a screen reader hears the chosen place or time first, then what it is
    for (QPushButton *row : std::as_const(m_choiceRows)) {
        const auto labels = row->findChildren<QLabel *>();
        row->setAccessibleName(labels.value(1)->text());
        row->setAccessibleDescription(labels.value(0)->text());
    }
}

void TrekmimeViewController::viewWillAppear(bool animated)
{
    BaseViewController::viewWillAppear(animated);
    m_trip->reload();
    enableSwitch->setOn(m_trip->isOn());
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

// --- the switch and the preview ---------------------------------------------

void TrekmimeViewController::setEnable(bool on)
{
    if (on) {
        m_trip->setAddresses(lb_start->text(), lb_end->text());
        const TripController::SwitchResult result = m_trip->switchOn();
        if (!result.refusal.isEmpty()) {
            m_needs.alerts.showMessage(result.refusal, tr("OK"), this);
            enableSwitch->setOn(false, true);
            return;
        }
        setTip(tr("Trekmime is working"));
        up();
    } else {
        setTip(QString());
        down();
        cleanPath();
        cleanStart();
        cleanStops();
        cleanEnd();
        m_trip->switchOff();
    }
}

void TrekmimeViewController::showPreview(const Coordinate &coordinate)
{
    const CoordinateRegion region = CoordinateRegionMakeWithDistance(coordinate, 2000, 2000);
    mv_main->setRegion(mv_main->regionThatFits(region));
    mv_main->setCenterCoordinate(coordinate);
}

void TrekmimeViewController::exchange()
{
    const ModeChange::Result change =
        ModeChange(m_needs.preferences).fromRouteMode(m_trip->record());
    if (change.refused()) {
        m_needs.alerts.showMessage(change.refusal, tr("OK"), this);
        return;
    }
    // a failed write still swaps the screen; the stored mode wins again the
    // next time the application becomes active
    m_shell.changeToLocation();
}

// --- the choices --------------------------------------------------------------

bool TrekmimeViewController::guardChoice()
{
    const QString refusal = m_trip->choiceRefusal();
    if (refusal.isEmpty())
        return true;
    showHUDHintText(refusal);
    return false;
}

void TrekmimeViewController::chooseStart()
{
    if (guardChoice())
        chooseAddress(AddressFor::Start);
}

void TrekmimeViewController::chooseEnd()
{
    if (guardChoice())
        chooseAddress(AddressFor::End);
}

void TrekmimeViewController::chooseAddress(AddressFor target)
{
    QPointer<TrekmimeViewController> self(this);
    const SelectAddressViewController::Needs pickerNeeds{
        m_needs.clock, m_needs.alerts, m_needs.location, m_needs.deviceMetrics, m_needs.map};
    auto *picker = new SelectAddressViewController(
        pickerNeeds, [self, target](double latitude, double longitude, const QString &address) {
            if (!self)
                return;
            if (target == AddressFor::Start)
                self->startChosen(latitude, longitude, address);
            else if (target == AddressFor::End)
                self->endChosen(latitude, longitude, address);
            else
                self->stopChosen(latitude, longitude, address);
        });
    m_picker = picker;
    picker->loadViewIfNeeded();
    presentViewController(this, picker, ModalTransition::CoverVertical);
    picker->viewWillAppear(true);
}

void TrekmimeViewController::startChosen(double latitude, double longitude, const QString &address)
{
    if (!m_trip->chooseStart({latitude, longitude}, address))
        return; // a place on the equator or the prime meridian is not chosen
    lb_start->setText(address);
    readRows();
}

void TrekmimeViewController::endChosen(double latitude, double longitude, const QString &address)
{
    if (!m_trip->chooseEnd({latitude, longitude}, address))
        return;
    lb_end->setText(address);
    readRows();
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
    backdrop->setStyleSheet(Theme::backdropStyleSheet(alpha));
}
} // namespace

void TrekmimeViewController::showDatePicker()
{
    const QDateTime now = m_needs.clock.now();
    dp_drive->setMinimumDate(now);
    dp_drive->setMaximumDate(DateTimePicker::distantFuture());
    dp_drive->setDate(now);
    m_pickerTitle->setText(mIsStart ? tr("Start Time") : tr("End Time"));
    v_picker->setGeometry(rect());
    v_picker->setEnabled(true);
    v_picker->show();
    v_picker->raise();
    setSiblingsCovered(v_picker, true);
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
    v_picker->setEnabled(false); // a sheet on its way out takes no more presses
    setSiblingsCovered(v_picker, false);
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

bool TrekmimeViewController::focusNextPrevChild(bool next)
{
    // while the time sheet is up, the keyboard goes between its two controls only
    if (!v_picker->isVisible() || !m_pickerSheet->property("shown").toBool())
        return BaseViewController::focusNextPrevChild(next);
    auto *done = m_pickerSheet->findChild<QWidget *>(QStringLiteral("pickerDone"));
    (dp_drive->hasFocus() ? done : dp_drive)
        ->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void TrekmimeViewController::pickerValueChanged()
{
    const QDateTime value = dp_drive->date();
    // whole seconds, cut toward zero to 32 bits, seconds as the picker holds them
    const double seconds = RoutePreview::nowSeconds(double(value.toMSecsSinceEpoch()) / 1000.0);
    const QString text = value.toLocalTime().toString(QStringLiteral("MM-dd HH:mm"));
    if (mIsStart) {
        lb_startTime->setText(text);
        m_trip->setStartTime(seconds);
    } else {
        lb_endTime->setText(text);
        m_trip->setEndTime(seconds);
    }
    forgetPace(); // a time set by hand: the chosen pace no longer holds
    readRows();
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
    const bool tall = SafeArea::of(m_needs.deviceMetrics).tallScreen;
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
    if (!m_needs.location)
        return false; // no location service to ask
    m_needs.location->startLocation(
        this, splitAnswer<Coordinate>(
                  [this](const Coordinate &c) { locationSuccess(c.latitude, c.longitude); },
                  [this](const QString &error) { locationFailed(error); }));
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
    const Coordinate centre{m_needs.location->latitude(), m_needs.location->longitude()};
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

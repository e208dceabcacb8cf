#pragma once

#include "app/BaseViewController.h"
#include "app/FileChoice.h"
#include "modes/TripController.h"
#include "platform/Coordinate.h"
#include "route/SelectAddressViewController.h"
#include "ui/MapViewDelegate.h"

#include <QList>
#include <QPointer>

class AlertPresenter;
class ApplicationShell;
class Clock;
class ClockTimer;
class DateTimePicker;
class DeviceMetrics;
class DirectionsService;
class FlatSwitch;
class Location;
class MapView;
class QComboBox;
class QLabel;
class QPushButton;
class QVariantAnimation;
class TMPreferenceUtil;

// The screen of the route mode: a full-screen map under a choice panel
// (start place, stops on the way, end place, start and end time with a pace
// that fills the end, an even-pace switch) that slides up out of the way
// while the trip runs, a bottom bar with the on/off switch and the mode
// button, and a date-and-time picker that slides up over a dimmed backdrop.
//
// The trip itself (choices, planning, the switch, the preview) is the
// TripController's; the screen shows it and hands it the user's touches.
class TrekmimeViewController : public BaseViewController, public MapViewDelegate
{
    Q_OBJECT

public:
    // What the screen and its address picker use of the outside world; not
    // owned, kept alive by the caller. No directions service: no route is
    // planned; no location service: locating fails at once; no device
    // metrics: the default layout.
    struct Needs
    {
        Clock &clock;
        AlertPresenter &alerts;
        TMPreferenceUtil &preferences;
        DirectionsService *directions = nullptr;
        Location *location = nullptr;
        DeviceMetrics *deviceMetrics = nullptr;
        MapServices map;
    };

    TrekmimeViewController(const Needs &needs, ApplicationShell &shell, QWidget *parent = nullptr);
    ~TrekmimeViewController() override;

    void viewWillAppear(bool animated) override;
    TripController &trip() { return *m_trip; }
    const RouteRecord &preferences() const { return m_trip->record(); }
    const QList<RoutePoint> &points() const { return m_trip->points(); }
    bool isStart() const { return mIsStart; }
    ClockTimer *timer() const { return m_trip->previewTimer(); }
    MapView *mapView() const { return mv_main; }
    SelectAddressViewController *addressPicker() const { return m_picker; }

    // the route's markers and line
    void cleanPath();
    void cleanStart();
    void cleanEnd();
    void cleanStops();
    void buildStart();
    void buildStops();
    void buildEnd();

    // the switch and the preview
    void setEnable(bool on);
    void refreshLocation() { m_trip->previewNow(); }

    // the choices: each applies the guard, then opens its picker
    void chooseStart();
    void chooseEnd();
    void chooseStartTime();
    void chooseEndTime();
    // what the address picker hands back for the start or the end
    void startChosen(double latitude, double longitude, const QString &address);
    void endChosen(double latitude, double longitude, const QString &address);

    // Stops on the way: added before the end through the address picker,
    // removed with their row's button; guarded like the other choices.
    void addStop();
    void stopChosen(double latitude, double longitude, const QString &address);
    void removeStop(qsizetype index);
    // The pace choice (an index into the choice's list): fills the end time
    // from the start time and the planned route's length; the end time
    // stays editable.
    void choosePace(int index);
    // the even-pace switch, handed to the trip
    void setEvenPace(bool on);
    // the most stops the panel has room for on a phone
    static constexpr qsizetype MaxStops = 5;

    // the date picker
    void showDatePicker();
    void hideDatePicker();
    void pickerValueChanged();
    void pickerButtonClicked();
    DateTimePicker *datePicker() const { return dp_drive; }

    // the choice panel
    void up();
    void down();
    void upDown();
    int panelTop() const;

    void mineLocationButtonClicked();
    void showInfoView();

    // "Load GPX…": a file's track (or route) becomes the planned route, its
    // ends the places; the file is asked for through `setFileChoice` (the
    // file dialog by default).
    void loadGpx();
    void setFileChoice(FileChoice::Function choose) { m_chooseFile = std::move(choose); }

    // the answers of the location service
    void locationSuccess(double latitude, double longitude);
    void locationFailed(const QString &error);

    // MapViewDelegate
    QImage viewForAnnotation(MapView *mapView, const MapPointAnnotation &annotation) override;
    std::optional<MapPolylineRenderer> rendererForOverlay(MapView *mapView,
                                                          const MapPolyline &overlay) override;

    // how long the panel and the picker take to move, in milliseconds
    void setAnimationDuration(int msecs) { m_animationDuration = msecs; }

public slots:
    // The mode button: refused while the route is on, otherwise stores the
    // fixed-location mode and swaps the screens.
    void exchange();

protected:
    void viewDidLoad() override;
    void resizeEvent(QResizeEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void buildViews();
    void buildMap();
    void buildChoicePanel();
    void buildPanelStrip();
    void buildBottomBar();
    void buildMineButton();
    void buildPickerSheet();
    void setTabOrders();
    void layoutViews();
    void fitMapToPanel();
    bool guardChoice();
    void routeAnswered();
    void showPreview(const Coordinate &coordinate);
    void movePanel(int top, bool animated);
    enum class AddressFor { Start, End, Stop };
    void chooseAddress(AddressFor target);
    // the controls between the places and below the times
    void buildStopControls();
    void buildPaceControls();
    // the stops' rows, made again from the trip's list
    void showStops();
    // the pace choice back to its title, once the end time no longer follows it
    void forgetPace();
    int panelHeight() const;
    void layoutPanel(int width);
    void setTip(const QString &text);
    void restore();
    // names each choice row by its value and describes it by its caption
    void readRows();
    bool startLocating();
    void buildGpxButton();
    void lookUpAddress(QLabel *label, const Coordinate &place);

    const Needs m_needs;
    ApplicationShell &m_shell;
    TripController *m_trip = nullptr;
    bool mIsStart = true;
    QPointer<SelectAddressViewController> m_picker;
    int m_animationDuration = 500;
    int m_panelTop = 0;
    QVariantAnimation *m_panelAnimation = nullptr;
    QVariantAnimation *m_pickerAnimation = nullptr;

    // outlets
    MapView *mv_main = nullptr;
    QWidget *v_top = nullptr;
    QWidget *bottomView = nullptr;
    QPushButton *btn_upDown = nullptr;
    QLabel *lb_start = nullptr;
    QLabel *lb_end = nullptr;
    QLabel *lb_startTime = nullptr;
    QLabel *lb_endTime = nullptr;
    QLabel *lb_startTip = nullptr;
    QLabel *lb_endTip = nullptr;
    QLabel *lb_startTimeTip = nullptr;
    QLabel *lb_endTimeTip = nullptr;
    QWidget *v_picker = nullptr;
    QPushButton *btn_picker = nullptr;
    QWidget *m_pickerSheet = nullptr; // the picker with its title and done button
    QLabel *m_pickerTitle = nullptr;
    DateTimePicker *dp_drive = nullptr;
    QPushButton *btn_exchange = nullptr;
    QPushButton *btn_info = nullptr;
    QPushButton *btn_mine = nullptr;
    FlatSwitch *enableSwitch = nullptr;
    QLabel *lb_tip = nullptr;
    QList<QPushButton *> m_choiceRows;
    QPushButton *btn_gpx = nullptr;
    FileChoice::Function m_chooseFile = FileChoice::gpxDialog;
    QPushButton *m_addStopButton = nullptr;
    QList<QWidget *> m_stopRows;
    QWidget *m_paceRow = nullptr;
    QComboBox *m_paceChoice = nullptr;
    QWidget *m_evenPaceRow = nullptr;
    FlatSwitch *m_evenPaceSwitch = nullptr;
};

#pragma once

#include "app/BaseViewController.h"
#include "app/MapServices.h"
#include "app/SafeArea.h"
#include "modes/SpotController.h"
#include "platform/Coordinate.h"
#include "spot/FavoritesDelegate.h"
#include "ui/MapViewDelegate.h"

class ActivityIndicatorView;
class AlertPresenter;
class ApplicationShell;
class Clock;
class DeviceMetrics;
class FlatButton;
class FlatSwitch;
class Location;
class MapView;
class QLabel;
class QLineEdit;
class QPushButton;
class TMPreferenceUtil;

// The screen of the fixed-location mode. The user drags the map under a pin
// fixed at its centre; the centre is the candidate place (the
// SpotController's), shown as two numbers and as an address. The switch
// stores the candidate in the location file with faking on or off. From here the user searches for
// a place (by
// "#:" coordinates or by address), saves favourites, opens the favourites
// list and the information screen, and changes to the route mode.
//
// The shell holds it as a screen like any other, but it is a plain screen:
// its overlay is not laid over it. Until the first address search puts the
// overlay on the window, showing it has no visible effect; from then on it
// covers the window, still saying "Searching". That is how the screen has
// always behaved, and it is kept.
//
// Unlike the route screen it asks the location file, not its memory,
// whether its simulation is on.
class SpotmimeViewController : public BaseViewController,
                               public MapViewDelegate,
                               public FavoritesDelegate
{
    Q_OBJECT

public:
    // What the screen and its favourites list use of the outside world; not
    // owned, kept alive by the caller. No location service: every lookup
    // fails at once; no device metrics: the default layout.
    struct Needs
    {
        Clock &clock;
        AlertPresenter &alerts;
        TMPreferenceUtil &preferences;
        Location *location = nullptr;
        DeviceMetrics *deviceMetrics = nullptr;
        MapServices map;
    };

    SpotmimeViewController(const Needs &needs, ApplicationShell &shell, QWidget *parent = nullptr);
    ~SpotmimeViewController() override;

    void viewWillAppear(bool animated) override;

    // the candidate place
    double latitude() const { return m_spot.candidate().latitude; }
    double longitude() const { return m_spot.candidate().longitude; }

    // Brings the switch in line with the location file and, with
    // `withLocation`, centres the map on the stored place (faking on) or on
    // the device's own position (faking off).
    void refreshViewByStatusWithLocation(bool withLocation);
    // Centres the map on `coordinate` at a 2000 m square region.
    void centerMapOn(const Coordinate &coordinate);

    // Tests and pictures turn the animations off (the name panel's fades,
    // the map's moves): changes then take effect at once.
    void setAnimationsEnabled(bool enabled);

    // --- map
    void regionWillChangeAnimated(MapView *mapView, bool animated) override;
    void regionDidChangeAnimated(MapView *mapView, bool animated) override;

    // --- the answers of the location service: position and lookups
    void locationSuccess(double latitude, double longitude);
    void locationFailed(const QString &error);
    void reverseGeocoderSuccess(const QString &address);
    void reverseGeocoderFailed(const QString &error);
    // the forward lookup of an address search
    void geocoderSuccess(const Coordinate &coordinate);
    void geocoderFailed(const QString &error);

    // --- favourites list
    void favoritesDidSelected() override;

public slots:
    void setEnable();
    void exchange();
    void mineLocationButtonClicked();
    void showInfoView();
    void showFavoritesView();

    // search and favourites
    void searchButtonClicked();
    bool textFieldShouldReturn();
    void addToFavorites();
    void okButtonClicked();
    void cancelButtonClicked();

protected:
    void viewDidLoad() override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void startLocating();
    void buildViews();
    void buildMap();
    void buildTopBar();
    void buildBottomBar();
    void buildMapControls();
    void buildNamePanel();
    void connectViews();
    void styleViews();
    void layoutViews();
    void dismissKeyboard(QLineEdit *field);

    const Needs m_needs;
    ApplicationShell &m_shell;

    SpotController m_spot;

    MapView *mainMapView = nullptr;
    QLabel *locationImageView = nullptr;
    FlatSwitch *enableSwitch = nullptr;
    FlatButton *favoritesButton = nullptr;
    FlatButton *addButton = nullptr;
    QLabel *addressLabel = nullptr;
    ActivityIndicatorView *spinner = nullptr;
    QWidget *alertView = nullptr; // the name panel, hidden while closed
    QLineEdit *favoritesNameField = nullptr;
    FlatButton *okButton = nullptr;
    FlatButton *cancelButton = nullptr;
    FlatButton *searchButton = nullptr;
    QLineEdit *searchField = nullptr;
    QLabel *bgLabel = nullptr;
    QWidget *topView = nullptr;
    QWidget *bottomView = nullptr;
    QLabel *alertTitleLabel = nullptr;
    QPushButton *btn_exchange = nullptr;
    QPushButton *btn_mine = nullptr;
    QLabel *lb_location = nullptr;
    QPushButton *m_infoButton = nullptr;

    // what viewDidLoad changed of the laid-out frames
    SafeArea m_safeArea;
    int m_alertViewShift = 0;
    double m_panelFadeDuration = 0.5; // seconds
    int m_locateAnimationMs = 500;
};

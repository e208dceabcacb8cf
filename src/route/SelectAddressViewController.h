#pragma once

#include "app/BaseViewController.h"
#include "app/MapServices.h"
#include "platform/Coordinate.h"
#include "ui/MapViewDelegate.h"

#include <QPointer>

#include <functional>

class ActivityIndicatorView;
class AlertPresenter;
class Clock;
class DeviceMetrics;
class FlatButton;
class MapView;
class QLabel;
class Location;
class QLineEdit;

// A place chosen by moving the map under a fixed pin, or by typing an
// address and searching; the address under the pin is looked up each time
// the map comes to rest. OK hands (latitude, longitude, address) to the
// closure given at creation, CANCEL hands back zeros; either way the screen
// dismisses itself, and the closure runs at most once, right after the
// dismissal is asked for.
class SelectAddressViewController : public BaseViewController, public MapViewDelegate
{
    Q_OBJECT

public:
    using Block = std::function<void(double latitude, double longitude, const QString &address)>;

    // What the screen uses of the outside world; not owned, kept alive by the
    // caller. No location service: every lookup fails at once; no device
    // metrics: the default layout.
    struct Needs
    {
        Clock &clock;
        AlertPresenter &alerts;
        Location *location = nullptr;
        DeviceMetrics *deviceMetrics = nullptr;
        MapServices map;
    };

    SelectAddressViewController(const Needs &needs, Block block, QWidget *parent = nullptr);
    ~SelectAddressViewController() override;

    void viewWillAppear(bool animated) override;

    void searchButtonClicked();
    void mineLocationButtonClicked();
    void cancelButtonClicked();
    void okButtonClicked();

    // MapViewDelegate
    void regionWillChangeAnimated(MapView *mapView, bool animated) override;
    void regionDidChangeAnimated(MapView *mapView, bool animated) override;

    // the answers of the location service: the own position
    void locationSuccess(double latitude, double longitude);
    void locationFailed(const QString &error);
    // the address under the pin; the two failures differ on purpose: a failed
    // reverse lookup forgets the address, a failed forward one keeps it
    void reverseGeocoderSuccess(const QString &address);
    void reverseGeocoderFailed(const QString &error);
    void geocoderAddressSuccess(const QString &address);
    void geocoderFailed(const QString &error);
    // the place of a typed address
    void geocoderSuccess(const Coordinate &coordinate);
    void geocoderCoordinateFailed(const QString &error);

    double latitude() const { return m_latitude; }
    double longitude() const { return m_longitude; }
    QString address() const { return m_address; }
    bool isLoading() const { return mIsLoading; }
    MapView *mapView() const { return mainMapView; }

    // how long the map takes to move to the own position, in milliseconds
    void setAnimationDuration(int msecs) { m_animationDuration = msecs; }

protected:
    void viewDidLoad() override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void buildViews();
    void layoutViews();
    void addressFound(const QString &address);
    void finish(double latitude, double longitude, const QString &address);

    const Needs m_needs;
    Block mBlock;
    double m_latitude = 0.0;
    double m_longitude = 0.0;
    QString m_address;
    bool mIsLoading = false;
    int m_animationDuration = 500;

    // outlets
    QLabel *bgLabel = nullptr;
    QWidget *topView = nullptr;
    QWidget *bottomView = nullptr;
    MapView *mainMapView = nullptr;
    QLabel *locationImageView = nullptr;
    QLabel *addressLabel = nullptr;
    ActivityIndicatorView *spinner = nullptr;
    QLineEdit *searchField = nullptr;
    FlatButton *searchButton = nullptr;
    FlatButton *btn_cancel = nullptr;
    FlatButton *btn_ok = nullptr;
    QWidget *m_addressCard = nullptr;
    QWidget *btn_mine = nullptr;
};

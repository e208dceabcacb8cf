#include "spot/SpotmimeViewController.h"

#include "app/ActivityIndicatorView.h"
#include "app/ApplicationShell.h"
#include "app/ModalPresentation.h"
#include "app/TopBar.h"
#include "location/Location.h"
#include "modes/ModeChange.h"
#include "platform/AlertPresenter.h"
#include "platform/gui/DeviceMetrics.h"
#include "spot/FavoritesViewController.h"
#include "spot/SearchInput.h"
#include "ui/CoordinateRegion.h"
#include "ui/FlatButton.h"
#include "ui/FlatSwitch.h"
#include "ui/MapView.h"
#include "ui/ViewHelpers.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>

namespace {
// every centring shows this much ground around the place, both ways
constexpr double RegionMeters = 2000.0;
} // namespace

SpotmimeViewController::SpotmimeViewController(const Needs &needs, ApplicationShell &shell,
                                               QWidget *parent)
    : BaseViewController(parent), m_needs(needs), m_shell(shell), m_spot(needs.preferences)
{
    setObjectName(QStringLiteral("SpotmimeViewController"));
    setClock(&needs.clock);
    buildViews();
}

SpotmimeViewController::~SpotmimeViewController()
{
    // the map reports its last moves while it goes; nobody is listening then
    mainMapView->setDelegate(nullptr);
}

void SpotmimeViewController::setAnimationsEnabled(bool enabled)
{
    m_panelFadeDuration = enabled ? 0.5 : 0.0;
    m_locateAnimationMs = enabled ? 500 : 0;
    mainMapView->setAnimationDuration(enabled ? 300 : 0);
}

void SpotmimeViewController::viewDidLoad()
{
    // A plain screen: the overlay exists, made over this view, but lies in no
    // view until an address search puts it on the window.
    HUD()->removeFromSuperview();

    styleViews();
    // the name panel sits a little higher, except on the one screen size
    // the panel was first drawn for
    const DeviceMetrics *metrics = m_needs.deviceMetrics;
    const bool panelScreen =
        metrics && metrics->screenPixelWidth() == 640 && metrics->screenPixelHeight() == 1136;
    m_alertViewShift = panelScreen ? 0 : -60;

    enableSwitch->setOn(false);
    refreshViewByStatusWithLocation(true);

    m_safeArea = SafeArea::of(metrics);
    TopBar{bgLabel, topView}.showStatusStrip(m_safeArea);
    layoutViews();
}

void SpotmimeViewController::viewWillAppear(bool animated)
{
    BaseViewController::viewWillAppear(animated);
    refreshViewByStatusWithLocation(false);
}

void SpotmimeViewController::resizeEvent(QResizeEvent *event)
{
    BaseViewController::resizeEvent(event);
    layoutViews();
}

void SpotmimeViewController::refreshViewByStatusWithLocation(bool withLocation)
{
    const bool enabled = m_spot.isOn();
    enableSwitch->setOn(enabled);
    if (!withLocation)
        return;
    if (!enabled) {
        // the map is centred when the position arrives
        startLocating();
        return;
    }
    centerMapOn(m_spot.takeStoredPlace());
}

void SpotmimeViewController::centerMapOn(const Coordinate &coordinate)
{
    const CoordinateRegion region =
        CoordinateRegionMakeWithDistance(coordinate, RegionMeters, RegionMeters);
    mainMapView->setRegion(mainMapView->regionThatFits(region));
    mainMapView->setCenterCoordinate(coordinate);
}

void SpotmimeViewController::regionWillChangeAnimated(MapView *, bool)
{
    addressLabel->setText(QString()); // read out as empty too
    spinner->show();
    spinner->startAnimating();
}

void SpotmimeViewController::regionDidChangeAnimated(MapView *mapView, bool)
{
    const Coordinate centre = mapView ? mapView->region().center : Coordinate{};
    lb_location->setText(QString::asprintf("%f\n%f", centre.latitude, centre.longitude));
    lb_location->show();
    m_spot.mapSettled(centre);
    if (!m_needs.location) {
        reverseGeocoderFailed(QString());
        return;
    }
    m_needs.location->addressWithCoordinate(
        centre, this,
        splitAnswer<QString>([this](const QString &value) { reverseGeocoderSuccess(value); },
                             [this](const QString &error) { reverseGeocoderFailed(error); }));
}

void SpotmimeViewController::reverseGeocoderSuccess(const QString &address)
{
    addressLabel->setText(address);
    spinner->stopAnimating();
    spinner->hide();
}

void SpotmimeViewController::reverseGeocoderFailed(const QString &)
{
    addressLabel->setText(tr("Unknow"));
    spinner->stopAnimating();
    spinner->hide();
}

void SpotmimeViewController::setEnable()
{
    m_spot.switchTo(enableSwitch->isOn());
    refreshViewByStatusWithLocation(false);
}

void SpotmimeViewController::exchange()
{
    const ModeChange::Result change = ModeChange(m_needs.preferences).fromLocationMode();
    if (change.refused()) {
        m_needs.alerts.showMessage(change.refusal, tr("OK"), this);
        return;
    }
    m_shell.changeToRouter();
}

void SpotmimeViewController::mineLocationButtonClicked()
{
    // shown wherever the overlay is now; see the class comment
    HUD()->show(true);
    startLocating();
}

void SpotmimeViewController::startLocating()
{
    // without a location service (a test of something else) there is no
    // position to wait for, and an overlay the current-location button
    // showed must not stay
    if (!m_needs.location) {
        locationFailed(QString());
        return;
    }
    m_needs.location->startLocation(
        this, splitAnswer<Coordinate>(
                  [this](const Coordinate &c) { locationSuccess(c.latitude, c.longitude); },
                  [this](const QString &error) { locationFailed(error); }));
}

void SpotmimeViewController::locationSuccess(double, double)
{
    HUD()->hide(true);
    // the service's own last position, not the answer's values
    const Coordinate position{m_needs.location->latitude(), m_needs.location->longitude()};
    const CoordinateRegion region = mainMapView->regionThatFits(
        CoordinateRegionMakeWithDistance(position, RegionMeters, RegionMeters));
    QPointer<MapView> map(mainMapView);
    mainMapView->animateCenterCoordinate(position, m_locateAnimationMs, [map, region] {
        if (map)
            map->setRegion(region, true);
    });
}

void SpotmimeViewController::locationFailed(const QString &)
{
    // the service has told the user already where it had something to say
    HUD()->hide(true);
}

void SpotmimeViewController::favoritesDidSelected()
{
    refreshViewByStatusWithLocation(true);
}

void SpotmimeViewController::showInfoView()
{
    m_shell.showInfoView(this, ModalTransition::CrossDissolve);
}

void SpotmimeViewController::showFavoritesView()
{
    auto *favorites =
        new FavoritesViewController({m_needs.preferences, m_needs.deviceMetrics, &m_needs.alerts});
    favorites->setDelegate(this);
    presentViewController(this, favorites, ModalTransition::CrossDissolve);
}

void SpotmimeViewController::mousePressEvent(QMouseEvent *event)
{
    // a tap anywhere outside the search field puts its keyboard away
    dismissKeyboard(searchField);
    BaseViewController::mousePressEvent(event);
}

bool SpotmimeViewController::eventFilter(QObject *watched, QEvent *event)
{
    // the switch flips from the keyboard as a tap flips it
    if (watched == enableSwitch && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) {
            enableSwitch->toggle();
            return true;
        }
    }
    return BaseViewController::eventFilter(watched, event);
}

void SpotmimeViewController::dismissKeyboard(QLineEdit *field)
{
    if (field->hasFocus())
        field->clearFocus();
}

// --- search

void SpotmimeViewController::searchButtonClicked()
{
    const SearchInput input = SearchInput::parse(searchField->text());
    switch (input.kind) {
    case SearchInput::Empty:
    case SearchInput::MalformedPair:
        // nothing at all happens; the text stays for the user to correct
        return;
    case SearchInput::CoordinatePair:
        searchField->clear();
        dismissKeyboard(searchField);
        // the move itself makes the place the candidate and looks its address up
        centerMapOn(input.coordinate);
        return;
    case SearchInput::Address:
        break;
    }
    // the switch stays as it is
    m_spot.searchStarted();
    searchField->clear();
    dismissKeyboard(searchField);
    showHUDViewOnWindowWithText(tr("Searching"));
    if (!m_needs.location) {
        geocoderFailed(QString());
        return;
    }
    m_needs.location->coordinateWithAddress(
        input.text, this,
        splitAnswer<Coordinate>([this](const Coordinate &value) { geocoderSuccess(value); },
                                [this](const QString &error) { geocoderFailed(error); }));
}

bool SpotmimeViewController::textFieldShouldReturn()
{
    searchButtonClicked();
    return true;
}

void SpotmimeViewController::geocoderSuccess(const Coordinate &coordinate)
{
    hideHUDView();
    m_spot.searchFound(coordinate, enableSwitch->isOn());
    centerMapOn(coordinate);
}

void SpotmimeViewController::geocoderFailed(const QString &)
{
    hideHUDView();
    // the record stays off, even with the switch on, until the switch is
    // flipped or the screen re-reads the file
    m_needs.alerts.showMessage(tr("Search Failed"), tr("OK"), this);
}

// --- favourites

void SpotmimeViewController::addToFavorites()
{
    favoritesNameField->setText(addressLabel->text());
    alertView->setGeometry(rect());
    ViewHelpers::setAlpha(alertView, 0.0);
    alertView->raise();
    alertView->show();
    favoritesNameField->setFocus();
    ViewHelpers::fadeShowAnimationDuration(alertView, m_panelFadeDuration, nullptr);
}

void SpotmimeViewController::okButtonClicked()
{
    m_spot.addFavorite(favoritesNameField->text());
    cancelButtonClicked();
}

void SpotmimeViewController::cancelButtonClicked()
{
    dismissKeyboard(favoritesNameField);
    ViewHelpers::fadeHideAnimationDuration(alertView, m_panelFadeDuration, nullptr);
}

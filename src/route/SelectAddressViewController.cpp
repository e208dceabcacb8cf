#include "route/SelectAddressViewController.h"

#include "app/ActivityIndicatorView.h"
#include "app/ModalPresentation.h"
#include "app/ModeScreenLayout.h"
#include "app/SafeArea.h"
#include "app/TopBar.h"
#include "location/Location.h"
#include "platform/AlertPresenter.h"
#include "platform/gui/DeviceMetrics.h"
#include "route/RouteImages.h"
#include "ui/Accessibility.h"
#include "ui/ColorPalette.h"
#include "ui/CoordinateRegion.h"
#include "ui/FlatButton.h"
#include "ui/MapView.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

#include <utility>

namespace {

constexpr int TopHeight = 56;
constexpr int BottomHeight = 70;

FlatButton *flatButton(QWidget *parent, const char *name, const QString &title)
{
    auto *button = new FlatButton(parent);
    button->setObjectName(QLatin1String(name));
    button->setText(title);
    button->setButtonColor(ColorPalette::turquoiseColor());
    button->setShadowColor(ColorPalette::greenSeaColor());
    button->setShadowHeight(3);
    button->setCornerRadius(3);
    QFont font = button->font();
    font.setPixelSize(16);
    button->setFont(font);
    button->setTitleColor(ColorPalette::cloudsColor(), false);
    button->setTitleColor(ColorPalette::cloudsColor(), true);
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

} // namespace

SelectAddressViewController::SelectAddressViewController(const Needs &needs, Block block,
                                                         QWidget *parent)
    : BaseViewController(parent), m_needs(needs), mBlock(std::move(block))
{
    setObjectName(QStringLiteral("SelectAddressViewController"));
    setClock(&needs.clock);
    buildViews();
}

SelectAddressViewController::~SelectAddressViewController() = default;

void SelectAddressViewController::buildViews()
{
    setAttribute(Qt::WA_StyledBackground);

    mainMapView = new MapView(this);
    mainMapView->setObjectName(QStringLiteral("mainMapView"));
    mainMapView->setServices(m_needs.map.tiles, m_needs.map.positionSources);
    mainMapView->setDelegate(this);

    locationImageView = new QLabel(this);
    locationImageView->setObjectName(QStringLiteral("locationImageView"));
    locationImageView->setPixmap(QPixmap::fromImage(RouteImages::centrePin()));
    locationImageView->setAttribute(Qt::WA_TransparentForMouseEvents);
    setDecorative(locationImageView);

    const TopBar bar = TopBar::build(this);
    bgLabel = bar.bgLabel;
    topView = bar.topView;
    searchField = new QLineEdit(topView);
    searchField->setObjectName(QStringLiteral("searchField"));
    connect(searchField, &QLineEdit::returnPressed, this,
            &SelectAddressViewController::searchButtonClicked);
    searchButton = flatButton(topView, "searchButton", QString());
    connect(searchButton, &QPushButton::clicked, this,
            &SelectAddressViewController::searchButtonClicked);

    m_addressCard = new QWidget(this);
    m_addressCard->setObjectName(QStringLiteral("addressCard"));
    m_addressCard->setAttribute(Qt::WA_StyledBackground);
    spinner = new ActivityIndicatorView(m_addressCard);
    spinner->setObjectName(QStringLiteral("spinner"));
    spinner->setColor(ColorPalette::asbestosColor());
    spinner->hide();
    addressLabel = new QLabel(m_addressCard);
    addressLabel->setObjectName(QStringLiteral("addressLabel"));
    addressLabel->setWordWrap(true);
    addressLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    auto *mine = new QPushButton(QStringLiteral("\u25ce"), this);
    mine->setObjectName(QStringLiteral("btn_mine"));
    mine->setAccessibleName(ModeScreenLayout::currentLocationName());
    mine->setCursor(Qt::PointingHandCursor);
    connect(mine, &QPushButton::clicked, this,
            &SelectAddressViewController::mineLocationButtonClicked);
    btn_mine = mine;

    bottomView = new QWidget(this);
    bottomView->setObjectName(QStringLiteral("bottomView"));
    bottomView->setAttribute(Qt::WA_StyledBackground);
    btn_cancel = flatButton(bottomView, "btn_cancel", QString());
    connect(btn_cancel, &QPushButton::clicked, this,
            &SelectAddressViewController::cancelButtonClicked);
    btn_ok = flatButton(bottomView, "btn_ok", QString());
    connect(btn_ok, &QPushButton::clicked, this, &SelectAddressViewController::okButtonClicked);

    setTabOrder(searchField, searchButton);
    setTabOrder(searchButton, mainMapView);
    setTabOrder(mainMapView, btn_mine);
    setTabOrder(btn_mine, btn_cancel);
    setTabOrder(btn_cancel, btn_ok);
}

void SelectAddressViewController::viewDidLoad()
{
    searchField->setPlaceholderText(tr("Enter Address Here"));
    searchField->setAccessibleName(tr("Enter Address Here"));
    searchButton->setText(tr("Search"));
    btn_cancel->setText(tr("CANCEL"));
    btn_ok->setText(tr("OK"));
    TopBar{bgLabel, topView}.showStatusStrip(SafeArea::of(m_needs.deviceMetrics));
    layoutViews();
}

void SelectAddressViewController::layoutViews()
{
    const int w = width();
    const int h = height();
    const SafeArea area = SafeArea::of(m_needs.deviceMetrics);
    TopBar{bgLabel, topView}.place(w, TopHeight, area);
    const int topHeight = topView->height();
    searchField->setGeometry(12, topHeight - 48, w - 12 - 96 - 12, 40);
    searchButton->setGeometry(w - 12 - 90, topHeight - 48, 90, 40);

    mainMapView->setGeometry(0, 0, w, h);
    const QSize pin = locationImageView->pixmap().deviceIndependentSize().toSize();
    // the pin's point marks the map's centre
    locationImageView->setGeometry(w / 2 - pin.width() / 2, h / 2 - pin.height(), pin.width(),
                                   pin.height());

    const int bottomHeight = BottomHeight + area.bottom();
    bottomView->setGeometry(0, h - bottomHeight, w, bottomHeight);
    const int buttonWidth = (w - 12 * 3) / 2;
    btn_cancel->setGeometry(12, 13, buttonWidth, 44);
    btn_ok->setGeometry(24 + buttonWidth, 13, buttonWidth, 44);

    m_addressCard->setGeometry(12, h - bottomHeight - 12 - 64, w - 24, 64);
    spinner->setGeometry(10, 14, 36, 36);
    addressLabel->setGeometry(spinner->isVisible() ? 52 : 16, 4, w - 24 - 68, 56);
    btn_mine->setGeometry(w - 12 - 44, m_addressCard->y() - 12 - 44, 44, 44);
}

void SelectAddressViewController::resizeEvent(QResizeEvent *event)
{
    BaseViewController::resizeEvent(event);
    layoutViews();
}

void SelectAddressViewController::keyPressEvent(QKeyEvent *event)
{
    // Escape is the keyboard's CANCEL
    if (event->key() == Qt::Key_Escape) {
        cancelButtonClicked();
        return;
    }
    BaseViewController::keyPressEvent(event);
}

void SelectAddressViewController::viewWillAppear(bool animated)
{
    BaseViewController::viewWillAppear(animated);
    mineLocationButtonClicked();
}

void SelectAddressViewController::mineLocationButtonClicked()
{
    showHUDView();
    if (!m_needs.location) {
        hideHUDView(); // no location service to ask
        return;
    }
    m_needs.location->startLocation(
        this, splitAnswer<Coordinate>(
                  [this](const Coordinate &c) { locationSuccess(c.latitude, c.longitude); },
                  [this](const QString &error) { locationFailed(error); }));
}

void SelectAddressViewController::locationSuccess(double, double)
{
    hideHUDView();
    // the service's last-known place, not the answer's values
    const Coordinate centre{m_needs.location->latitude(), m_needs.location->longitude()};
    const CoordinateRegion region =
        mainMapView->regionThatFits(CoordinateRegionMakeWithDistance(centre, 2000, 2000));
    QPointer<MapView> map(mainMapView);
    mainMapView->animateCenterCoordinate(centre, m_animationDuration, [map, region] {
        if (map)
            map->setRegion(region, true);
    });
}

void SelectAddressViewController::locationFailed(const QString &)
{
    hideHUDView();
}

void SelectAddressViewController::regionWillChangeAnimated(MapView *, bool)
{
    addressLabel->setText(QString()); // read out as empty too
    spinner->show();
    spinner->startAnimating();
    layoutViews();
}

void SelectAddressViewController::regionDidChangeAnimated(MapView *mapView, bool)
{
    mIsLoading = true;
    const Coordinate centre = mapView->centerCoordinate();
    m_latitude = centre.latitude;
    m_longitude = centre.longitude;
    // every settled move asks; a closed screen hears no late answer
    if (!m_needs.location) {
        reverseGeocoderFailed(QString());
        return;
    }
    m_needs.location->addressWithCoordinate(
        centre, this,
        splitAnswer<QString>([this](const QString &value) { reverseGeocoderSuccess(value); },
                             [this](const QString &error) { reverseGeocoderFailed(error); }));
}

void SelectAddressViewController::addressFound(const QString &address)
{
    mIsLoading = false;
    m_address = address.isEmpty() ? tr("Unknow") : address;
    addressLabel->setText(m_address);
    spinner->stopAnimating();
    spinner->hide();
    layoutViews();
}

void SelectAddressViewController::reverseGeocoderSuccess(const QString &address)
{
    addressFound(address);
}

void SelectAddressViewController::geocoderAddressSuccess(const QString &address)
{
    addressFound(address);
}

void SelectAddressViewController::reverseGeocoderFailed(const QString &)
{
    addressFound(QString());
}

void SelectAddressViewController::geocoderFailed(const QString &)
{
    // shows "Unknow" but keeps the address found before
    mIsLoading = false;
    addressLabel->setText(tr("Unknow"));
    spinner->stopAnimating();
    spinner->hide();
    layoutViews();
}

void SelectAddressViewController::searchButtonClicked()
{
    const QString text = searchField->text().trimmed();
    if (text.isEmpty())
        return;
    searchField->clear();
    searchField->clearFocus();
    showHUDView();
    if (!m_needs.location) {
        geocoderCoordinateFailed(QString());
        return;
    }
    m_needs.location->coordinateWithAddress(
        text, this,
        splitAnswer<Coordinate>([this](const Coordinate &value) { geocoderSuccess(value); },
                                [this](const QString &error) { geocoderCoordinateFailed(error); }));
}

void SelectAddressViewController::geocoderSuccess(const Coordinate &coordinate)
{
    mIsLoading = false;
    hideHUDView();
    m_latitude = coordinate.latitude;
    m_longitude = coordinate.longitude;
    mainMapView->setRegion(
        mainMapView->regionThatFits(CoordinateRegionMakeWithDistance(coordinate, 2000, 2000)));
    mainMapView->setCenterCoordinate(coordinate);
}

void SelectAddressViewController::geocoderCoordinateFailed(const QString &)
{
    mIsLoading = false;
    hideHUDView();
    m_needs.alerts.present({QString(), tr("Search Failed"), {tr("OK")}, {}}, this);
}

void SelectAddressViewController::okButtonClicked()
{
    if (mIsLoading) {
        showHUDHintText(tr("Address is loading, please wait"));
        return;
    }
    if (m_address.isEmpty())
        m_address = tr("Unknow");
    finish(m_latitude, m_longitude, m_address);
}

void SelectAddressViewController::cancelButtonClicked()
{
    finish(0.0, 0.0, QString());
}

void SelectAddressViewController::finish(double latitude, double longitude, const QString &address)
{
    // the closure runs once, right after the dismissal is asked for
    Block block = std::exchange(mBlock, Block());
    dismissViewController(this);
    if (block)
        block(latitude, longitude, address);
}

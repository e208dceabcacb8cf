// The fixed-location screen's views: what they are, how they look, and where
// they lie. The behaviour is in SpotmimeViewController.cpp.

#include "spot/SpotmimeViewController.h"

#include "app/ActivityIndicatorView.h"
#include "app/ModeScreenLayout.h"
#include "app/TopBar.h"
#include "ui/Accessibility.h"
#include "ui/ColorPalette.h"
#include "ui/FlatButton.h"
#include "ui/FlatSwitch.h"
#include "ui/MapView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

namespace {

constexpr int TopBarHeight = 56;
constexpr int BottomBarHeight = 108;
constexpr int Margin = 12;
constexpr QSize PinSize{34, 46};

QPixmap drawn(QSize size, const std::function<void(QPainter &)> &draw)
{
    const qreal scale = 3.0;
    QPixmap pixmap(size * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    return pixmap;
}

// a drop-shaped pin whose point is the bottom centre of the image
QPixmap pinImage()
{
    return drawn(PinSize, [](QPainter &p) {
        const QRectF head(3, 2, 28, 28);
        QPainterPath path;
        path.moveTo(17, 45);
        path.cubicTo(12, 36, 3, 28, 3, 16);
        path.arcTo(head, 180, -180);
        path.cubicTo(31, 28, 22, 36, 17, 45);
        p.setPen(QPen(ColorPalette::pomegranateColor(), 1.5));
        p.setBrush(ColorPalette::alizarinColor());
        p.drawPath(path);
        p.setPen(Qt::NoPen);
        p.setBrush(ColorPalette::whiteColor());
        p.drawEllipse(QPointF(17, 16), 6, 6);
    });
}

QIcon locateIcon()
{
    return QIcon(drawn({24, 24}, [](QPainter &p) {
        p.setPen(QPen(ColorPalette::peterRiverColor(), 2.2));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(QPointF(12, 12), 7, 7);
        for (const QLineF &tick : {QLineF(12, 1, 12, 5), QLineF(12, 19, 12, 23),
                                   QLineF(1, 12, 5, 12), QLineF(19, 12, 23, 12)})
            p.drawLine(tick);
        p.setPen(Qt::NoPen);
        p.setBrush(ColorPalette::peterRiverColor());
        p.drawEllipse(QPointF(12, 12), 3, 3);
    }));
}

QIcon infoIcon()
{
    return QIcon(drawn({24, 24}, [](QPainter &p) {
        p.setPen(QPen(ColorPalette::cloudsColor(), 1.8));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(QPointF(12, 12), 10, 10);
        QFont font = p.font();
        font.setPixelSize(14);
        font.setBold(true);
        font.setFamily(QStringLiteral("serif"));
        p.setFont(font);
        p.drawText(QRectF(0, 1, 24, 22), Qt::AlignCenter, QStringLiteral("i"));
    }));
}

void styleFlatButton(FlatButton *button)
{
    button->setButtonColor(ColorPalette::turquoiseColor());
    button->setShadowColor(ColorPalette::greenSeaColor());
    button->setShadowHeight(3);
    button->setCornerRadius(3);
    QFont font = button->font();
    font.setPixelSize(16);
    button->setFont(font);
    button->setTitleColor(ColorPalette::cloudsColor(), false);
    button->setTitleColor(ColorPalette::cloudsColor(), true);
}

FlatButton *flatButton(QWidget *parent, const char *name)
{
    auto *button = new FlatButton(parent);
    button->setObjectName(QLatin1String(name));
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

} // namespace

void SpotmimeViewController::buildViews()
{
    // built bottom to top: each part lies over the ones made before it
    setAttribute(Qt::WA_StyledBackground);
    buildMap();
    buildTopBar();
    buildBottomBar();
    buildMapControls();
    buildNamePanel();
    connectViews();
    layoutViews();
}

// The map and the pin fixed at its centre.
void SpotmimeViewController::buildMap()
{
    mainMapView = new MapView(this);
    mainMapView->setObjectName(QStringLiteral("mainMapView"));
    mainMapView->setServices(m_needs.map.tiles, m_needs.map.positionSources);
    mainMapView->setDelegate(this);

    locationImageView = new QLabel(this);
    locationImageView->setObjectName(QStringLiteral("locationImageView"));
    locationImageView->setPixmap(pinImage());
    locationImageView->setFixedSize(PinSize);
    // the pin is drawing: drags go through it to the map
    locationImageView->setAttribute(Qt::WA_TransparentForMouseEvents);
    setDecorative(locationImageView);
}

// The information button and the address search.
void SpotmimeViewController::buildTopBar()
{
    const TopBar bar = TopBar::build(this);
    bgLabel = bar.bgLabel;
    topView = bar.topView;
    m_infoButton = new QPushButton(topView);
    m_infoButton->setObjectName(QStringLiteral("infoButton"));
    m_infoButton->setIcon(infoIcon());
    m_infoButton->setIconSize({24, 24});
    m_infoButton->setAccessibleName(ModeScreenLayout::informationName());
    m_infoButton->setCursor(Qt::PointingHandCursor);
    searchField = new QLineEdit(topView);
    searchField->setObjectName(QStringLiteral("searchField"));
    searchField->setClearButtonEnabled(true);
    searchField->setFixedHeight(36);
    searchField->setAccessibleName(tr("Enter Address Here"));
    searchButton = flatButton(topView, "searchButton");
    auto *topRow = new QHBoxLayout(topView);
    topRow->setContentsMargins(8, 10, Margin, 10);
    topRow->setSpacing(8);
    topRow->addWidget(m_infoButton);
    topRow->addWidget(searchField, 1);
    topRow->addWidget(searchButton);
}

// The candidate's address above the switch and the favourites buttons.
void SpotmimeViewController::buildBottomBar()
{
    bottomView = new QWidget(this);
    bottomView->setObjectName(QStringLiteral("bottomView"));
    bottomView->setAttribute(Qt::WA_StyledBackground);
    spinner = new ActivityIndicatorView(bottomView);
    spinner->setObjectName(QStringLiteral("spinner"));
    spinner->setColor(ColorPalette::asbestosColor());
    spinner->setFixedSize(22, 22);
    spinner->hide();
    addressLabel = new QLabel(bottomView);
    addressLabel->setObjectName(QStringLiteral("addressLabel"));
    addressLabel->setWordWrap(true);
    makeValueLabel(addressLabel, tr("Address"));
    enableSwitch = new FlatSwitch(bottomView);
    enableSwitch->setObjectName(QStringLiteral("enableSwitch"));
    enableSwitch->setAccessibleName(tr("Spotmime"));
    enableSwitch->setFixedSize(80, 32);
    enableSwitch->setFocusPolicy(Qt::StrongFocus);
    enableSwitch->installEventFilter(this);
    favoritesButton = flatButton(bottomView, "favoritesButton");
    addButton = flatButton(bottomView, "addButton");
    auto *bottomColumn = new QVBoxLayout(bottomView);
    bottomColumn->setContentsMargins(Margin, 8, Margin, 0);
    bottomColumn->setSpacing(8);
    auto *addressRow = new QHBoxLayout;
    addressRow->setSpacing(8);
    addressRow->addWidget(spinner, 0, Qt::AlignVCenter);
    addressRow->addWidget(addressLabel, 1);
    auto *addressBox = new QWidget(bottomView);
    addressBox->setFixedHeight(40);
    addressBox->setLayout(addressRow);
    addressRow->setContentsMargins(0, 0, 0, 0);
    bottomColumn->addWidget(addressBox);
    auto *controlRow = new QHBoxLayout;
    controlRow->setSpacing(10);
    controlRow->addWidget(enableSwitch);
    controlRow->addStretch(1);
    controlRow->addWidget(favoritesButton);
    controlRow->addWidget(addButton);
    bottomColumn->addLayout(controlRow);
    bottomColumn->addStretch(1);
}

// What floats over the map's lower corners: the coordinate, the own-position
// button and the mode button.
void SpotmimeViewController::buildMapControls()
{
    lb_location = new QLabel(this);
    lb_location->setObjectName(QStringLiteral("lb_location"));
    makeValueLabel(lb_location, tr("Coordinate"));
    btn_mine = new QPushButton(this);
    btn_mine->setObjectName(QStringLiteral("btn_mine"));
    btn_mine->setIcon(locateIcon());
    btn_mine->setIconSize({24, 24});
    btn_mine->setAccessibleName(ModeScreenLayout::currentLocationName());
    btn_mine->setCursor(Qt::PointingHandCursor);
    btn_exchange = new QPushButton(QStringLiteral("\u21c4 ") + tr("Trekmime"), this);
    btn_exchange->setObjectName(QStringLiteral("btn_exchange"));
    btn_exchange->setAccessibleName(ModeScreenLayout::modeName());
    btn_exchange->setAccessibleDescription(tr("Trekmime"));
    btn_exchange->setCursor(Qt::PointingHandCursor);
}

// The panel that asks for a favourite's name, hidden until it is needed.
void SpotmimeViewController::buildNamePanel()
{
    alertView = new QWidget(this);
    alertView->setObjectName(QStringLiteral("alertView"));
    alertView->setAttribute(Qt::WA_StyledBackground);
    alertView->hide();
    auto *card = new QWidget(alertView);
    card->setObjectName(QStringLiteral("alertCard"));
    card->setAttribute(Qt::WA_StyledBackground);
    card->setFixedWidth(320);
    alertTitleLabel = new QLabel(card);
    alertTitleLabel->setObjectName(QStringLiteral("alertTitleLabel"));
    alertTitleLabel->setAlignment(Qt::AlignCenter);
    alertTitleLabel->setWordWrap(true);
    favoritesNameField = new QLineEdit(card);
    favoritesNameField->setObjectName(QStringLiteral("favoritesNameField"));
    favoritesNameField->setFixedHeight(38);
    favoritesNameField->setAccessibleName(tr("Name"));
    cancelButton = flatButton(card, "cancelButton");
    okButton = flatButton(card, "okButton");
    auto *cardColumn = new QVBoxLayout(card);
    cardColumn->setContentsMargins(18, 18, 18, 18);
    cardColumn->setSpacing(14);
    cardColumn->addWidget(alertTitleLabel);
    cardColumn->addWidget(favoritesNameField);
    auto *answerRow = new QHBoxLayout;
    answerRow->setSpacing(12);
    answerRow->addWidget(cancelButton, 1);
    answerRow->addWidget(okButton, 1);
    cardColumn->addLayout(answerRow);
    auto *panelColumn = new QVBoxLayout(alertView);
    panelColumn->addStretch(2);
    panelColumn->addWidget(card, 0, Qt::AlignHCenter);
    panelColumn->addStretch(3);
}

void SpotmimeViewController::connectViews()
{
    connect(enableSwitch, &FlatSwitch::valueChanged, this, &SpotmimeViewController::setEnable);
    connect(favoritesButton, &QPushButton::clicked, this,
            &SpotmimeViewController::showFavoritesView);
    connect(addButton, &QPushButton::clicked, this, &SpotmimeViewController::addToFavorites);
    connect(okButton, &QPushButton::clicked, this, &SpotmimeViewController::okButtonClicked);
    connect(cancelButton, &QPushButton::clicked, this,
            &SpotmimeViewController::cancelButtonClicked);
    connect(searchButton, &QPushButton::clicked, this,
            &SpotmimeViewController::searchButtonClicked);
    // Return in either field runs the search, as it always has
    connect(searchField, &QLineEdit::returnPressed, this,
            &SpotmimeViewController::textFieldShouldReturn);
    connect(favoritesNameField, &QLineEdit::returnPressed, this,
            &SpotmimeViewController::textFieldShouldReturn);
    connect(btn_exchange, &QPushButton::clicked, this, &SpotmimeViewController::exchange);
    connect(btn_mine, &QPushButton::clicked, this,
            &SpotmimeViewController::mineLocationButtonClicked);
    connect(m_infoButton, &QPushButton::clicked, this, &SpotmimeViewController::showInfoView);
    // Tab follows the screen from top to bottom, the map's corner controls
    // before the bar below it
    const QList<QWidget *> order{m_infoButton, searchField,  searchButton,    mainMapView, btn_mine,
                                 btn_exchange, enableSwitch, favoritesButton, addButton};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

void SpotmimeViewController::styleViews()
{
    btn_exchange->setStyleSheet(QStringLiteral("border-radius: 8px;"));
    alertTitleLabel->setText(tr("Please Enter Favorites Name"));
    searchField->setPlaceholderText(tr("Enter Address Here"));
    searchButton->setText(tr("Search"));
    addButton->setText(tr("Add To \u2192"));
    favoritesButton->setText(tr("Favorites"));
    cancelButton->setText(tr("CANCEL"));
    okButton->setText(tr("OK"));

    enableSwitch->setOnColor(ColorPalette::turquoiseColor());
    enableSwitch->setOffColor(ColorPalette::cloudsColor());
    enableSwitch->setOnBackgroundColor(ColorPalette::midnightBlueColor());
    enableSwitch->setOffBackgroundColor(ColorPalette::silverColor());
    for (FlatButton *button : {favoritesButton, addButton, okButton, cancelButton, searchButton})
        styleFlatButton(button);
    for (FlatButton *button : {favoritesButton, addButton, searchButton})
        button->setFixedHeight(38);
    okButton->setFixedHeight(40);
    cancelButton->setFixedHeight(40);
}

void SpotmimeViewController::layoutViews()
{
    const int w = width();
    const int h = height();
    const int bottomExtra = m_safeArea.bottom();
    const int bottomHeight = BottomBarHeight + bottomExtra;

    const int mapTop = TopBar{bgLabel, topView}.place(w, TopBarHeight, m_safeArea);
    bottomView->setGeometry(0, h - bottomHeight, w, bottomHeight);
    const int mapBottom = h - bottomHeight;
    mainMapView->setGeometry(0, mapTop, w, qMax(0, mapBottom - mapTop));

    const QPoint centre = mainMapView->geometry().center();
    locationImageView->move(centre.x() - PinSize.width() / 2 + 1,
                            mainMapView->y() + mainMapView->height() / 2 - PinSize.height());

    // the map's corner controls sit above the bottom bar as it is first laid
    // out, and move up with it on a tall screen
    // (high enough to leave the map's tile credit readable)
    const int rowBottom = h - BottomBarHeight - 2 * Margin - bottomExtra;
    lb_location->adjustSize();
    lb_location->setGeometry(Margin, rowBottom - 44, qMax(lb_location->width(), 110), 44);
    lb_location->setVisible(!lb_location->text().isEmpty());
    const int exchangeWidth = btn_exchange->sizeHint().width() + 8;
    btn_exchange->setGeometry(w - Margin - exchangeWidth, rowBottom - 40, exchangeWidth, 40);
    btn_mine->setGeometry(w - Margin - 44, rowBottom - 40 - 10 - 44, 44, 44);

    if (alertView->isVisible())
        alertView->setGeometry(rect());
    else
        alertView->setGeometry(0, m_alertViewShift, w, h);

    for (QWidget *overMap :
         {static_cast<QWidget *>(locationImageView), static_cast<QWidget *>(lb_location),
          static_cast<QWidget *>(btn_mine), static_cast<QWidget *>(btn_exchange),
          static_cast<QWidget *>(alertView)})
        overMap->raise();
}

#include "spot/FavoritesViewController.h"

#include "app/ModalPresentation.h"
#include "modes/SpotController.h"
#include "platform/DeviceMetrics.h"
#include "platform/Services.h"
#include "settings/TMPreferenceUtil.h"
#include "spot/FavoritesDelegate.h"
#include "spot/FavoritesTableView.h"
#include "ui/ColorPalette.h"
#include "ui/FlatButton.h"
#include "ui/ViewHelpers.h"

#include <QHBoxLayout>
#include <QLabel>

namespace {

constexpr int kStatusBarHeight = 20;
constexpr int kTopBarHeight = 56;
constexpr int kBottomBarHeight = 44;
constexpr int kTallTopExtra = 10;
constexpr int kTallBottomExtra = 34;

void styleFlatButton(FlatButton *button)
{
    button->setButtonColor(ColorPalette::turquoiseColor());
    button->setShadowColor(ColorPalette::greenSeaColor());
    button->setCornerRadius(3);
    QFont font = button->font();
    font.setPixelSize(15);
    button->setFont(font);
    button->setTitleColor(ColorPalette::cloudsColor(), false);
    button->setTitleColor(ColorPalette::cloudsColor(), true);
    button->setFixedSize(72, 36);
    button->setCursor(Qt::PointingHandCursor);
}

} // namespace

FavoritesViewController::FavoritesViewController(const Services &services, QWidget *parent)
    : QWidget(parent), m_services(services)
{
    setObjectName(QStringLiteral("FavoritesViewController"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(
        QStringLiteral("QWidget#FavoritesViewController { background: #ffffff; }"
                       "QWidget#topView, QLabel#bgLabel { background: #2c3e50; }"
                       "QLabel#titleLabel { color: #ecf0f1; font-size: 19px; font-weight: 600; }"
                       "QWidget#bottomView { background: #ecf0f1; border-top: 1px solid #bdc3c7; }"
                       "QLabel#titleTopLabel { color: #95a5a6; font-size: 13px; }"));

    bgLabel = new QLabel(this);
    bgLabel->setObjectName(QStringLiteral("bgLabel"));
    bgLabel->hide();
    topView = new QWidget(this);
    topView->setObjectName(QStringLiteral("topView"));
    topView->setAttribute(Qt::WA_StyledBackground);
    backButton = new FlatButton(topView);
    backButton->setObjectName(QStringLiteral("backButton"));
    titleLabel = new QLabel(topView);
    titleLabel->setObjectName(QStringLiteral("titleLabel"));
    titleLabel->setAlignment(Qt::AlignCenter);
    editButton = new FlatButton(topView);
    editButton->setObjectName(QStringLiteral("editButton"));
    auto *topRow = new QHBoxLayout(topView);
    topRow->setContentsMargins(12, 10, 12, 10);
    topRow->addWidget(backButton);
    topRow->addWidget(titleLabel, 1);
    topRow->addWidget(editButton);

    mainTableView = new FavoritesTableView(this);
    mainTableView->setObjectName(QStringLiteral("mainTableView"));
    mainTableView->setAccessibleName(tr("Favorites"));

    bottomView = new QWidget(this);
    bottomView->setObjectName(QStringLiteral("bottomView"));
    bottomView->setAttribute(Qt::WA_StyledBackground);
    titleTopLabel = new QLabel(bottomView);
    titleTopLabel->setObjectName(QStringLiteral("titleTopLabel"));
    titleTopLabel->setAlignment(Qt::AlignCenter);
    auto *bottomRow = new QHBoxLayout(bottomView);
    bottomRow->setContentsMargins(12, 0, 12, 0);
    bottomRow->addWidget(titleTopLabel);

    connect(backButton, &QPushButton::clicked, this, &FavoritesViewController::done);
    connect(editButton, &QPushButton::clicked, this, &FavoritesViewController::edit);
    connect(mainTableView, &FavoritesTableView::rowSelected, this,
            &FavoritesViewController::didSelectRow);
    connect(mainTableView, &FavoritesTableView::deleteRequested, this,
            &FavoritesViewController::commitDelete);

    viewDidLoad();
}

void FavoritesViewController::viewDidLoad()
{
    backButton->setText(tr("Back"));
    editButton->setText(tr("Edit"));
    titleLabel->setText(tr("Favorites"));
    titleTopLabel->setText(tr("Favorites"));
    styleFlatButton(backButton);
    styleFlatButton(editButton);

    m_favorites = m_services.preferences->favoritePreference();
    // never enabled again while the list is open, and not disabled again
    // when its last row goes
    if (m_favorites.isEmpty()) {
        editButton->setEnabled(false);
        ViewHelpers::setAlpha(editButton, 0.5);
    }

    for (const FavoriteEntry &entry : std::as_const(m_favorites)) {
        QString name = entry.name();
        if (name.trimmed().isEmpty())
            name = tr("Unknow");
        auto *item = new QListWidgetItem(name, mainTableView);
        if (!entry.isPlace())
            item->setFlags(Qt::ItemIsEnabled);
    }
    if (!m_favorites.isEmpty())
        mainTableView->setCurrentRow(0);

    const DeviceMetrics *metrics = m_services.deviceMetrics;
    if (metrics && metrics->isVersion7OrLater()) {
        m_statusBarShown = true;
        bgLabel->show();
        m_tallScreen = metrics->isTallScreen();
    }
    layoutViews();
}

void FavoritesViewController::setDelegate(FavoritesDelegate *delegate)
{
    m_delegate = delegate;
    m_delegateLifetime = delegate ? delegate->favoritesLifetime() : nullptr;
}

FavoritesDelegate *FavoritesViewController::delegate() const
{
    return m_delegateLifetime ? m_delegate : nullptr;
}

void FavoritesViewController::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layoutViews();
}

void FavoritesViewController::layoutViews()
{
    const int w = width();
    const int top = m_statusBarShown ? kStatusBarHeight : 0;
    const int topHeight = kTopBarHeight + (m_tallScreen ? kTallTopExtra : 0);
    const int bottomHeight = kBottomBarHeight + (m_tallScreen ? kTallBottomExtra : 0);
    bgLabel->setGeometry(0, 0, w, kStatusBarHeight);
    topView->setGeometry(0, top, w, topHeight);
    bottomView->setGeometry(0, height() - bottomHeight, w, bottomHeight);
    const int tableTop = top + topHeight;
    mainTableView->setGeometry(0, tableTop, w, qMax(0, height() - bottomHeight - tableTop));
}

void FavoritesViewController::done()
{
    dismissViewController(this);
}

void FavoritesViewController::edit()
{
    const bool editing = mainTableView->isEditing();
    editButton->setText(editing ? tr("Edit") : tr("Done"));
    mainTableView->setEditing(!editing);
}

void FavoritesViewController::commitDelete(int row)
{
    if (row < 0 || row >= m_favorites.size())
        return;
    // the list keeps every other entry exactly as read, readable or not
    m_services.preferences->removeFavorite(m_favorites, row);
    delete mainTableView->takeItem(row);
}

void FavoritesViewController::didSelectRow(int row)
{
    if (row < 0 || row >= m_favorites.size() || !m_favorites.at(row).isPlace())
        return;
    mainTableView->setCurrentRow(row);
    const FavoriteEntry &entry = m_favorites.at(row);
    SpotController(*m_services.preferences).chooseFavorite(entry);
    done();
    if (FavoritesDelegate *listener = delegate())
        listener->favoritesDidSelected();
}

#include "spot/FavoritesViewController.h"

#include "app/ModalPresentation.h"
#include "app/TopBar.h"
#include "gpx/GpxFile.h"
#include "modes/SpotController.h"
#include "platform/AlertPresenter.h"
#include "platform/gui/DeviceMetrics.h"
#include "settings/FavoriteEntry.h"
#include "settings/TMPreferenceUtil.h"
#include "spot/FavoritesDelegate.h"
#include "spot/FavoritesTableView.h"
#include "ui/ColorPalette.h"
#include "ui/FlatButton.h"
#include "ui/ViewHelpers.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>

namespace {

constexpr int TopBarHeight = 56;
constexpr int BottomBarHeight = 44;

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

FavoritesViewController::FavoritesViewController(const Needs &needs, QWidget *parent)
    : QWidget(parent), m_needs(needs)
{
    setObjectName(QStringLiteral("FavoritesViewController"));
    setAttribute(Qt::WA_StyledBackground);

    const TopBar bar = TopBar::build(this);
    bgLabel = bar.bgLabel;
    topView = bar.topView;
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
    importButton = new FlatButton(bottomView);
    importButton->setObjectName(QStringLiteral("importButton"));
    exportButton = new FlatButton(bottomView);
    exportButton->setObjectName(QStringLiteral("exportButton"));
    auto *bottomRow = new QHBoxLayout(bottomView);
    bottomRow->setContentsMargins(12, 4, 12, 4);
    bottomRow->addWidget(importButton);
    bottomRow->addWidget(titleTopLabel, 1);
    bottomRow->addWidget(exportButton);

    connect(backButton, &QPushButton::clicked, this, &FavoritesViewController::done);
    connect(editButton, &QPushButton::clicked, this, &FavoritesViewController::edit);
    connect(importButton, &QPushButton::clicked, this, &FavoritesViewController::importFavorites);
    connect(exportButton, &QPushButton::clicked, this, &FavoritesViewController::exportFavorites);
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
    importButton->setText(tr("Import"));
    importButton->setAccessibleName(tr("Import favorites from a GPX file"));
    exportButton->setText(tr("Export"));
    exportButton->setAccessibleName(tr("Export favorites to a GPX file"));
    for (FlatButton *button : {backButton, editButton, importButton, exportButton})
        styleFlatButton(button);

    loadRows();
    // never enabled again while the list is open (unless an import fills
    // it), and not disabled again when its last row goes
    if (m_favorites.isEmpty()) {
        editButton->setEnabled(false);
        ViewHelpers::setAlpha(editButton, 0.5);
    }

    m_safeArea = SafeArea::of(m_needs.deviceMetrics);
    TopBar{bgLabel, topView}.showStatusStrip(m_safeArea);
    layoutViews();
}

void FavoritesViewController::loadRows()
{
    m_favorites = m_needs.preferences.favoritePreference();
    mainTableView->clear();
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
}

void FavoritesViewController::report(const QString &error)
{
    if (m_needs.alerts)
        m_needs.alerts->showMessage(error, tr("OK"), this);
}

void FavoritesViewController::importFavorites()
{
    const QString path = m_chooseFile(this, FileChoice::Mode::Open, tr("Import favorites"));
    if (path.isEmpty())
        return;
    // the whole file is read and checked before the first favourite is added
    const Gpx::Content content = Gpx::read(path);
    if (!content.ok())
        return report(tr("This GPX file cannot be used: %1").arg(content.error));
    for (const FavoriteEntry &waypoint : content.waypoints) {
        // the name panel's append, one waypoint after the other
        if (!m_needs.preferences.addFavorite(waypoint)) {
            report(tr("The favorites could not be saved."));
            break;
        }
    }
    loadRows();
    if (!m_favorites.isEmpty()) {
        editButton->setEnabled(true);
        ViewHelpers::setAlpha(editButton, 1.0);
    }
}

void FavoritesViewController::exportFavorites()
{
    const QString path = m_chooseFile(this, FileChoice::Mode::Save, tr("Export favorites"));
    if (path.isEmpty())
        return;
    const QString error = Gpx::write(path, m_favorites, {});
    if (!error.isEmpty())
        report(error);
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

void FavoritesViewController::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        done();
    else
        QWidget::keyPressEvent(event);
}

void FavoritesViewController::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layoutViews();
}

void FavoritesViewController::layoutViews()
{
    const int w = width();
    const int tableTop = TopBar{bgLabel, topView}.place(w, TopBarHeight, m_safeArea);
    const int bottomHeight = BottomBarHeight + m_safeArea.bottom();
    bottomView->setGeometry(0, height() - bottomHeight, w, bottomHeight);
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
    m_needs.preferences.removeFavorite(m_favorites, row);
    delete mainTableView->takeItem(row);
}

void FavoritesViewController::didSelectRow(int row)
{
    if (row < 0 || row >= m_favorites.size() || !m_favorites.at(row).isPlace())
        return;
    mainTableView->setCurrentRow(row);
    const FavoriteEntry &entry = m_favorites.at(row);
    SpotController(m_needs.preferences).chooseFavorite(entry);
    done();
    if (FavoritesDelegate *listener = delegate())
        listener->favoritesDidSelected();
}

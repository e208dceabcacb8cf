#include "apps/WhitelistViewController.h"

#include "app/ModalPresentation.h"
#include "app/ModalScreenFrame.h"
#include "app/SafeArea.h"
#include "applications/ApplicationList.h"
#include "apps/ApplicationIconLoader.h"
#include "apps/WhitelistRow.h"
#include "platform/gui/DeviceMetrics.h"
#include "settings/TMPreferenceUtil.h"
#include "ui/ColorPalette.h"
#include "ui/FlatButton.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

WhitelistViewController::WhitelistViewController(const Needs &needs, QWidget *parent)
    : QWidget(parent), m_needs(needs)
{
    setObjectName(QStringLiteral("WhitelistViewController"));
    setAttribute(Qt::WA_StyledBackground);

    const ModalScreenFrame::TitleBar bar = ModalScreenFrame::buildTopBar(this);
    bgLabel = bar.bgLabel;
    topView = bar.topView;
    titleTopLabel = bar.titleTopLabel;

    mainTableView = new QScrollArea(this);
    mainTableView->setObjectName(QStringLiteral("mainTableView"));
    mainTableView->setWidgetResizable(true);
    // the rows take the keyboard, and scroll themselves into view
    mainTableView->setFocusPolicy(Qt::NoFocus);
    mainTableView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    mainTableView->verticalScrollBar()->setSingleStep(WhitelistRow::RowHeight / 2);

    titleLabel = new QLabel;
    titleLabel->setObjectName(QStringLiteral("titleLabel"));

    viewDidLoad();
}

void WhitelistViewController::viewDidLoad()
{
    // reading never creates the file: a missing one is an empty record
    m_whiteListPreferences = m_needs.preferences.whitePreference();
    if (m_needs.applications)
        m_appArray = ApplicationList::installedAppModel(*m_needs.applications, m_needs.preferences);
    buildRows();

    // made after the rows, so that Tab reaches it after them, as it lies below them
    bottomView = new QWidget(this);
    bottomView->setObjectName(QStringLiteral("bottomView"));
    backButton = new FlatButton(bottomView);
    backButton->setObjectName(QStringLiteral("backButton"));
    connect(backButton, &QAbstractButton::clicked, this, &WhitelistViewController::done);
    auto *bottomRow = new QHBoxLayout(bottomView);
    bottomRow->setContentsMargins(16, 10, 16, 10);
    bottomRow->addWidget(backButton);
    bottomRow->setAlignment(backButton, Qt::AlignTop);
    backButton->setText(tr("Done"));
    backButton->setButtonColor(ColorPalette::turquoiseColor());
    backButton->setShadowColor(ColorPalette::greenSeaColor());
    backButton->setCornerRadius(3.0);
    QFont font = this->font();
    font.setPixelSize(15);
    backButton->setFont(font);
    backButton->setTitleColor(ColorPalette::cloudsColor(), false);
    backButton->setTitleColor(ColorPalette::cloudsColor(), true);
    backButton->setMinimumHeight(40);

    titleLabel->setText(tr("White List"));
    titleTopLabel->setText(tr("White List"));

    if (SafeArea::of(m_needs.deviceMetrics).statusBar)
        bgLabel->show();
    layoutBars();
}

void WhitelistViewController::buildRows()
{
    auto *content = new QWidget;
    content->setObjectName(QStringLiteral("rows"));
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(titleLabel);
    m_rows.reserve(m_appArray.size());
    for (int row = 0; row < m_appArray.size(); ++row) {
        const ApplicationModel &model = m_appArray.at(row);
        const QImage icon =
            ApplicationIconLoader::load(model.appIcon(), ApplicationIconLoader::SmallIconFormat,
                                        ApplicationIconLoader::mainScreenScale());
        auto *cell = new WhitelistRow(model.appName(), icon, content);
        cell->setObjectName(QStringLiteral("Cell"));
        // a row without a name is still told apart by a screen reader
        if (model.appName().isEmpty())
            cell->setAccessibleName(model.appBundle());
        cell->setAccessibleDescription(model.appBundle());
        cell->setChecked(m_whiteListPreferences.isWhitelisted(model.appBundle()));
        connect(cell, &QAbstractButton::toggled, this, [this, row] { didSelectRow(row); });
        connect(cell, &WhitelistRow::moveFocus, this, [this, row](int step) {
            if (WhitelistRow *next = rowAt(row + step)) {
                next->setFocus(Qt::OtherFocusReason);
                mainTableView->ensureWidgetVisible(next, 0, 0);
            }
        });
        column->addWidget(cell);
        m_rows.append(cell);
    }
    column->addStretch(1);
    mainTableView->setWidget(content);
}

void WhitelistViewController::didSelectRow(int row)
{
    if (row < 0 || row >= m_appArray.size())
        return;
    const QString bundle = m_appArray.at(row).appBundle();
    // a failed write is not shown: the mark follows the record in memory
    m_needs.preferences.toggleWhitelist(m_whiteListPreferences, bundle);
    const bool on = m_whiteListPreferences.isWhitelisted(bundle);
    WhitelistRow *cell = m_rows.at(row);
    const QSignalBlocker blocker(cell);
    cell->setChecked(on);
    cell->update();
}

void WhitelistViewController::done()
{
    dismissViewController(this);
}

void WhitelistViewController::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        done();
    else
        QWidget::keyPressEvent(event);
}

void WhitelistViewController::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layoutBars();
}

void WhitelistViewController::layoutBars()
{
    const ModalScreenFrame frame = ModalScreenFrame::forSize(size(), m_needs.deviceMetrics);
    bgLabel->setGeometry(frame.statusStrip);
    topView->setGeometry(frame.topView);
    mainTableView->setGeometry(frame.body);
    bottomView->setGeometry(frame.bottomView);
}

// The route screen's widgets: what the original kept in its interface file,
// built in code, and where each goes for the screen's size.

#include "route/TrekmimeViewController.h"

#include "app/ModeScreenLayout.h"
#include "app/SafeArea.h"
#include "platform/gui/DeviceMetrics.h"
#include "route/DateTimePicker.h"
#include "ui/Accessibility.h"
#include "ui/ColorPalette.h"
#include "ui/FlatSwitch.h"
#include "ui/MapView.h"

#include <QComboBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace {

// the panel always leaves room for a status bar
constexpr int StatusHeight = SafeArea::StatusBarHeight;
constexpr int RowHeight = 56;
constexpr int StopRowHeight = 44;
constexpr int AddStopHeight = 40;
constexpr int OptionHeight = 44; // the pace and even-pace rows
constexpr int StripHeight = 54;
constexpr int BottomHeight = 70;
constexpr int SheetHeight = 44 + 216;

QIcon locateIcon()
{
    QPixmap pixmap(QSize(48, 48));
    pixmap.setDevicePixelRatio(2.0);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ColorPalette::peterRiverColor(), 2.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QPointF(12, 12), 6.5, 6.5);
    painter.drawLine(QPointF(12, 1.5), QPointF(12, 5.5));
    painter.drawLine(QPointF(12, 18.5), QPointF(12, 22.5));
    painter.drawLine(QPointF(1.5, 12), QPointF(5.5, 12));
    painter.drawLine(QPointF(18.5, 12), QPointF(22.5, 12));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColorPalette::peterRiverColor());
    painter.drawEllipse(QPointF(12, 12), 3, 3);
    return QIcon(pixmap);
}

QLabel *label(QWidget *parent, const char *name, const QString &text)
{
    auto *result = new QLabel(text, parent);
    result->setObjectName(QLatin1String(name));
    return result;
}

// One of the panel's four rows: a caption, the chosen value and a chevron,
// the whole row one button.
QPushButton *choiceRow(QWidget *panel, const char *name, const char *caption, const char *value)
{
    auto *row = new QPushButton(panel);
    row->setObjectName(QLatin1String(name));
    row->setProperty("choiceRow", true);
    row->setCursor(Qt::PointingHandCursor);
    QLabel *captionLabel = label(row, caption, QString());
    captionLabel->setProperty("caption", true);
    QLabel *valueLabel = label(row, value, QString());
    valueLabel->setProperty("value", true);
    QLabel *chevron = label(row, "chevron", QStringLiteral("\u203a"));
    // the row is read as one control, its value first (see readRows())
    for (QLabel *part : {captionLabel, valueLabel, chevron}) {
        part->setAttribute(Qt::WA_TransparentForMouseEvents);
        setDecorative(part);
    }
    return row;
}

} // namespace

void TrekmimeViewController::buildViews()
{
    // built bottom to top: each part lies over the ones made before it
    setAttribute(Qt::WA_StyledBackground);
    buildMap();
    buildChoicePanel();
    buildBottomBar();
    buildMineButton();
    buildPickerSheet();
    buildGpxButton();
    setTabOrders();
}

void TrekmimeViewController::buildMap()
{
    mv_main = new MapView(this);
    mv_main->setObjectName(QStringLiteral("mv_main"));
    mv_main->setServices(m_needs.map.tiles, m_needs.map.positionSources);
    mv_main->setDelegate(this);
}

// The panel over the map: a row for each of the four choices and, below
// them, the strip with the title and the panel's buttons.
void TrekmimeViewController::buildChoicePanel()
{
    v_top = new QWidget(this);
    v_top->setObjectName(QStringLiteral("v_top"));
    v_top->setAttribute(Qt::WA_StyledBackground);
    v_top->setFixedHeight(panelHeight());
    QLabel *backing = label(v_top, "statusBacking", QString());
    backing->setGeometry(0, 0, 4096, StatusHeight);
    setDecorative(backing);
    struct RowSpec
    {
        const char *row;
        const char *caption;
        const char *value;
        QLabel **captionLabel;
        QLabel **valueLabel;
        void (TrekmimeViewController::*choose)();
    };
    const RowSpec rows[] = {
        {"row_start", "lb_startTip", "lb_start", &lb_startTip, &lb_start,
         &TrekmimeViewController::chooseStart},
        {"row_end", "lb_endTip", "lb_end", &lb_endTip, &lb_end, &TrekmimeViewController::chooseEnd},
        {"row_startTime", "lb_startTimeTip", "lb_startTime", &lb_startTimeTip, &lb_startTime,
         &TrekmimeViewController::chooseStartTime},
        {"row_endTime", "lb_endTimeTip", "lb_endTime", &lb_endTimeTip, &lb_endTime,
         &TrekmimeViewController::chooseEndTime},
    };
    for (const RowSpec &spec : rows) {
        QPushButton *row = choiceRow(v_top, spec.row, spec.caption, spec.value);
        *spec.captionLabel = row->findChild<QLabel *>(QLatin1String(spec.caption));
        *spec.valueLabel = row->findChild<QLabel *>(QLatin1String(spec.value));
        connect(row, &QPushButton::clicked, this, spec.choose);
        m_choiceRows.append(row);
    }
    buildStopControls();
    buildPaceControls();
    buildPanelStrip();
}

void TrekmimeViewController::buildPanelStrip()
{
    auto *strip = new QWidget(v_top);
    strip->setObjectName(QStringLiteral("strip"));
    strip->setAttribute(Qt::WA_StyledBackground);
    auto *title = label(strip, "titleLabel", tr("Trekmime"));
    title->setGeometry(16, 0, 200, StripHeight);
    btn_info = new QPushButton(QStringLiteral("i"), strip);
    btn_info->setObjectName(QStringLiteral("btn_info"));
    btn_info->setAccessibleName(ModeScreenLayout::informationName());
    btn_info->setCursor(Qt::PointingHandCursor);
    connect(btn_info, &QPushButton::clicked, this, &TrekmimeViewController::showInfoView);
    btn_upDown = new QPushButton(strip);
    btn_upDown->setObjectName(QStringLiteral("btn_upDown"));
    btn_upDown->setCursor(Qt::PointingHandCursor);
    connect(btn_upDown, &QPushButton::clicked, this, &TrekmimeViewController::upDown);
}

// The bar along the bottom: the route switch, the tip beside it and the
// mode button.
void TrekmimeViewController::buildBottomBar()
{
    bottomView = new QWidget(this);
    bottomView->setObjectName(QStringLiteral("bottomView"));
    bottomView->setAttribute(Qt::WA_StyledBackground);
    enableSwitch = new FlatSwitch(bottomView);
    enableSwitch->setObjectName(QStringLiteral("enableSwitch"));
    enableSwitch->setAccessibleName(tr("Trekmime"));
    enableSwitch->setFocusPolicy(Qt::StrongFocus); // Tab reaches it, Space flips it
    connect(enableSwitch, &FlatSwitch::valueChanged, this, &TrekmimeViewController::setEnable);
    lb_tip = label(bottomView, "lb_tip", QString());
    lb_tip->setWordWrap(true);
    // read out as the switch's description, not as a label of its own
    setDecorative(lb_tip);
    btn_exchange = new QPushButton(QStringLiteral("\u21c4 ") + tr("Spotmime"), bottomView);
    btn_exchange->setObjectName(QStringLiteral("btn_exchange"));
    btn_exchange->setAccessibleName(ModeScreenLayout::modeName());
    btn_exchange->setAccessibleDescription(tr("Spotmime"));
    btn_exchange->setCursor(Qt::PointingHandCursor);
    connect(btn_exchange, &QPushButton::clicked, this, &TrekmimeViewController::exchange);
}

void TrekmimeViewController::buildMineButton()
{
    btn_mine = new QPushButton(this);
    btn_mine->setObjectName(QStringLiteral("btn_mine"));
    btn_mine->setIcon(locateIcon());
    btn_mine->setIconSize(QSize(24, 24));
    btn_mine->setAccessibleName(ModeScreenLayout::currentLocationName());
    btn_mine->setCursor(Qt::PointingHandCursor);
    connect(btn_mine, &QPushButton::clicked, this,
            &TrekmimeViewController::mineLocationButtonClicked);
}

// The time picker: a sheet with a title, a done button and the picker, over
// a backdrop that closes it when touched.
void TrekmimeViewController::buildPickerSheet()
{
    v_picker = new QWidget(this);
    v_picker->setObjectName(QStringLiteral("v_picker"));
    v_picker->hide();
    btn_picker = new QPushButton(v_picker);
    btn_picker->setObjectName(QStringLiteral("btn_picker"));
    btn_picker->setAccessibleName(tr("Confirm time"));
    btn_picker->setFocusPolicy(Qt::NoFocus);
    connect(btn_picker, &QPushButton::clicked, this, &TrekmimeViewController::pickerButtonClicked);
    m_pickerSheet = new QWidget(v_picker);
    m_pickerSheet->setObjectName(QStringLiteral("pickerSheet"));
    m_pickerSheet->setAttribute(Qt::WA_StyledBackground);
    m_pickerTitle = label(m_pickerSheet, "pickerTitle", QString());
    auto *done = new QPushButton(tr("Done"), m_pickerSheet);
    done->setObjectName(QStringLiteral("pickerDone"));
    done->setCursor(Qt::PointingHandCursor);
    connect(done, &QPushButton::clicked, this, &TrekmimeViewController::pickerButtonClicked);
    dp_drive = new DateTimePicker(m_pickerSheet);
    dp_drive->setObjectName(QStringLiteral("dp_drive"));
    connect(dp_drive, &DateTimePicker::valueChanged, this,
            &TrekmimeViewController::pickerValueChanged);
    connect(dp_drive, &DateTimePicker::activated, this,
            &TrekmimeViewController::pickerButtonClicked);
    setTabOrder(dp_drive, done);
}

// top to bottom, as the panel shows them; made again when the stops change
void TrekmimeViewController::setTabOrders()
{
    QList<QWidget *> chain{m_choiceRows[0]};
    for (QWidget *row : std::as_const(m_stopRows))
        chain.append(row->findChild<QPushButton *>());
    chain << m_addStopButton << m_choiceRows[1] << m_choiceRows[2] << m_choiceRows[3]
          << m_paceChoice << m_evenPaceSwitch << btn_gpx << btn_info << btn_upDown << mv_main
          << btn_mine << enableSwitch << btn_exchange;
    for (qsizetype i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
}

int TrekmimeViewController::panelHeight() const
{
    return StatusHeight + 4 * RowHeight + int(m_stopRows.size()) * StopRowHeight + AddStopHeight +
           2 * OptionHeight + StripHeight;
}

// The panel's rows from the top: start, the stops, adding a stop, end, the
// two times, the pace that fills the end time, and the even-pace switch.
void TrekmimeViewController::layoutPanel(int w)
{
    const auto placeRow = [](QPushButton *row, int y, int rowWidth) {
        row->setGeometry(0, y, rowWidth, RowHeight);
        const auto labels = row->findChildren<QLabel *>();
        for (QLabel *part : labels) {
            if (part->property("caption").toBool())
                part->setGeometry(16, 0, 92, RowHeight);
            else if (part->property("value").toBool())
                part->setGeometry(108, 0, std::max(0, rowWidth - 108 - 36), RowHeight);
            else
                part->setGeometry(rowWidth - 30, 0, 16, RowHeight);
        }
    };
    int y = StatusHeight;
    placeRow(m_choiceRows[0], y, w);
    y += RowHeight;
    for (QWidget *row : std::as_const(m_stopRows)) {
        row->setGeometry(0, y, w, StopRowHeight);
        for (QLabel *part : row->findChildren<QLabel *>()) {
            if (part->property("caption").toBool())
                part->setGeometry(16, 0, 92, StopRowHeight);
            else
                part->setGeometry(108, 0, std::max(0, w - 108 - 56), StopRowHeight);
        }
        row->findChild<QPushButton *>()->setGeometry(w - 16 - 36, (StopRowHeight - 36) / 2, 36, 36);
        y += StopRowHeight;
    }
    m_addStopButton->setGeometry(0, y, w, AddStopHeight);
    y += AddStopHeight;
    for (int i = 1; i < 4; ++i) {
        placeRow(m_choiceRows[i], y, w);
        y += RowHeight;
    }
    m_paceRow->setGeometry(0, y, w, OptionHeight);
    m_paceRow->findChild<QLabel *>(QStringLiteral("lb_pace"))->setGeometry(16, 0, 92, OptionHeight);
    const int paceWidth = std::min(170, std::max(0, w - 124));
    m_paceChoice->setGeometry(108, (OptionHeight - 32) / 2, paceWidth, 32);
    m_paceRow->findChild<QLabel *>(QStringLiteral("paceArrow"))
        ->setGeometry(108 + paceWidth - 24, 0, 16, OptionHeight);
    y += OptionHeight;
    m_evenPaceRow->setGeometry(0, y, w, OptionHeight);
    m_evenPaceRow->findChild<QLabel *>()->setGeometry(16, 0, 200, OptionHeight);
    m_evenPaceSwitch->setGeometry(w - 16 - 64, (OptionHeight - 28) / 2, 64, 28);
}

void TrekmimeViewController::layoutViews()
{
    const int w = width();
    const int h = height();
    const bool tall = SafeArea::of(m_needs.deviceMetrics).tallScreen;
    const int panel = panelHeight();
    v_top->setFixedHeight(panel);
    v_top->setGeometry(0, m_panelTop, w, panel);
    layoutPanel(w);
    QWidget *strip = btn_upDown->parentWidget();
    strip->setGeometry(0, panel - StripHeight, w, StripHeight);
    btn_upDown->setGeometry(w - 16 - 34, (StripHeight - 34) / 2, 34, 34);
    btn_info->setGeometry(w - 16 - 34 - 12 - 34, (StripHeight - 34) / 2, 34, 34);
    const int gpxWidth = btn_gpx->sizeHint().width();
    btn_gpx->setGeometry(btn_info->x() - 12 - gpxWidth, (StripHeight - 34) / 2, gpxWidth, 34);

    // on tall screens the bar grows up from the bottom edge, over the home indicator
    const int bottomHeight = BottomHeight + (tall ? SafeArea::HomeIndicatorHeight : 0);
    bottomView->setGeometry(0, h - bottomHeight, w, bottomHeight);
    enableSwitch->setGeometry(16, 20, 80, 30);
    const int exchangeWidth = std::max(btn_exchange->sizeHint().width(), 120);
    btn_exchange->setGeometry(w - 16 - exchangeWidth, 15, exchangeWidth, 40);
    lb_tip->setGeometry(108, 13, std::max(0, w - 108 - exchangeWidth - 24), 44);
    btn_mine->setGeometry(w - 16 - 48, h - bottomHeight - 16 - 48, 48, 48);
    fitMapToPanel();

    v_picker->setGeometry(0, 0, w, h);
    btn_picker->setGeometry(0, 0, w, h);
    const int sheetTop = m_pickerSheet->property("shown").toBool() ? h - SheetHeight : h;
    m_pickerSheet->setGeometry(0, sheetTop, w, SheetHeight);
    m_pickerTitle->setGeometry(20, 0, w - 140, 44);
    if (auto *done = m_pickerSheet->findChild<QPushButton *>(QStringLiteral("pickerDone")))
        done->setGeometry(w - 100, 4, 90, 36);
    dp_drive->setGeometry(0, 44, w, 216);
}

void TrekmimeViewController::fitMapToPanel()
{
    // the map shows what the panel and the bottom bar leave free, so that
    // what it is framed on is in sight
    const int top = std::max(0, v_top->y() + v_top->height());
    mv_main->setGeometry(0, top, width(), std::max(0, bottomView->y() - top));
    mv_main->lower();
}

int TrekmimeViewController::panelTop() const
{
    return m_panelTop;
}

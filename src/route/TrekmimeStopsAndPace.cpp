// The route screen's choices beyond the two places and times: the stops on
// the way, the pace that fills the end time, and the even-pace switch.

#include "route/TrekmimeViewController.h"

#include "routing/RoutePace.h"
#include "ui/Accessibility.h"
#include "ui/ColorPalette.h"
#include "ui/FlatSwitch.h"

#include <QComboBox>
#include <QDateTime>
#include <QLabel>
#include <QPushButton>

#include <limits>

namespace {

// the pace choice's entries, by the names RoutePace knows
struct Pace
{
    const char16_t *name;
    const char *label;
};
constexpr Pace Paces[] = {{u"walk", QT_TRANSLATE_NOOP("TrekmimeViewController", "Walk")},
                          {u"run", QT_TRANSLATE_NOOP("TrekmimeViewController", "Run")},
                          {u"cycle", QT_TRANSLATE_NOOP("TrekmimeViewController", "Cycle")},
                          {u"drive", QT_TRANSLATE_NOOP("TrekmimeViewController", "Drive")}};

QLabel *partLabel(QWidget *parent, const char *name, const char *property)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setProperty(property, true);
    return label;
}

// A row of the panel with its caption; the control in it carries the same
// name, so the caption is left out of the accessible tree.
QWidget *captionedRow(QWidget *panel, const char *rowName, const char *captionName,
                      const QString &caption)
{
    auto *row = new QWidget(panel);
    row->setObjectName(QString::fromLatin1(rowName));
    row->setAttribute(Qt::WA_StyledBackground);
    QLabel *label = partLabel(row, captionName, "caption");
    label->setText(caption);
    setDecorative(label);
    return row;
}

} // namespace

// --- building ---------------------------------------------------------------

void TrekmimeViewController::buildStopControls()
{
    m_addStopButton = new QPushButton(QStringLiteral("+  ") + tr("Add stop"), v_top);
    m_addStopButton->setObjectName(QStringLiteral("addStopButton"));
    m_addStopButton->setAccessibleName(tr("Add stop"));
    m_addStopButton->setAccessibleDescription(tr("A place to pass between Start and End"));
    m_addStopButton->setCursor(Qt::PointingHandCursor);
    connect(m_addStopButton, &QPushButton::clicked, this, &TrekmimeViewController::addStop);
}

void TrekmimeViewController::buildPaceControls()
{
    m_paceRow = captionedRow(v_top, "paceRow", "lb_pace", tr("Pace"));
    m_paceChoice = new QComboBox(m_paceRow);
    m_paceChoice->setObjectName(QStringLiteral("paceChoice"));
    for (const Pace &pace : Paces) {
        const QString name = QString::fromUtf16(pace.name);
        m_paceChoice->addItem(QStringLiteral("%1 %2 km/h")
                                  .arg(tr(pace.label))
                                  .arg(RoutePace::speedKmh(name).value_or(0)),
                              name);
    }
    m_paceChoice->setPlaceholderText(tr("Choose a pace"));
    m_paceChoice->setCurrentIndex(-1);
    m_paceChoice->setAccessibleName(tr("Pace"));
    m_paceChoice->setAccessibleDescription(tr("Fills the end time from the route's length"));
    connect(m_paceChoice, &QComboBox::activated, this, &TrekmimeViewController::choosePace);
    // the style sheet takes the platform's arrow away: one drawn over the choice
    QLabel *arrow = partLabel(m_paceRow, "paceArrow", "arrow");
    arrow->setText(QStringLiteral("\u25be"));
    arrow->setAttribute(Qt::WA_TransparentForMouseEvents);
    setDecorative(arrow);

    m_evenPaceRow = captionedRow(v_top, "evenPaceRow", "lb_evenPace", tr("Even pace"));
    m_evenPaceSwitch = new FlatSwitch(m_evenPaceRow);
    m_evenPaceSwitch->setObjectName(QStringLiteral("evenPaceSwitch"));
    m_evenPaceSwitch->setAccessibleName(tr("Even pace"));
    m_evenPaceSwitch->setAccessibleDescription(tr("Equal steps along the road"));
    m_evenPaceSwitch->setFocusPolicy(Qt::StrongFocus);
    m_evenPaceSwitch->setOn(false); // the routing service's points, as they come
    m_evenPaceSwitch->setOnColor(ColorPalette::turquoiseColor());
    m_evenPaceSwitch->setOffColor(ColorPalette::cloudsColor());
    m_evenPaceSwitch->setOnBackgroundColor(ColorPalette::midnightBlueColor());
    m_evenPaceSwitch->setOffBackgroundColor(ColorPalette::silverColor());
    connect(m_evenPaceSwitch, &FlatSwitch::valueChanged, this,
            &TrekmimeViewController::setEvenPace);
}

// --- stops --------------------------------------------------------------------

void TrekmimeViewController::addStop()
{
    if (!guardChoice())
        return;
    if (m_trip->stops().size() >= MaxStops) {
        showHUDHintText(tr("At most %1 stops").arg(MaxStops));
        return;
    }
    chooseAddress(AddressFor::Stop);
}

void TrekmimeViewController::stopChosen(double latitude, double longitude, const QString &address)
{
    // before the end, after the stops chosen so far
    if (!m_trip->addStop(m_trip->stops().size(), {latitude, longitude}, address))
        return; // a place on the equator or the prime meridian is not chosen
    showStops();
    m_addStopButton->setFocus();
}

void TrekmimeViewController::removeStop(qsizetype index)
{
    if (!guardChoice() || !m_trip->removeStop(index))
        return;
    showStops();
    m_addStopButton->setFocus();
}

void TrekmimeViewController::showStops()
{
    // the button pressed may be one of these rows': they go once it is done
    for (QWidget *row : std::as_const(m_stopRows)) {
        row->hide();
        row->deleteLater();
    }
    m_stopRows.clear();
    const QList<TripController::Stop> &stops = m_trip->stops();
    for (qsizetype i = 0; i < stops.size(); ++i) {
        auto *row = new QWidget(v_top);
        row->setObjectName(QStringLiteral("stopRow"));
        row->setAttribute(Qt::WA_StyledBackground);
        const QString role = tr("Stop %1").arg(i + 1);
        QLabel *caption = partLabel(row, "stopCaption", "caption");
        caption->setText(role);
        setDecorative(caption);
        QLabel *value = partLabel(row, "stopAddress", "value");
        value->setText(stops[i].address);
        makeValueLabel(value, role);
        auto *remove = new QPushButton(QStringLiteral("\u2715"), row);
        remove->setObjectName(QStringLiteral("removeStopButton"));
        remove->setAccessibleName(tr("Remove stop %1").arg(i + 1));
        remove->setAccessibleDescription(stops[i].address);
        remove->setCursor(Qt::PointingHandCursor);
        connect(remove, &QPushButton::clicked, this, [this, i] { removeStop(i); });
        row->show();
        m_stopRows.append(row);
    }
    setTabOrders();
    const int before = v_top->height();
    layoutViews();
    if (m_panelTop < 0 && v_top->height() != before)
        up(); // a panel out of the way stays so at its new height
}

// --- pace -------------------------------------------------------------------------

void TrekmimeViewController::choosePace(int index)
{
    const auto refuse = [this](const QString &why) {
        forgetPace();
        showHUDHintText(why);
    };
    if (!guardChoice())
        return forgetPace();
    if (m_trip->startTime() <= 0)
        return refuse(tr("Please choose Start Time"));
    if (m_trip->isPlanning() || m_trip->isRouteError() || m_trip->points().size() < 2)
        return refuse(tr("Choose Start and End first: the pace needs the planned route"));
    const std::optional<double> kmh = RoutePace::speedKmh(m_paceChoice->itemData(index).toString());
    // the time picker stores whole seconds; past 32 bits no trip can end
    const double start = m_trip->startTime();
    const std::optional<qint32> end =
        kmh && start <= std::numeric_limits<qint32>::max()
            ? RoutePace::endTime(qint32(start), m_trip->routeLengthMeters(), *kmh)
            : std::nullopt;
    if (!end)
        return refuse(tr("At this pace the trip would end too late"));
    m_trip->setEndTime(*end);
    lb_endTime->setText(
        QDateTime::fromSecsSinceEpoch(*end).toString(QStringLiteral("MM-dd HH:mm")));
    readRows();
}

void TrekmimeViewController::forgetPace()
{
    m_paceChoice->setCurrentIndex(-1);
}

// --- even pace ----------------------------------------------------------------------

void TrekmimeViewController::setEvenPace(bool on)
{
    if (!guardChoice()) {
        m_evenPaceSwitch->setOn(!on, true);
        return;
    }
    m_trip->setEvenPace(on);
}

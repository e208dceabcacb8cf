// The route screen's "Load GPX…" action: a GPX file's track as the planned
// route, in place of the routing service's.

#include "route/TrekmimeViewController.h"

#include "gpx/GpxFile.h"
#include "location/Location.h"
#include "platform/AlertPresenter.h"

#include <QLabel>
#include <QPushButton>

void TrekmimeViewController::buildGpxButton()
{
    QWidget *strip = btn_info->parentWidget();
    btn_gpx = new QPushButton(tr("Load GPX…"), strip);
    btn_gpx->setObjectName(QStringLiteral("btn_gpx"));
    btn_gpx->setAccessibleName(tr("Load a GPX file as the route"));
    btn_gpx->setCursor(Qt::PointingHandCursor);
    connect(btn_gpx, &QPushButton::clicked, this, &TrekmimeViewController::loadGpx);
}

void TrekmimeViewController::loadGpx()
{
    if (!guardChoice())
        return;
    const QString path = m_chooseFile(this, FileChoice::Mode::Open, tr("Load GPX…"));
    if (path.isEmpty())
        return;
    const Gpx::Content content = Gpx::read(path);
    QString refusal = content.error;
    if (content.ok() && content.track.isEmpty())
        refusal = tr("The file holds no track or route.");
    if (!refusal.isEmpty()) {
        m_needs.alerts.showMessage(tr("This GPX file cannot be used: %1").arg(refusal), tr("OK"),
                                   this);
        return;
    }
    m_trip->usePlannedPoints(content.track); // draws the route when it says it is done
    lookUpAddress(lb_start, m_trip->start());
    lookUpAddress(lb_end, m_trip->end());
}

// The place's address as the address picker finds it, shown in `label` once
// known (the place's coordinates meanwhile), unless the place changed since.
void TrekmimeViewController::lookUpAddress(QLabel *label, const Coordinate &place)
{
    label->setText(place.toString());
    readRows();
    const bool start = label == lb_start;
    const auto show = [this, label, place, start](const QString &address) {
        if ((start ? m_trip->start() : m_trip->end()) != place)
            return;
        label->setText(address.isEmpty() ? tr("Unknow") : address);
        readRows();
    };
    if (!m_needs.location)
        return show(QString());
    m_needs.location->addressWithCoordinate(
        place, this, splitAnswer<QString>(show, [show](const QString &) { show(QString()); }));
}

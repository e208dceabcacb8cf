#include "shell/HiddenUserLocationMapView.h"

#include "ui/MapView.h"

#include <QApplication>

HiddenUserLocationMapView::HiddenUserLocationMapView(PositionSourceFactory *positionSources,
                                                     QObject *parent)
    : UserLocationMapView(parent), m_map(new MapView)
{
    m_map->setPositionSourceFactory(positionSources);
    m_map->setDelegate(this);
    m_map->setAttribute(Qt::WA_TranslucentBackground);
    m_map->setAutoFillBackground(false);
    m_map->hide();
}

HiddenUserLocationMapView::~HiddenUserLocationMapView()
{
    delete m_map; // null when the window it was attached to took it along
}

void HiddenUserLocationMapView::attachHidden()
{
    QWidget *window = QApplication::activeWindow();
    if (!window) {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *candidate : windows) {
            if (candidate->isVisible() && candidate != m_map) {
                window = candidate;
                break;
            }
        }
    }
    if (!window)
        return;
    // one point, just off the top-left corner: live but never seen
    m_map->setParent(window);
    m_map->setGeometry(-1, -1, 1, 1);
    m_map->show();
}

void HiddenUserLocationMapView::detach()
{
    m_map->hide();
    m_map->setParent(nullptr);
}

void HiddenUserLocationMapView::setShowsUserLocation(bool shows)
{
    m_map->setShowsUserLocation(shows);
}

void HiddenUserLocationMapView::didUpdateUserLocation(MapView *, const PositionFix &fix)
{
    emit UserLocationMapView::didUpdateUserLocation(fix);
}

void HiddenUserLocationMapView::didFailToLocateUserWithError(MapView *, int code,
                                                             const QString &description)
{
    emit didFailToLocateUser(code, description);
}

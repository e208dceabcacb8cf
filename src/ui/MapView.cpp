#include "ui/MapView.h"

#include "ui/MapViewDelegate.h"
#include "ui/TileSource.h"
#include "ui/ZoomGeometry.h"

#include <QAccessible>

MapView::MapView(QWidget *parent) : QWidget(parent), m_animation(&m_map.camera())
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_AcceptTouchEvents);
    setFocusPolicy(Qt::WheelFocus);
    setAccessibleName(tr("Map"));
    setMouseTracking(false);
    m_map.camera().setViewportSize(QSizeF(size()));
    m_settleTimer.setSingleShot(true);
    connect(&m_settleTimer, &QTimer::timeout, this, &MapView::settle);
    connect(&m_map, &SlippyMap::changed, this, qOverload<>(&MapView::update));
    connect(&m_animation, &CameraAnimation::stepped, this, qOverload<>(&MapView::update));
    connect(&m_animation, &CameraAnimation::finished, this, [this] { settleSoon(); });
}

MapView::~MapView()
{
    // a completion would reach a screen that may already be half gone
    m_animation.abandon();
    if (m_positionSource)
        m_positionSource->stopUpdatingLocation();
}

void MapView::setServices(TileSource *tiles, PositionSourceFactory *positionSources)
{
    setTileSource(tiles);
    setPositionSourceFactory(positionSources);
}

void MapView::setTileSource(TileSource *source)
{
    m_map.setTileSource(source);
    update();
}

void MapView::setPositionSourceFactory(PositionSourceFactory *factory)
{
    const bool shows = m_showsUserLocation;
    setShowsUserLocation(false);
    m_positionSources = factory;
    setShowsUserLocation(shows);
}

void MapView::setDelegate(MapViewDelegate *delegate)
{
    m_delegate = delegate;
    for (const MapAnnotationPtr &annotation : m_map.annotations())
        m_map.setAnnotationImage(annotation.get(),
                                 m_delegate ? m_delegate->viewForAnnotation(this, *annotation)
                                            : QImage());
    for (const MapOverlayPtr &overlay : m_map.overlays()) {
        const auto renderer =
            m_delegate ? m_delegate->rendererForOverlay(this, *overlay) : std::nullopt;
        m_map.setOverlayRenderer(overlay.get(), renderer.value_or(MapPolylineRenderer()));
    }
    update();
}

// ---- moves

void MapView::beginChange(bool animated)
{
    if (m_changing)
        return;
    m_changing = true;
    m_changeAnimated = animated;
    if (m_delegate)
        m_delegate->regionWillChangeAnimated(this, animated);
}

void MapView::settleSoon(int delayMs)
{
    m_settleTimer.start(delayMs);
}

void MapView::settle()
{
    // a move is at rest only when no hand and no animation still holds it
    if (!m_changing || m_dragging || m_touchPoints > 0 || m_animation.isRunning())
        return;
    m_changing = false;
    m_map.tiles().forgetRequests();
    update();
    // the accessible description is the centre coordinate
    QAccessibleEvent described(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&described);
    if (m_delegate)
        m_delegate->regionDidChangeAnimated(this, m_changeAnimated);
}

void MapView::applyCamera(const MapCamera &camera)
{
    m_animation.stop();
    if (camera == liveCamera() && !m_changing)
        return;
    beginChange(false);
    liveCamera() = camera;
    update();
    // several sets in one turn of the event loop come to rest together
    settleSoon();
}

void MapView::animateTo(const MapCamera &camera, int durationMs, Completion completion)
{
    m_animation.stop();
    if (durationMs <= 0 || (camera == liveCamera() && !m_changing)) {
        applyCamera(camera);
        if (completion)
            QTimer::singleShot(0, this, std::move(completion));
        return;
    }
    beginChange(true);
    m_animation.start(camera, durationMs, std::move(completion));
}

void MapView::setRegion(const CoordinateRegion &region)
{
    setRegion(region, false);
}

void MapView::setRegion(const CoordinateRegion &region, bool animated, Completion completion)
{
    m_requestedRegion = region;
    MapCamera target = camera();
    target.setRegion(region);
    if (animated) {
        animateTo(target, m_animationDuration, std::move(completion));
    } else {
        applyCamera(target);
        if (completion)
            QTimer::singleShot(0, this, std::move(completion));
    }
}

CoordinateRegion MapView::regionThatFits(const CoordinateRegion &region) const
{
    return camera().regionThatFits(region);
}

void MapView::setCenterCoordinate(const Coordinate &center)
{
    setCenterCoordinate(center, false);
}

void MapView::setCenterCoordinate(const Coordinate &center, bool animated, Completion completion)
{
    if (animated) {
        animateCenterCoordinate(center, m_animationDuration, std::move(completion));
        return;
    }
    if (m_requestedRegion)
        m_requestedRegion->center = center;
    MapCamera target = camera();
    target.setCenter(center);
    applyCamera(target);
    if (completion)
        QTimer::singleShot(0, this, std::move(completion));
}

void MapView::setCenterCoordinate(const Coordinate &center, unsigned zoomLevel, bool animated)
{
    const unsigned level = std::min(zoomLevel, ZoomGeometry::MaximumZoomLevel);
    const CoordinateSpan span = ZoomGeometry::coordinateSpanWithMapView(*this, center, level);
    setRegion(CoordinateRegion{center, span}, animated);
}

void MapView::animateCenterCoordinate(const Coordinate &center, int durationMs,
                                      Completion completion)
{
    if (m_requestedRegion)
        m_requestedRegion->center = center;
    MapCamera target = camera();
    target.setCenter(center);
    animateTo(target, durationMs, std::move(completion));
}

// ---- content

void MapView::addAnnotation(const MapAnnotationPtr &annotation)
{
    if (!annotation)
        return;
    m_map.addAnnotation(annotation,
                        m_delegate ? m_delegate->viewForAnnotation(this, *annotation) : QImage());
    update();
}

void MapView::removeAnnotation(const MapAnnotationPtr &annotation)
{
    m_map.removeAnnotation(annotation);
    update();
}

void MapView::removeAnnotations(const QList<MapAnnotationPtr> &annotations)
{
    for (const MapAnnotationPtr &annotation : annotations)
        m_map.removeAnnotation(annotation);
    update();
}

void MapView::addOverlay(const MapOverlayPtr &overlay)
{
    if (!overlay)
        return;
    const auto renderer =
        m_delegate ? m_delegate->rendererForOverlay(this, *overlay) : std::nullopt;
    m_map.addOverlay(overlay, renderer.value_or(MapPolylineRenderer()));
    update();
}

void MapView::removeOverlay(const MapOverlayPtr &overlay)
{
    m_map.removeOverlay(overlay);
    update();
}

// ---- the user's position

void MapView::setShowsUserLocation(bool shows)
{
    m_showsUserLocation = shows;
    if (!shows) {
        if (m_positionSource) {
            m_positionSource->stopUpdatingLocation();
            m_positionSource->deleteLater();
            m_positionSource = nullptr;
        }
        m_map.setUserLocation(std::nullopt);
        update();
        return;
    }
    if (m_positionSource)
        return;
    if (!m_positionSources) {
        // told later, as a real source would report
        QTimer::singleShot(0, this, [this] {
            if (m_showsUserLocation && !m_positionSource && m_delegate)
                m_delegate->didFailToLocateUserWithError(
                    this, PositionSource::UnknownError,
                    QStringLiteral("No position source is available"));
        });
        return;
    }
    m_positionSource = m_positionSources->create(this);
    connect(m_positionSource, &PositionSource::locationUpdated, this, &MapView::onFix);
    connect(m_positionSource, &PositionSource::failed, this,
            [this](int code, const QString &description) {
                if (m_delegate)
                    m_delegate->didFailToLocateUserWithError(this, code, description);
            });
    m_positionSource->requestAuthorization();
    m_positionSource->startUpdatingLocation();
}

void MapView::onFix(const PositionFix &fix)
{
    m_map.setUserLocation(fix);
    update();
    if (m_delegate)
        m_delegate->didUpdateUserLocation(this, fix);
}

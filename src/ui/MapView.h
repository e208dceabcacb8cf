#pragma once

#include "platform/Coordinate.h"
#include "platform/PositionSource.h"
#include "ui/CameraAnimation.h"
#include "ui/CoordinateRegion.h"
#include "ui/MapPointAnnotation.h"
#include "ui/MapPolyline.h"
#include "ui/SlippyMap.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>

class MapViewDelegate;
class PositionSourceFactory;
class QTouchEvent;
class TileSource;

// The map the screens show: a slippy map of Web Mercator tiles that the
// user drags, wheels, pinches and double-clicks, and that the screens move
// by regions and centre coordinates. The map itself (SlippyMap) does the
// drawing; this widget turns input into moves and reports every move that
// has come to rest to its delegate exactly once.
class MapView : public QWidget
{
    Q_OBJECT

public:
    using Completion = std::function<void()>;

    explicit MapView(QWidget *parent = nullptr);
    ~MapView() override;

    // the map's two outside services: where tiles and the user's position come from
    void setServices(TileSource *tiles, PositionSourceFactory *positionSources);
    void setTileSource(TileSource *source);
    TileSource *tileSource() const { return m_map.tileSource(); }
    void setPositionSourceFactory(PositionSourceFactory *factory);

    MapViewDelegate *delegate() const { return m_delegate; }
    // Not owned. Annotation images and overlay renderers are asked of the
    // delegate when they are added, and again for all when it changes.
    void setDelegate(MapViewDelegate *delegate);

    CoordinateRegion region() const { return camera().region(); }
    void setRegion(const CoordinateRegion &region);
    void setRegion(const CoordinateRegion &region, bool animated, Completion completion = {});
    CoordinateRegion regionThatFits(const CoordinateRegion &region) const;

    Coordinate centerCoordinate() const { return camera().center(); }
    void setCenterCoordinate(const Coordinate &center);
    void setCenterCoordinate(const Coordinate &center, bool animated, Completion completion = {});
    // Centres on `center` at a whole tile level (levels above 28 act as 28)
    // by setting the region that level shows around it.
    void setCenterCoordinate(const Coordinate &center, unsigned zoomLevel, bool animated);
    // Moves the centre over `durationMs`, keeping the zoom, then calls `completion`.
    void animateCenterCoordinate(const Coordinate &center, int durationMs,
                                 Completion completion = {});

    double zoomLevel() const { return camera().zoom(); }
    QPointF convertCoordinateToPoint(const Coordinate &coordinate) const
    {
        return camera().coordinateToPoint(coordinate);
    }
    Coordinate convertPointToCoordinate(const QPointF &point) const
    {
        return camera().pointToCoordinate(point);
    }

    // What the arrow keys and + and - do, also offered to screen readers:
    // look a quarter of the view further towards a side (dx and dy each -1,
    // 0 or 1; -1 looks west or north), or zoom whole levels around the
    // centre. Steps come to rest like wheel turns, so a held key settles once.
    void panStep(int dx, int dy);
    void zoomStep(int levels);

    void addAnnotation(const MapAnnotationPtr &annotation);
    void removeAnnotation(const MapAnnotationPtr &annotation);
    void removeAnnotations(const QList<MapAnnotationPtr> &annotations);
    QList<MapAnnotationPtr> annotations() const { return m_map.annotations(); }

    void addOverlay(const MapOverlayPtr &overlay);
    void removeOverlay(const MapOverlayPtr &overlay);
    QList<MapOverlayPtr> overlays() const { return m_map.overlays(); }

    bool showsUserLocation() const { return m_showsUserLocation; }
    void setShowsUserLocation(bool shows);
    std::optional<PositionFix> userLocation() const { return m_map.userLocation(); }

    SlippyMap &map() { return m_map; }
    // the map's camera as it stands for the widget's present size (a hidden
    // widget hears of its size only when shown)
    MapCamera camera() const
    {
        MapCamera current = m_map.camera();
        current.setViewportSize(QSizeF(size()));
        return current;
    }

    // Timing, shortened by tests.
    int animationDuration() const { return m_animationDuration; }
    void setAnimationDuration(int ms) { m_animationDuration = ms; }
    // how long the wheel or the keys must rest before their move counts as
    // settled
    void setWheelSettleDelay(int ms) { m_wheelSettleDelay = ms; }

    QSize sizeHint() const override { return {390, 844}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    MapCamera &liveCamera()
    {
        m_map.camera().setViewportSize(QSizeF(size()));
        return m_map.camera();
    }
    void applyCamera(const MapCamera &camera);
    void animateTo(const MapCamera &camera, int durationMs, Completion completion);
    void beginChange(bool animated);
    void settleSoon(int delayMs = 0);
    void settle();
    void zoomInAround(const QPointF &point);
    bool handleTouch(QTouchEvent *event);
    void onFix(const PositionFix &fix);

    SlippyMap m_map;
    CameraAnimation m_animation;
    MapViewDelegate *m_delegate = nullptr;
    PositionSourceFactory *m_positionSources = nullptr;
    QPointer<PositionSource> m_positionSource;
    bool m_showsUserLocation = false;

    // a region asked for before the widget had its size is fitted again
    // when the size arrives, until the user moves the map
    std::optional<CoordinateRegion> m_requestedRegion;

    bool m_changing = false;
    bool m_changeAnimated = false;
    QTimer m_settleTimer;
    int m_animationDuration = 300;
    int m_wheelSettleDelay = 250;

    // mouse and touch
    bool m_pressed = false;
    bool m_dragging = false;
    QPointF m_pressPosition;
    QPointF m_lastPosition;
    int m_touchPoints = 0;
    QPointF m_touchCentroid;
    double m_touchDistance = 0.0;
    double m_touchZoom = 0.0;
    bool m_touchMoved = false;
    QElapsedTimer m_lastTap;
    QPointF m_lastTapPosition;
};

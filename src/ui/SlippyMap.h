#pragma once

#include "platform/PositionSource.h"
#include "ui/MapCamera.h"
#include "ui/MapPointAnnotation.h"
#include "ui/MapPolyline.h"
#include "ui/TileLayer.h"

#include <QImage>
#include <QList>
#include <QObject>
#include <QStaticText>

#include <memory>
#include <optional>

class QPainter;
class PolylineGeometry;

// The map itself, apart from any widget: where it looks, its tiles, marked
// places, lines and the user's position, painted into any QPainter (a
// widget, an image for a test or a benchmark, a screenshot).
class SlippyMap : public QObject
{
    Q_OBJECT

public:
    explicit SlippyMap(QObject *parent = nullptr);
    ~SlippyMap() override;

    MapCamera &camera() { return m_camera; }
    const MapCamera &camera() const { return m_camera; }

    TileLayer &tiles() { return m_tiles; }
    void setTileSource(TileSource *source) { m_tiles.setSource(source); }
    TileSource *tileSource() const { return m_tiles.source(); }
    QString attribution() const;

    // `image` replaces the default pin when not null; it is centred on the
    // coordinate, where the pin's tip stands on it
    void addAnnotation(const MapAnnotationPtr &annotation, const QImage &image = {});
    void setAnnotationImage(const MapPointAnnotation *annotation, const QImage &image);
    void removeAnnotation(const MapAnnotationPtr &annotation);
    QList<MapAnnotationPtr> annotations() const;

    void addOverlay(const MapOverlayPtr &overlay, const MapPolylineRenderer &renderer = {});
    void setOverlayRenderer(const MapPolyline *overlay, const MapPolylineRenderer &renderer);
    void removeOverlay(const MapOverlayPtr &overlay);
    QList<MapOverlayPtr> overlays() const;

    void setUserLocation(const std::optional<PositionFix> &fix);
    std::optional<PositionFix> userLocation() const { return m_userLocation; }

    // Paints the camera's viewport with its top-left corner at the
    // painter's origin.
    void paint(QPainter &painter);
    QImage render();

    static QImage defaultPinImage();

signals:
    // something new to draw arrived (a tile)
    void changed();

private:
    struct AnnotationEntry
    {
        MapAnnotationPtr annotation;
        QImage image;
    };
    struct OverlayEntry
    {
        MapOverlayPtr overlay;
        MapPolylineRenderer renderer;
        std::unique_ptr<PolylineGeometry> geometry;
    };
    MapCamera snapped() const;
    void paintAnnotations(QPainter &painter, const MapCamera &camera);
    void paintUserLocation(QPainter &painter, const MapCamera &camera);
    void paintAttribution(QPainter &painter);

    MapCamera m_camera;
    TileLayer m_tiles;
    QList<AnnotationEntry> m_annotations;
    std::vector<OverlayEntry> m_overlays;
    std::optional<PositionFix> m_userLocation;
    QStaticText m_attributionText;
};

#include "ui/SlippyMap.h"

#include "ui/ColorPalette.h"
#include "ui/PolylineGeometry.h"
#include "ui/TileSource.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <numbers>

namespace {
constexpr double EarthCircumferenceMeters = 2.0 * std::numbers::pi * EarthRadiusMeters;
const QColor &UserLocationColor = ColorPalette::mapBlueColor();
} // namespace

SlippyMap::SlippyMap(QObject *parent) : QObject(parent)
{
    connect(&m_tiles, &TileLayer::changed, this, &SlippyMap::changed);
}

SlippyMap::~SlippyMap() = default;

QString SlippyMap::attribution() const
{
    return m_tiles.source() ? m_tiles.source()->attribution() : QString();
}

void SlippyMap::addAnnotation(const MapAnnotationPtr &annotation, const QImage &image)
{
    if (!annotation)
        return;
    m_annotations.append({annotation, image});
}

void SlippyMap::setAnnotationImage(const MapPointAnnotation *annotation, const QImage &image)
{
    for (AnnotationEntry &entry : m_annotations) {
        if (entry.annotation.get() == annotation)
            entry.image = image;
    }
}

void SlippyMap::removeAnnotation(const MapAnnotationPtr &annotation)
{
    m_annotations.removeIf(
        [&](const AnnotationEntry &entry) { return entry.annotation == annotation; });
}

QList<MapAnnotationPtr> SlippyMap::annotations() const
{
    QList<MapAnnotationPtr> result;
    result.reserve(m_annotations.size());
    for (const AnnotationEntry &entry : m_annotations)
        result.append(entry.annotation);
    return result;
}

void SlippyMap::addOverlay(const MapOverlayPtr &overlay, const MapPolylineRenderer &renderer)
{
    if (!overlay)
        return;
    m_overlays.push_back(
        {overlay, renderer, std::make_unique<PolylineGeometry>(overlay->coordinates())});
    m_tiles.invalidateOverlays();
}

void SlippyMap::setOverlayRenderer(const MapPolyline *overlay, const MapPolylineRenderer &renderer)
{
    for (OverlayEntry &entry : m_overlays) {
        if (entry.overlay.get() == overlay)
            entry.renderer = renderer;
    }
    m_tiles.invalidateOverlays();
}

void SlippyMap::removeOverlay(const MapOverlayPtr &overlay)
{
    std::erase_if(m_overlays, [&](const OverlayEntry &entry) { return entry.overlay == overlay; });
    m_tiles.invalidateOverlays();
}

QList<MapOverlayPtr> SlippyMap::overlays() const
{
    QList<MapOverlayPtr> result;
    result.reserve(qsizetype(m_overlays.size()));
    for (const OverlayEntry &entry : m_overlays)
        result.append(entry.overlay);
    return result;
}

void SlippyMap::setUserLocation(const std::optional<PositionFix> &fix)
{
    m_userLocation = fix;
}

void SlippyMap::paint(QPainter &painter)
{
    painter.save();
    const QRectF view(QPointF(0, 0), m_camera.viewportSize());
    painter.setClipRect(view, Qt::IntersectClip);
    // Drawn from a centre on a whole point: tiles then fall on the same
    // fractions of a point at every pan, so tiles kept with the lines drawn
    // in still meet their neighbours exactly. The shift is below half a point.
    const MapCamera camera = snapped();
    const auto paintOverlays = [this](QPainter &target, const MapCamera &camera,
                                      const QRectF &area) {
        for (OverlayEntry &entry : m_overlays) {
            if (entry.renderer.lineWidth <= 0.0 || !entry.renderer.strokeColor.isValid())
                continue;
            const QPen pen(entry.renderer.strokeColor, entry.renderer.lineWidth, Qt::SolidLine,
                           Qt::RoundCap, Qt::RoundJoin);
            entry.geometry->paint(target, camera, pen, area);
        }
    };
    const QRegion composed = m_tiles.paint(
        painter, camera, m_overlays.empty() ? TileLayer::OverlayPainter() : paintOverlays);
    if (!m_overlays.empty()) {
        const QRegion rest = QRegion(view.toAlignedRect()) - composed;
        if (!rest.isEmpty()) {
            painter.save();
            if (!composed.isEmpty())
                painter.setClipRegion(rest, Qt::IntersectClip);
            paintOverlays(painter, camera, QRectF(rest.boundingRect()));
            painter.restore();
        }
    }
    paintUserLocation(painter, camera);
    paintAnnotations(painter, camera);
    paintAttribution(painter);
    painter.restore();
}

MapCamera SlippyMap::snapped() const
{
    MapCamera camera = m_camera;
    const double size = camera.worldSize();
    const QPointF center = camera.centerWorld();
    camera.setCenterWorld(
        QPointF(std::round(center.x() * size) / size, std::round(center.y() * size) / size));
    return camera;
}

QImage SlippyMap::render()
{
    const QSize size = m_camera.viewportSize().toSize();
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paint(painter);
    return image;
}

QImage SlippyMap::defaultPinImage()
{
    // a red drop with a white centre whose tip marks the place
    static const QImage pin = [] {
        // drawn at twice the size, sharp on dense screens
        QImage image(QSize(56, 80), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(2.0);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath drop;
        drop.moveTo(14, 39);
        drop.cubicTo(10, 28, 2, 22, 2, 13);
        drop.arcTo(QRectF(2, 1, 24, 24), 180, -180);
        drop.cubicTo(26, 22, 18, 28, 14, 39);
        painter.setPen(QPen(ColorPalette::pinOutlineColor(), 1.2));
        painter.setBrush(ColorPalette::pinColor());
        painter.drawPath(drop);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ColorPalette::whiteColor());
        painter.drawEllipse(QPointF(14, 13), 4.5, 4.5);
        return image;
    }();
    return pin;
}

void SlippyMap::paintAnnotations(QPainter &painter, const MapCamera &camera)
{
    const QImage &pin = defaultPinImage();
    const QRectF view(QPointF(0, 0), camera.viewportSize());
    for (const AnnotationEntry &entry : std::as_const(m_annotations)) {
        // a place off the globe or no number at all (a damaged file) is not
        // drawn: the painter cannot be trusted with it
        if (!entry.annotation->coordinate().isValid())
            continue;
        const QPointF at = camera.coordinateToPoint(entry.annotation->coordinate());
        const bool custom = !entry.image.isNull();
        const QImage &image = custom ? entry.image : pin;
        const QSizeF size = image.deviceIndependentSize();
        const QPointF topLeft = custom ? at - QPointF(size.width() / 2.0, size.height() / 2.0)
                                       : at - QPointF(size.width() / 2.0, size.height());
        const QRectF bounds(topLeft, size);
        if (!bounds.intersects(view))
            continue;
        painter.drawImage(topLeft, image);
        const QString title = entry.annotation->title();
        if (!title.isEmpty()) {
            const QRectF label(at.x() - 80, bounds.bottom() + 2, 160, 16);
            painter.setPen(ColorPalette::blackColor());
            painter.drawText(label, Qt::AlignHCenter | Qt::AlignTop, title);
        }
    }
}

void SlippyMap::paintUserLocation(QPainter &painter, const MapCamera &camera)
{
    if (!m_userLocation || !m_userLocation->isValid())
        return;
    const Coordinate where = m_userLocation->coordinate;
    const QPointF at = camera.coordinateToPoint(where);
    const double metersPerPoint = EarthCircumferenceMeters *
                                  std::cos(where.latitude * std::numbers::pi / 180.0) /
                                  camera.worldSize();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double accuracy = m_userLocation->horizontalAccuracy / metersPerPoint;
    if (accuracy > 9.0) {
        QColor halo = UserLocationColor;
        halo.setAlpha(40);
        painter.setPen(Qt::NoPen);
        painter.setBrush(halo);
        painter.drawEllipse(at, accuracy, accuracy);
    }
    painter.setPen(QPen(ColorPalette::whiteColor(), 3.0));
    painter.setBrush(UserLocationColor);
    painter.drawEllipse(at, 7.5, 7.5);
    painter.restore();
}

void SlippyMap::paintAttribution(QPainter &painter)
{
    const QString text = attribution();
    if (text.isEmpty())
        return;
    QFont font = painter.font();
    font.setPixelSize(11);
    painter.setFont(font);
    if (m_attributionText.text() != text) {
        m_attributionText.setText(text);
        m_attributionText.setTextFormat(Qt::PlainText);
        m_attributionText.prepare(QTransform(), font);
    }
    const QSizeF size = m_attributionText.size();
    const QSizeF viewport = m_camera.viewportSize();
    const QRectF box(viewport.width() - size.width() - 8, viewport.height() - size.height() - 4,
                     size.width() + 8, size.height() + 4);
    painter.fillRect(box, ColorPalette::withAlpha(ColorPalette::whiteColor(), 190));
    painter.setPen(ColorPalette::creditTextColor());
    painter.drawStaticText(box.topLeft() + QPointF(4, 2), m_attributionText);
}

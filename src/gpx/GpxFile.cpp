#include "gpx/GpxFile.h"

#include <QFile>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString Namespace = u"http://www.topografix.com/GPX/1/1"_s;

// The shortest text that reads back as the same double, never in exponent
// form, which GPX's decimal type does not allow.
QString formatDegrees(double value)
{
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}

void writePoint(QXmlStreamWriter &writer, const QString &element, double latitude, double longitude)
{
    writer.writeStartElement(element);
    writer.writeAttribute(u"lat"_s, formatDegrees(latitude));
    writer.writeAttribute(u"lon"_s, formatDegrees(longitude));
}

// Reads the parts of a GPX file this program uses, element by element, and
// stops at the first thing it refuses.
class Parser
{
public:
    Parser(const QByteArray &xml, qsizetype maxPoints) : m_reader(xml), m_maxPoints(maxPoints) {}

    Gpx::Content parse()
    {
        if (!m_reader.readNextStartElement() || m_reader.name() != u"gpx")
            return refused(u"not a GPX file"_s);
        bool trackSeen = false;
        bool routeSeen = false;
        QList<RoutePoint> routePoints;
        while (m_error.isEmpty() && m_reader.readNextStartElement()) {
            const QStringView name = m_reader.name();
            if (name == u"wpt")
                readWaypoint();
            else if (name == u"trk" && !trackSeen) {
                trackSeen = true;
                readTrack();
            } else if (name == u"rte" && !routeSeen) {
                routeSeen = true;
                readPoints(u"rtept", routePoints);
            } else
                m_reader.skipCurrentElement();
        }
        if (!m_error.isEmpty())
            return refused(m_error);
        // whatever follows the root must still be well-formed
        while (!m_reader.atEnd())
            m_reader.readNext();
        if (m_reader.hasError())
            return refused(u"not a readable GPX file: %1 (line %2)"_s.arg(
                m_reader.errorString(), QString::number(m_reader.lineNumber())));
        if (m_content.track.isEmpty())
            m_content.track = routePoints;
        if (m_content.waypoints.isEmpty() && m_content.track.isEmpty())
            return refused(u"the GPX file holds no points"_s);
        return m_content;
    }

private:
    Gpx::Content refused(const QString &why)
    {
        Gpx::Content content;
        content.error = why;
        return content;
    }

    void fail(const QString &why)
    {
        if (m_error.isEmpty())
            m_error = u"%1 (line %2)"_s.arg(why, QString::number(m_reader.lineNumber()));
    }

    // The current element's lat and lon, when both are finite numbers in range.
    std::optional<RoutePoint> position()
    {
        if (++m_points > m_maxPoints) {
            fail(u"more than %1 points in the GPX file"_s.arg(m_maxPoints));
            return std::nullopt;
        }
        const QXmlStreamAttributes attributes = m_reader.attributes();
        bool latitudeRead = false;
        bool longitudeRead = false;
        const double latitude = attributes.value(u"lat"_s).toDouble(&latitudeRead);
        const double longitude = attributes.value(u"lon"_s).toDouble(&longitudeRead);
        if (!latitudeRead || !std::isfinite(latitude) || latitude < -90.0 || latitude > 90.0) {
            fail(u"a latitude that is not a number from -90 to 90: \"%1\""_s.arg(
                attributes.value(u"lat"_s)));
            return std::nullopt;
        }
        if (!longitudeRead || !std::isfinite(longitude) || longitude < -180.0 ||
            longitude > 180.0) {
            fail(u"a longitude that is not a number from -180 to 180: \"%1\""_s.arg(
                attributes.value(u"lon"_s)));
            return std::nullopt;
        }
        return RoutePoint(latitude, longitude);
    }

    void readWaypoint()
    {
        const std::optional<RoutePoint> point = position();
        if (!point)
            return;
        QString name;
        while (m_reader.readNextStartElement()) {
            if (m_reader.name() == u"name")
                name = m_reader.readElementText(QXmlStreamReader::IncludeChildElements);
            else
                m_reader.skipCurrentElement();
        }
        m_content.waypoints.append(
            FavoriteEntry::make(name, point->latitude(), point->longitude()));
    }

    void readTrack()
    {
        while (m_error.isEmpty() && m_reader.readNextStartElement()) {
            if (m_reader.name() == u"trkseg")
                readPoints(u"trkpt", m_content.track);
            else
                m_reader.skipCurrentElement();
        }
    }

    // The `element` children of the current element.
    void readPoints(QStringView element, QList<RoutePoint> &points)
    {
        while (m_error.isEmpty() && m_reader.readNextStartElement()) {
            if (m_reader.name() == element) {
                if (const std::optional<RoutePoint> point = position())
                    points.append(*point);
                else
                    return;
            }
            m_reader.skipCurrentElement();
        }
    }

    QXmlStreamReader m_reader;
    qsizetype m_maxPoints;
    qsizetype m_points = 0;
    QString m_error;
    Gpx::Content m_content;
};

} // namespace

namespace Gpx {

QByteArray toXml(const QList<FavoriteEntry> &waypoints, const QList<RoutePoint> &track,
                 const QList<QDateTime> &times)
{
    QByteArray xml;
    QXmlStreamWriter writer(&xml);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(1);
    writer.writeStartDocument();
    writer.writeDefaultNamespace(Namespace);
    writer.writeStartElement(Namespace, u"gpx"_s);
    writer.writeAttribute(u"version"_s, u"1.1"_s);
    writer.writeAttribute(u"creator"_s, u"Trekmime"_s);
    for (const FavoriteEntry &favorite : waypoints) {
        if (!favorite.isPlace())
            continue;
        writePoint(writer, u"wpt"_s, favorite.latitude(), favorite.longitude());
        writer.writeTextElement(u"name"_s, favorite.name());
        writer.writeEndElement();
    }
    if (!track.isEmpty()) {
        writer.writeStartElement(u"trk"_s);
        writer.writeStartElement(u"trkseg"_s);
        for (qsizetype i = 0; i < track.size(); ++i) {
            writePoint(writer, u"trkpt"_s, track[i].latitude(), track[i].longitude());
            if (i < times.size() && times[i].isValid())
                writer.writeTextElement(u"time"_s, times[i].toUTC().toString(Qt::ISODate));
            writer.writeEndElement();
        }
        writer.writeEndElement();
        writer.writeEndElement();
    }
    writer.writeEndElement();
    writer.writeEndDocument();
    return xml;
}

QString write(const QString &path, const QList<FavoriteEntry> &waypoints,
              const QList<RoutePoint> &track, const QList<QDateTime> &times)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return u"cannot write %1: %2"_s.arg(path, file.errorString());
    file.write(toXml(waypoints, track, times));
    if (!file.commit())
        return u"cannot write %1: %2"_s.arg(path, file.errorString());
    return QString();
}

Content fromXml(const QByteArray &xml, qsizetype maxPoints)
{
    return Parser(xml, maxPoints).parse();
}

Content read(const QString &path)
{
    QFile file(path);
    Content content;
    if (!file.open(QIODevice::ReadOnly))
        content.error = u"cannot read %1: %2"_s.arg(path, file.errorString());
    else if (file.size() > MaxFileBytes)
        content.error = u"%1 is larger than %2 MB, the most a GPX file may hold here"_s.arg(
            path, QString::number(MaxFileBytes / (1024 * 1024)));
    else
        content = fromXml(file.readAll());
    return content;
}

} // namespace Gpx

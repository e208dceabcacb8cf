#include "gpx/GpxFile.h"

#include <QBuffer>
#include <QFile>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <charconv>
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

// A decimal number as GPX writes degrees ("-12.5", "+3", " 7 "), in the C
// locale whatever the user's, or nothing. QStringView::toDouble does the
// same at several times the cost, which long tracks feel.
std::optional<double> parseDegrees(QStringView text)
{
    text = text.trimmed();
    if (text.startsWith(u'+'))
        text = text.mid(1);
    char ascii[64];
    if (text.isEmpty() || text.size() > qsizetype(sizeof ascii))
        return std::nullopt;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c > 0x7f)
            return std::nullopt;
        ascii[i] = char(c);
    }
    double value = 0.0;
    const char *end = ascii + text.size();
    const auto [stop, error] = std::from_chars(ascii, end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

// Reads the parts of a GPX file this program uses, element by element, and
// stops at the first thing it refuses. Only the points' lat and lon and the
// waypoints' names are looked at; times and everything else are skipped.
class Parser
{
public:
    Parser(const QByteArray &xml, qsizetype maxPoints) : m_maxPoints(maxPoints)
    {
        // Handed the whole array, the reader turns all of it into one string
        // before it starts; read through a buffer it works in small pieces,
        // which takes about half the time on a long track.
        m_buffer.setData(xml);
        m_buffer.open(QIODevice::ReadOnly);
        m_reader.setDevice(&m_buffer);
        // a point takes a hundred bytes or so with its time, forty without
        m_content.track.reserve(std::min(maxPoints, xml.size() / 64));
    }

    Gpx::Content parse()
    {
        if (!m_reader.readNextStartElement() || m_reader.name() != u"gpx")
            return refused(u"not a GPX file"_s);
        bool trackSeen = false;
        bool routeSeen = false;
        QList<Coordinate> routePoints;
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
    std::optional<Coordinate> position()
    {
        if (++m_points > m_maxPoints) {
            fail(u"more than %1 points in the GPX file"_s.arg(m_maxPoints));
            return std::nullopt;
        }
        const QXmlStreamAttributes attributes = m_reader.attributes();
        const QStringView latitudeText = attributes.value(QLatin1StringView("lat"));
        const QStringView longitudeText = attributes.value(QLatin1StringView("lon"));
        const std::optional<double> latitude = parseDegrees(latitudeText);
        if (!latitude || *latitude < -90.0 || *latitude > 90.0) {
            fail(u"a latitude that is not a number from -90 to 90: \"%1\""_s.arg(latitudeText));
            return std::nullopt;
        }
        const std::optional<double> longitude = parseDegrees(longitudeText);
        if (!longitude || *longitude < -180.0 || *longitude > 180.0) {
            fail(u"a longitude that is not a number from -180 to 180: \"%1\""_s.arg(longitudeText));
            return std::nullopt;
        }
        return Coordinate{*latitude, *longitude};
    }

    void readWaypoint()
    {
        const std::optional<Coordinate> point = position();
        if (!point)
            return;
        QString name;
        while (m_reader.readNextStartElement()) {
            if (m_reader.name() == u"name")
                name = m_reader.readElementText(QXmlStreamReader::IncludeChildElements);
            else
                m_reader.skipCurrentElement();
        }
        m_content.waypoints.append(FavoriteEntry::make(name, point->latitude, point->longitude));
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
    void readPoints(QStringView element, QList<Coordinate> &points)
    {
        while (m_error.isEmpty() && m_reader.readNextStartElement()) {
            if (m_reader.name() == element) {
                if (const std::optional<Coordinate> point = position())
                    points.append(*point);
                else
                    return;
            }
            m_reader.skipCurrentElement();
        }
    }

    QBuffer m_buffer;
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

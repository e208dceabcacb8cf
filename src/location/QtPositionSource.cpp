#include "location/QtPositionSource.h"

#include <QFile>
#include <QNmeaPositionInfoSource>
#include <QTimer>

QtPositionSource::QtPositionSource(QGeoPositionInfoSource *source, QObject *parent)
    : PositionSource(parent), m_source(source)
{
    if (!m_source)
        return;
    m_source->setParent(this);
    m_source->setPreferredPositioningMethods(QGeoPositionInfoSource::AllPositioningMethods);
    connect(m_source, &QGeoPositionInfoSource::positionUpdated, this,
            [this](const QGeoPositionInfo &info) {
                if (m_running)
                    emit locationUpdated(fixFrom(info));
            });
    connect(m_source, &QGeoPositionInfoSource::errorOccurred, this, &QtPositionSource::onError);
}

QtPositionSource *QtPositionSource::createDefault(QObject *parent)
{
    return new QtPositionSource(QGeoPositionInfoSource::createDefaultSource(nullptr), parent);
}

QtPositionSource *QtPositionSource::createNmeaReplay(const QString &file, QObject *parent)
{
    auto *log = new QFile(file);
    if (!log->open(QIODevice::ReadOnly)) {
        delete log;
        return new QtPositionSource(nullptr, parent);
    }
    auto *nmea = new QNmeaPositionInfoSource(QNmeaPositionInfoSource::SimulationMode);
    log->setParent(nmea);
    nmea->setDevice(log);
    return new QtPositionSource(nmea, parent);
}

QtPositionSource *QtPositionSource::createNmeaSocket(const QString &hostAndPort, QObject *parent)
{
    const QVariantMap parameters{
        {QStringLiteral("nmea.source"), QString(QStringLiteral("socket://") + hostAndPort)}};
    return new QtPositionSource(
        QGeoPositionInfoSource::createSource(QStringLiteral("nmea"), parameters, nullptr), parent);
}

bool QtPositionSource::locationServicesEnabled() const
{
    // Access denied to this application is not positioning switched off:
    // a denied request must keep being reported as denied, with its own
    // alert and text, every time it is asked again.
    return m_source && m_source->error() != QGeoPositionInfoSource::ClosedError;
}

void QtPositionSource::startUpdatingLocation()
{
    if (!m_source) {
        // reported later, as a real source would
        QTimer::singleShot(0, this, [this] {
            emit failed(UnknownError, describe(QGeoPositionInfoSource::ClosedError));
        });
        return;
    }
    m_running = true;
    m_source->startUpdates();
}

void QtPositionSource::stopUpdatingLocation()
{
    // stopping a source that never started makes some backends complain
    if (m_source && m_running)
        m_source->stopUpdates();
    m_running = false;
}

PositionFix QtPositionSource::fixFrom(const QGeoPositionInfo &info)
{
    PositionFix fix;
    const QGeoCoordinate coordinate = info.coordinate();
    fix.coordinate = Coordinate{coordinate.latitude(), coordinate.longitude()};
    if (!info.isValid() || !coordinate.isValid())
        fix.horizontalAccuracy = -1.0;
    else if (info.hasAttribute(QGeoPositionInfo::HorizontalAccuracy))
        fix.horizontalAccuracy = info.attribute(QGeoPositionInfo::HorizontalAccuracy);
    else
        fix.horizontalAccuracy = 0.0; // a position without a stated accuracy is taken as given
    return fix;
}

int QtPositionSource::codeFor(QGeoPositionInfoSource::Error error)
{
    return error == QGeoPositionInfoSource::AccessError ? AccessDenied : UnknownError;
}

QString QtPositionSource::describe(QGeoPositionInfoSource::Error error)
{
    switch (error) {
    case QGeoPositionInfoSource::AccessError:
        return tr("Access to the device position was denied.");
    case QGeoPositionInfoSource::ClosedError:
        return tr("The position source is closed or not available.");
    case QGeoPositionInfoSource::UpdateTimeoutError:
        return tr("No position arrived in time.");
    case QGeoPositionInfoSource::UnknownSourceError:
    case QGeoPositionInfoSource::NoError:
        break;
    }
    return tr("The position source failed.");
}

void QtPositionSource::onError(QGeoPositionInfoSource::Error error)
{
    if (error == QGeoPositionInfoSource::NoError)
        return;
    emit failed(codeFor(error), describe(error));
}

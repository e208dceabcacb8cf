#pragma once

#include "platform/PositionSource.h"

#include <QGeoPositionInfoSource>

// The device's position through Qt Positioning: the system's default source
// (GeoClue2 on Linux desktops and phones), or an NMEA log replayed at the
// pace of its own time stamps, for machines without a receiver.
class QtPositionSource : public PositionSource
{
    Q_OBJECT

public:
    // Takes `source` over; a null source means positioning is not available.
    explicit QtPositionSource(QGeoPositionInfoSource *source, QObject *parent = nullptr);

    static QtPositionSource *createDefault(QObject *parent = nullptr);
    static QtPositionSource *createNmeaReplay(const QString &file, QObject *parent = nullptr);
    // Qt's NMEA plugin reading live sentences from a TCP server at HOST:PORT,
    // as any Qt application would be set up to read trekmime-feed.
    static QtPositionSource *createNmeaSocket(const QString &hostAndPort,
                                              QObject *parent = nullptr);

    bool locationServicesEnabled() const override;
    void startUpdatingLocation() override;
    void stopUpdatingLocation() override;

    static PositionFix fixFrom(const QGeoPositionInfo &info);
    static int codeFor(QGeoPositionInfoSource::Error error);
    static QString describe(QGeoPositionInfoSource::Error error);

private:
    void onError(QGeoPositionInfoSource::Error error);

    QGeoPositionInfoSource *m_source;
    bool m_running = false;
};

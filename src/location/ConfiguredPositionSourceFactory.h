#pragma once

#include "platform/Configuration.h"
#include "platform/PositionSource.h"

// The real position sources: an NMEA log replay when one is configured
// (nmea-file), live NMEA from a TCP server (HOST:PORT, e.g. trekmime-feed
// or gpsd's raw output) when one is given, else the system's default source.
class ConfiguredPositionSourceFactory : public PositionSourceFactory
{
public:
    explicit ConfiguredPositionSourceFactory(const Configuration &configuration);
    explicit ConfiguredPositionSourceFactory(const QString &nmeaFile,
                                             const QString &nmeaSocket = QString())
        : m_nmeaFile(nmeaFile), m_nmeaSocket(nmeaSocket)
    {
    }

    PositionSource *create(QObject *parent) override;

private:
    QString m_nmeaFile;
    QString m_nmeaSocket;
};

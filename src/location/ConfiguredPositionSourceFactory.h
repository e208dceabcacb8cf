#pragma once

#include "platform/Configuration.h"
#include "platform/PositionSource.h"

// The real position sources: an NMEA log replay when one is configured
// (nmea-file), else the system's default source.
class ConfiguredPositionSourceFactory : public PositionSourceFactory
{
public:
    explicit ConfiguredPositionSourceFactory(const Configuration &configuration);
    explicit ConfiguredPositionSourceFactory(const QString &nmeaFile) : m_nmeaFile(nmeaFile) {}

    PositionSource *create(QObject *parent) override;

private:
    QString m_nmeaFile;
};

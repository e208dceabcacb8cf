#include "location/ConfiguredPositionSourceFactory.h"

#include "location/QtPositionSource.h"

ConfiguredPositionSourceFactory::ConfiguredPositionSourceFactory(const Configuration &configuration)
    : m_nmeaFile(configuration.nmeaFile)
{
}

PositionSource *ConfiguredPositionSourceFactory::create(QObject *parent)
{
    // each user replays the log from its start, as each would have its own
    // receiver
    if (!m_nmeaSocket.isEmpty())
        return QtPositionSource::createNmeaSocket(m_nmeaSocket, parent);
    if (!m_nmeaFile.isEmpty())
        return QtPositionSource::createNmeaReplay(m_nmeaFile, parent);
    return QtPositionSource::createDefault(parent);
}

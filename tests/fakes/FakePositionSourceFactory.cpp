#include "fakes/FakePositionSourceFactory.h"

PositionSource *FakePositionSourceFactory::create(QObject *parent)
{
    auto *source = new FakePositionSource(parent);
    source->setServicesEnabled(m_enabled);
    source->setScript(m_script);
    m_sources.append(source);
    return source;
}

void FakePositionSourceFactory::setServicesEnabled(bool on)
{
    m_enabled = on;
    for (FakePositionSource *source : sources())
        source->setServicesEnabled(on);
}

void FakePositionSourceFactory::scriptFix(double latitude, double longitude,
                                          double horizontalAccuracy)
{
    m_script = PositionFix{Coordinate{latitude, longitude}, horizontalAccuracy};
    for (FakePositionSource *source : sources())
        source->setScript(m_script);
}

QList<FakePositionSource *> FakePositionSourceFactory::sources() const
{
    QList<FakePositionSource *> alive;
    for (const QPointer<FakePositionSource> &source : m_sources) {
        if (source)
            alive.append(source);
    }
    return alive;
}

FakePositionSource *FakePositionSourceFactory::last() const
{
    const QList<FakePositionSource *> alive = sources();
    return alive.isEmpty() ? nullptr : alive.last();
}

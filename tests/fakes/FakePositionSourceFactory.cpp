#include "fakes/FakePositionSourceFactory.h"

PositionSource *FakePositionSourceFactory::create(QObject *parent)
{
    auto *source = new FakePositionSource(parent);
    source->setServicesEnabled(m_enabled);
    source->setScript(m_script);
    m_sources.append(source);
    return source;
}

FakePositionSource *FakePositionSourceFactory::last() const
{
    for (auto source = m_sources.crbegin(); source != m_sources.crend(); ++source)
        if (*source)
            return *source;
    return nullptr;
}

#pragma once

#include "app/Services.h"

#include <memory>

// Builds the real implementation of every service from the configuration
// and keeps them alive for the life of the application: the ones that need
// no window (CoreServices, shared with trekmime-ctl) and the ones that do.
class RealServices
{
public:
    explicit RealServices(const Configuration &configuration);
    ~RealServices();

    const Services &services() const { return m_services; }

private:
    struct Owned;
    std::unique_ptr<Owned> m_owned;
    Services m_services;
};

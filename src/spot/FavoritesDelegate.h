#pragma once

#include <QObject>

// How the favourites list tells the fixed-location screen that a stored place
// was chosen (and already written to the location file).
//
// The list keeps its delegate without owning it; `lifetime()` is destroyed
// together with the delegate, so the list can tell that it is gone.
class FavoritesDelegate
{
public:
    FavoritesDelegate() = default;
    FavoritesDelegate(const FavoritesDelegate &) = delete;
    FavoritesDelegate &operator=(const FavoritesDelegate &) = delete;
    virtual ~FavoritesDelegate() = default;

    virtual void favoritesDidSelected() = 0;

    QObject *favoritesLifetime() { return &m_lifetime; }

private:
    QObject m_lifetime;
};

#pragma once

#include "platform/Coordinate.h"

#include <QString>

class FavoriteEntry;
class TMPreferenceUtil;

// The fixed place of the location mode, as the fixed-location screen and its
// favourites list show it and as trekmime-ctl sets it: the candidate place
// (the map's centre), the switch that stores it with faking on or off, the
// address search's hold on faking, and the favourites.
class SpotController
{
public:
    explicit SpotController(TMPreferenceUtil &store) : m_store(store) {}

    Coordinate candidate() const { return m_candidate; }
    void setCandidate(const Coordinate &place) { m_candidate = place; }

    // Whether the location file says faking is on.
    bool isOn() const;
    // Makes the stored place the candidate, and answers it.
    Coordinate takeStoredPlace();

    // The switch: the candidate stored with faking on or off.
    bool switchTo(bool on);
    // Only the flag changes; the stored place stays.
    bool setFlag(bool on);

    // The map came to rest on `centre`: it becomes the candidate. The
    // location file is rewritten as it is, so panning never moves the faked
    // place; only the switch and a chosen favourite do.
    void mapSettled(const Coordinate &centre);

    // An address search: nothing is faked while the look-up runs; a found
    // place becomes the candidate and only the flag comes back, as the
    // switch shows it (the place is stored at the switch's next flip). A
    // failed search leaves faking off.
    void searchStarted();
    void searchFound(const Coordinate &place, bool switchShowsOn);

    // A favourite chosen from the list is stored with faking on.
    bool chooseFavorite(const FavoriteEntry &favorite);
    // Saves the candidate under the typed name (blank: "Unknow").
    bool addFavorite(const QString &typedName);

private:
    TMPreferenceUtil &m_store;
    Coordinate m_candidate;
};

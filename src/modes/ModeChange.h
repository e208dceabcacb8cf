#pragma once

#include "settings/MasterRecord.h"

#include <QCoreApplication>
#include <QString>

class RouteRecord;
class TMPreferenceUtil;

// A mode change as the two main screens' mode buttons make it, and as
// trekmime-ctl makes it for a script: refused while the current mode's
// simulation is on, otherwise the master file is written afresh with the
// other mode. Swapping the screens is the caller's.
class ModeChange
{
    Q_DECLARE_TR_FUNCTIONS(ModeChange)

public:
    // The refusal text to show, or, when empty, the mode now on record.
    struct Result
    {
        QString refusal;
        MasterRecord::Mode mode = MasterRecord::RouteMode;
        bool written = false; // false also when refused
        bool refused() const { return !refusal.isEmpty(); }
    };

    explicit ModeChange(TMPreferenceUtil &store) : m_store(store) {}

    // The route screen's button: refused while the route record it holds in
    // memory is on (the route screen trusts its memory, not the file).
    Result fromRouteMode(const RouteRecord &routeRecord);
    // The fixed-location screen's button: refused while the location file
    // says the fixed location is on.
    Result fromLocationMode();
    // The button of the screen the stored mode shows, with the files as the
    // only memory there is (trekmime-ctl has no screen to remember).
    Result fromStoredMode();

private:
    Result change(MasterRecord::Mode to);

    TMPreferenceUtil &m_store;
};

#pragma once

#include "applications/ApplicationRegistry.h"

// The installed applications as freedesktop desktop entries, through GIO: a
// bundle identifier is a desktop entry's id without ".desktop", the home
// screen is what GIO would show in a menu, in GIO's order, and a running
// application is one whose id owns a name on the session bus (the way
// D-Bus activatable applications announce themselves).
//
// An icon is the file or the theme names the entry gives; drawing it is
// ApplicationIconLoader's part.
class GioApplicationRegistry : public ApplicationRegistry
{
public:
    QStringList displayIdentifiers(bool onlyRunning, bool debuggable) const override;
    QString localizedName(const QString &bundle) const override;
    ApplicationIcon icon(const QString &bundle) const override;

    // The names owned on the session bus now; empty without a session bus.
    static QStringList sessionBusNames();
};

#pragma once

#include <QString>

// The master file holds the mode the application starts in. It is written as
// a fresh one-key dictionary every time, so any other key in it is dropped.
class MasterRecord
{
public:
    enum Mode { RouteMode = 0, LocationMode = 1 };

    // "mode" read as an integer: 0 when the file or the key is missing or
    // not numeric. Any value other than 0 means the fixed-location mode.
    static int readMode();
    static bool write(Mode mode);
};

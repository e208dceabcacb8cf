#pragma once

class DeviceMetrics;

// How far a screen's bars keep from the display's edges. From system version
// 7.0 on a status bar lies over the top of every screen, so top bars start
// below it; on displays over 2400 pixels high, screens with a status bar also
// grow their top bar and lift their bottom bar clear of the rounded corners
// and the home indicator.
struct SafeArea
{
    static constexpr int StatusBarHeight = 20;
    static constexpr int TallTopBarExtra = 10;
    static constexpr int HomeIndicatorHeight = 34;

    bool statusBar = false;
    // the display alone, whatever the system version
    bool tallScreen = false;

    // no metrics: no status bar and an ordinary display
    static SafeArea of(const DeviceMetrics *metrics);

    // where a top bar starts
    int top() const { return statusBar ? StatusBarHeight : 0; }
    // how much a top bar grows
    int topBarExtra() const { return statusBar && tallScreen ? TallTopBarExtra : 0; }
    // how far a bottom bar rises, growing by as much
    int bottom() const { return statusBar && tallScreen ? HomeIndicatorHeight : 0; }
};

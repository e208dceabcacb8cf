#pragma once

class QLabel;
class QWidget;
struct SafeArea;

// The bar across the top of a screen, "topView", and the strip that backs
// the status bar above it, "bgLabel" (hidden until the screen shows it).
// The screen fills the bar itself.
struct TopBar
{
    QLabel *bgLabel = nullptr;
    QWidget *topView = nullptr;

    static TopBar build(QWidget *screen);

    // Shows the strip when there is a status bar to back.
    void showStatusStrip(const SafeArea &area) const;
    // Places the strip and the bar, `barHeight` high before it grows, across
    // a screen `width` wide; answers where the bar ends.
    int place(int width, int barHeight, const SafeArea &area) const;
};

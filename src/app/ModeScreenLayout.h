#pragma once

#include <QString>

// The names both main screens give the buttons of their bars.
struct ModeScreenLayout
{
    // Names that screen readers and test drivers know the bars' buttons by;
    // the buttons show a picture (or, for the mode, an arrow and the other
    // mode's name) rather than a word for what they are.
    static QString modeName();
    static QString informationName();
    static QString currentLocationName();
};

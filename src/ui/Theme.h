#pragma once

#include <QString>

class QApplication;

// The application's one style sheet, built from ColorPalette. Each screen's
// rules are scoped to the screen's class (or, for the mode screen frame, a
// property of the screen), so screens that reuse an object name such as
// "titleLabel" or "bottomView" keep their own look.
class Theme
{
public:
    static QString styleSheet();
    // Installs the style sheet on the application; the shell and every tool
    // that shows screens call this once, after the application is made.
    static void apply(QApplication &application);

    // The dimming behind a sheet that slides up, at an opacity from 0 to 1;
    // it changes while the sheet moves, so it is a sheet of its own.
    static QString backdropStyleSheet(double opacity);
};

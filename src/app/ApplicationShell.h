#pragma once

#include "app/ModalPresentation.h"

class QWidget;

// What the main screens may ask of the application shell: show the other
// mode's screen, or the information screen. The shell owns both screens; switching never creates or
// destroys one.
class ApplicationShell
{
public:
    virtual ~ApplicationShell() = default;
    virtual void changeToRouter() = 0;
    virtual void changeToLocation() = 0;
    // Presents the information screen over `from`; nothing happens until
    // the shell has one to show.
    virtual void showInfoView(QWidget * /*from*/, ModalTransition /*transition*/) {}
};

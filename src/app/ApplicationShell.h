#pragma once

// What the main screens may ask of the application shell: show the other
// mode's screen. The shell owns both screens; switching never creates or
// destroys one.
class ApplicationShell
{
public:
    virtual ~ApplicationShell() = default;
    virtual void changeToRouter() = 0;
    virtual void changeToLocation() = 0;
};

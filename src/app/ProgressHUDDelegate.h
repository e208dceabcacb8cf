#pragma once

class ProgressHUD;

// Told when an overlay has finished hiding. Optional: the default does nothing.
class ProgressHUDDelegate
{
public:
    virtual ~ProgressHUDDelegate() = default;
    virtual void hudWasHidden(ProgressHUD *hud) { (void)hud; }
};

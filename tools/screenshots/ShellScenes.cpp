// The application window as it starts, in each mode.

#include "Scene.h"
#include "ScreenshotWorld.h"

#include "settings/TMPreferenceUtil.h"
#include "shell/AppDelegate.h"
#include "shell/AppWindow.h"

#include <QWidget>

namespace {

// The real window, with its shell, as a user sees it after starting.
QWidget *launchedWindow(ScreenshotWorld &world)
{
    // the shell owns the window and the screens
    AppDelegate *delegate = world.keep(new AppDelegate(world.services()));
    delegate->didFinishLaunching();
    return delegate->window();
}

} // namespace

TREKMIME_SCENE(QStringLiteral("start-route-mode"), launchedWindow)
TREKMIME_SCENE(QStringLiteral("start-spot-mode"), [](ScreenshotWorld &world) {
    world.preferences().writeMode(MasterRecord::LocationMode);
    return launchedWindow(world);
})

#pragma once

#include <QList>
#include <QString>

#include <functional>

class QWidget;
class ScreenshotWorld;

// One picture: `build` makes the window (or screen) to show in a fresh
// world, which keeps it (ScreenshotWorld::keep) and whatever owns it; `then`, when set, runs once
// it is on screen and settled (to open a picker, type a search, ...), and the picture is taken
// after that settles too. Each screen's pictures are registered, with TREKMIME_SCENE, in a file of
// their own.
struct Scene
{
    QString name;
    std::function<QWidget *(ScreenshotWorld &)> build;
    std::function<void(ScreenshotWorld &, QWidget *)> then = {};
};

QList<Scene> &allScenes();

struct SceneRegistration
{
    explicit SceneRegistration(Scene scene) { allScenes().append(std::move(scene)); }
};

#define TREKMIME_SCENE_CONCAT2(a, b) a##b
#define TREKMIME_SCENE_CONCAT(a, b) TREKMIME_SCENE_CONCAT2(a, b)
#define TREKMIME_SCENE(...)                                                                        \
    static const SceneRegistration TREKMIME_SCENE_CONCAT(sceneRegistration,                        \
                                                         __LINE__)(Scene{__VA_ARGS__});

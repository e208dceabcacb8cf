#pragma once

#include "app/ApplicationShell.h"

#include <QObject>

class AppWindow;
class SpotmimeViewController;
class TrekmimeViewController;
struct Services;

// The application shell: creates the window and both main screens once,
// shows the screen of the stored mode, and swaps the screens on request.
class AppDelegate : public QObject, public ApplicationShell
{
    Q_OBJECT

public:
    explicit AppDelegate(const Services &services, QObject *parent = nullptr);
    ~AppDelegate() override;

    AppWindow *window() const { return m_window; }
    void setWindow(AppWindow *window) { m_window = window; }
    SpotmimeViewController *locationController() const { return m_locationController; }
    void setLocationController(SpotmimeViewController *controller)
    {
        m_locationController = controller;
    }
    TrekmimeViewController *trekmimeController() const { return m_trekmimeController; }
    void setTrekmimeController(TrekmimeViewController *controller)
    {
        m_trekmimeController = controller;
    }

    bool didFinishLaunching();
    void applicationDidBecomeActive();
    void applicationWillResignActive() {}
    void applicationDidEnterBackground() {}
    void applicationWillEnterForeground() {}
    void applicationWillTerminate() {}

    void changeToRouter() override;
    void changeToLocation() override;
    // A new information screen over `from`, arriving with `transition`.
    void showInfoView(QWidget *from, ModalTransition transition) override;

    // Calls applicationDidBecomeActive() whenever the application becomes
    // the active one.
    void followApplicationState();

private:
    const Services &m_services;
    AppWindow *m_window = nullptr;
    SpotmimeViewController *m_locationController = nullptr;
    TrekmimeViewController *m_trekmimeController = nullptr;
};

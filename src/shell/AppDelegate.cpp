#include "shell/AppDelegate.h"

#include "app/Services.h"
#include "apps/WhitelistViewController.h"
#include "info/InfoViewController.h"
#include "route/TrekmimeViewController.h"
#include "settings/TMPreferenceUtil.h"
#include "shell/AppWindow.h"
#include "shell/ScreenNeeds.h"
#include "spot/SpotmimeViewController.h"

#include <QGuiApplication>

AppDelegate::AppDelegate(const Services &services, QObject *parent)
    : QObject(parent), m_services(services)
{
}

AppDelegate::~AppDelegate()
{
    // the window owns both screens once they have been shown; screens never
    // shown are still ours
    if (m_locationController && !m_locationController->parent())
        delete m_locationController;
    if (m_trekmimeController && !m_trekmimeController->parent())
        delete m_trekmimeController;
    delete m_window;
}

bool AppDelegate::didFinishLaunching()
{
    setWindow(new AppWindow);
    setLocationController(new SpotmimeViewController(ScreenNeeds::spot(m_services), *this));
    setTrekmimeController(new TrekmimeViewController(ScreenNeeds::route(m_services), *this));
    if (m_services.preferences->mode() != 0)
        changeToLocation();
    else
        changeToRouter();
    m_window->makeKeyAndVisible();
    return true;
}

void AppDelegate::applicationDidBecomeActive()
{
    // sent directly, on top of the window's own appearance calls, and to the
    // stored mode's screen even when another one is on display
    if (m_services.preferences->mode() != 0)
        m_locationController->viewWillAppear(true);
    else
        m_trekmimeController->viewWillAppear(true);
}

void AppDelegate::changeToRouter()
{
    m_window->setRootViewController(m_trekmimeController);
}

void AppDelegate::changeToLocation()
{
    m_window->setRootViewController(m_locationController);
}

void AppDelegate::showInfoView(QWidget *from, ModalTransition transition)
{
    // each opening makes a new screen, which reads what is installed afresh
    const Services &services = m_services;
    auto *info = new InfoViewController(ScreenNeeds::info(services), [&services] {
        return new WhitelistViewController(ScreenNeeds::whitelist(services));
    });
    presentViewController(from, info, transition);
}

void AppDelegate::followApplicationState()
{
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive)
                    applicationDidBecomeActive();
            });
}

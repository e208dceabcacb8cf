#include "shell/AppWindow.h"

#include "app/BaseViewController.h"

#include <QStackedLayout>

AppWindow::AppWindow(QWidget *parent) : QWidget(parent), m_stack(new QStackedLayout(this))
{
    setObjectName(QStringLiteral("window"));
    setWindowTitle(QStringLiteral("Trekmime"));
    setMinimumSize(320, 480);
    resize(sizeHint());
    m_stack->setContentsMargins(0, 0, 0, 0);
}

void AppWindow::setRootViewController(BaseViewController *screen)
{
    if (screen == m_root)
        return;
    if (m_stack->indexOf(screen) < 0)
        m_stack->addWidget(screen);
    screen->loadViewIfNeeded();
    screen->viewWillAppear(false);
    m_root = screen;
    m_stack->setCurrentWidget(screen);
}

void AppWindow::makeKeyAndVisible()
{
    show();
    activateWindow();
}

#include "app/BaseViewController.h"

#include "app/ProgressHUD.h"

BaseViewController::BaseViewController(QWidget *parent) : QWidget(parent) {}

BaseViewController::~BaseViewController()
{
    // shown over the window, the overlay is not our child: take it with us
    if (m_HUD && !isAncestorOf(m_HUD))
        delete m_HUD.data();
}

void BaseViewController::loadViewIfNeeded()
{
    if (m_loaded)
        return;
    m_loaded = true;
    // made before the screen's own completion, so every screen has it
    createHUD();
    viewDidLoad();
}

void BaseViewController::viewWillAppear(bool) {}

void BaseViewController::createHUD()
{
    if (m_HUD)
        return;
    m_HUD = new ProgressHUD(this);
    m_HUD->setObjectName(QStringLiteral("HUD"));
    m_HUD->setClock(m_clock);
    // the screen keeps its overlay, even when something removes it from view
    m_HUD->setDeleteWhenRemoved(false);
    m_HUD->addTo(this);
}

void BaseViewController::setClock(const Clock *clock)
{
    m_clock = clock;
    if (m_HUD)
        m_HUD->setClock(clock);
}

void BaseViewController::showHUDView()
{
    showHUDViewWithText(QString());
}

void BaseViewController::showHUDViewWithText(const QString &text)
{
    showHUDViewWithText(text, 0.0f);
}

void BaseViewController::showHUDViewYOffset(float yOffset)
{
    showHUDViewWithText(QString(), yOffset);
}

void BaseViewController::showHUDViewWithText(const QString &text, float yOffset)
{
    showHUDOver(this, text, yOffset);
}

void BaseViewController::showHUDViewOnWindow()
{
    showHUDViewOnWindowWithText(QString());
}

void BaseViewController::showHUDViewOnWindowWithText(const QString &text)
{
    showHUDViewOnWindowWithText(text, 0.0f);
}

void BaseViewController::showHUDViewOnWindowYOffset(float yOffset)
{
    showHUDViewOnWindowWithText(QString(), yOffset);
}

void BaseViewController::showHUDViewOnWindowWithText(const QString &text, float yOffset)
{
    // the window this screen lives in stands for the application's key window
    showHUDOver(window(), text, yOffset);
}

void BaseViewController::showHUDOver(QWidget *host, const QString &text, float yOffset)
{
    loadViewIfNeeded();
    // moved, never duplicated: out of wherever it is, on top of the host
    m_HUD->addTo(host);
    m_HUD->setLabelText(text);
    m_HUD->setYOffset(yOffset);
    m_HUD->show(true);
}

void BaseViewController::hideHUDView()
{
    if (m_HUD)
        m_HUD->hide(true);
}

ProgressHUD *BaseViewController::showHUDHintText(const QString &text)
{
    return showHUDHintText(text, 0.0f);
}

ProgressHUD *BaseViewController::showHUDHintText(const QString &text, float yOffset)
{
    ProgressHUD *hint = ProgressHUD::showHUDAddedTo(this, true);
    hint->setClock(m_clock);
    hint->setMode(ProgressHUD::Text);
    hint->setLabelText(text);
    hint->setMargin(10.0f);
    hint->setYOffset(yOffset);
    hint->setRemoveFromSuperViewOnHide(true);
    hint->hide(true, m_hintHideDelay);
    return hint;
}

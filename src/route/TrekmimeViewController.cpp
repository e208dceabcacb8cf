#include "route/TrekmimeViewController.h"

#include "app/ApplicationShell.h"
#include "app/ModeScreenLayout.h"
#include "platform/AlertPresenter.h"
#include "platform/Services.h"
#include "settings/ModeChange.h"
#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"
#include "settings/TMPreferenceUtil.h"

#include <QLabel>
#include <QPushButton>

TrekmimeViewController::TrekmimeViewController(const Services &services, ApplicationShell &shell,
                                               QWidget *parent)
    : BaseViewController(parent), m_services(services), m_shell(shell)
{
    setObjectName(QStringLiteral("TrekmimeViewController"));
    const ModeScreenLayout layout =
        ModeScreenLayout::build(this, tr("Trekmime"), tr("Travel along a route"), tr("Spotmime"));
    m_title = layout.title;
    btn_exchange = layout.exchangeButton;
    btn_exchange->setObjectName(QStringLiteral("btn_exchange"));
    connect(btn_exchange, &QPushButton::clicked, this, &TrekmimeViewController::exchange);
}

void TrekmimeViewController::viewDidLoad()
{
    m_preferences = TMPreferenceUtil::routePreference();
}

void TrekmimeViewController::viewWillAppear(bool animated)
{
    BaseViewController::viewWillAppear(animated);
    // an empty or missing file gives a fresh empty record either way
    m_preferences = TMPreferenceUtil::routePreference();
}

void TrekmimeViewController::exchange()
{
    const ModeChange::Result change = ModeChange::fromRouteMode(m_preferences);
    if (change.refused()) {
        m_services.alerts->showMessage(change.refusal, tr("OK"), this);
        return;
    }
    // a failed write still swaps the screen; the stored mode wins again the
    // next time the application becomes active
    m_shell.changeToLocation();
}

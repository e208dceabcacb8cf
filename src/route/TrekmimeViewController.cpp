#include "route/TrekmimeViewController.h"

#include "app/ApplicationShell.h"
#include "app/ModeScreenLayout.h"
#include "platform/AlertPresenter.h"
#include "platform/Services.h"
#include "settings/MasterRecord.h"
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
    if (StoredValue::boolValue(m_preferences.value(RecordKeys::enable()))) {
        m_services.alerts->showMessage(
            tr("Trekmime is working,please turn off the Trekmime first!"), tr("OK"), this);
        return;
    }
    // a failed write still swaps the screen; the stored mode wins again the
    // next time the application becomes active
    MasterRecord::write(MasterRecord::LocationMode);
    m_shell.changeToLocation();
}

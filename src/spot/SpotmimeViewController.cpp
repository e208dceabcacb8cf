#include "spot/SpotmimeViewController.h"

#include "app/ApplicationShell.h"
#include "app/ModeScreenLayout.h"
#include "platform/AlertPresenter.h"
#include "platform/Services.h"
#include "settings/ModeChange.h"
#include "settings/TMPreferenceUtil.h"

#include <QLabel>
#include <QPushButton>

SpotmimeViewController::SpotmimeViewController(const Services &services, ApplicationShell &shell,
                                               QWidget *parent)
    : BaseViewController(parent), m_services(services), m_shell(shell)
{
    setObjectName(QStringLiteral("SpotmimeViewController"));
    const ModeScreenLayout layout =
        ModeScreenLayout::build(this, tr("Spotmime"), tr("Stay at one place"), tr("Trekmime"));
    m_title = layout.title;
    btn_exchange = layout.exchangeButton;
    btn_exchange->setObjectName(QStringLiteral("btn_exchange"));
    connect(btn_exchange, &QPushButton::clicked, this, &SpotmimeViewController::exchange);
}

void SpotmimeViewController::exchange()
{
    const ModeChange::Result change = ModeChange::fromLocationMode();
    if (change.refused()) {
        m_services.alerts->showMessage(change.refusal, tr("OK"), this);
        return;
    }
    m_shell.changeToRouter();
}

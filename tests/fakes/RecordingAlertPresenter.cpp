#include "fakes/RecordingAlertPresenter.h"

void RecordingAlertPresenter::present(const Alert &alert, QWidget *)
{
    m_alerts.append(alert);
}

QStringList RecordingAlertPresenter::messages() const
{
    QStringList result;
    for (const Alert &alert : m_alerts)
        result.append(alert.message);
    return result;
}

void RecordingAlertPresenter::press(int alertIndex, int button)
{
    const Alert &alert = m_alerts.at(alertIndex);
    if (alert.done)
        alert.done(button);
}

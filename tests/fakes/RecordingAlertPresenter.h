#pragma once

#include "platform/AlertPresenter.h"

#include <QList>
#include <QStringList>

// Keeps every alert instead of showing it; tests read them back and may press
// a button with `press`.
class RecordingAlertPresenter : public AlertPresenter
{
public:
    void present(const Alert &alert, QWidget *) override { m_alerts.append(alert); }
    const QList<Alert> &alerts() const { return m_alerts; }
    QStringList messages() const
    {
        QStringList result;
        for (const Alert &alert : m_alerts)
            result.append(alert.message);
        return result;
    }
    void press(int alertIndex, int button)
    {
        if (const Alert &alert = m_alerts.at(alertIndex); alert.done)
            alert.done(button);
    }
    void clear() { m_alerts.clear(); }

private:
    QList<Alert> m_alerts;
};

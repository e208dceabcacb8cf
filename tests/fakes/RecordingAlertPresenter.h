#pragma once

#include "platform/AlertPresenter.h"

#include <QList>
#include <QStringList>

// Keeps every alert instead of showing it, for tests to read back.
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

private:
    QList<Alert> m_alerts;
};

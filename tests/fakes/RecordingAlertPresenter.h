#pragma once

#include "platform/AlertPresenter.h"

#include <QList>
#include <QStringList>

// Keeps every alert instead of showing it; tests read them back and may press
// a button with `press`.
class RecordingAlertPresenter : public AlertPresenter
{
public:
    void present(const Alert &alert, QWidget *over) override;
    const QList<Alert> &alerts() const { return m_alerts; }
    QStringList messages() const;
    void press(int alertIndex, int button);
    void clear() { m_alerts.clear(); }

private:
    QList<Alert> m_alerts;
};

#pragma once

#include "app/BaseViewController.h"

class ApplicationShell;
class QLabel;
class QPushButton;
struct Services;

// The screen of the fixed-location mode. Unlike the route screen it asks the
// location file, not its memory, whether its simulation is on.
class SpotmimeViewController : public BaseViewController
{
    Q_OBJECT

public:
    SpotmimeViewController(const Services &services, ApplicationShell &shell,
                           QWidget *parent = nullptr);

public slots:
    void exchange();

private:
    const Services &m_services;
    ApplicationShell &m_shell;
    QLabel *m_title = nullptr;
    QPushButton *btn_exchange = nullptr;
};

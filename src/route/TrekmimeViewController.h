#pragma once

#include "app/BaseViewController.h"

#include <QVariantMap>

class ApplicationShell;
class QLabel;
class QPushButton;
struct Services;

// The screen of the route mode. It keeps its own in-memory copy of the route
// record (`preferences`), read from the route file when it loads and each
// time it appears, and trusts that copy when asked to leave the mode.
class TrekmimeViewController : public BaseViewController
{
    Q_OBJECT

public:
    TrekmimeViewController(const Services &services, ApplicationShell &shell,
                           QWidget *parent = nullptr);

    void viewWillAppear(bool animated) override;
    const QVariantMap &preferences() const { return m_preferences; }

public slots:
    // The mode button: refused while the route is on, otherwise stores the
    // fixed-location mode and swaps the screens.
    void exchange();

protected:
    void viewDidLoad() override;

private:
    const Services &m_services;
    ApplicationShell &m_shell;
    QVariantMap m_preferences;
    QLabel *m_title = nullptr;
    QPushButton *btn_exchange = nullptr;
};

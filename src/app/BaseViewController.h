#pragma once

#include <QWidget>

// The common base of the application's screens. A screen builds its widgets
// in its constructor (its "interface resource"), completes them once in
// viewDidLoad() the first time it is about to be shown, and refreshes itself
// from the settings files in viewWillAppear().
class BaseViewController : public QWidget
{
    Q_OBJECT

public:
    explicit BaseViewController(QWidget *parent = nullptr);

    // Runs viewDidLoad() the first time only.
    void loadViewIfNeeded();
    bool isViewLoaded() const { return m_loaded; }

    virtual void viewWillAppear(bool animated);

protected:
    virtual void viewDidLoad() {}

private:
    bool m_loaded = false;
};

#pragma once

#include <QWidget>

class BaseViewController;
class QStackedLayout;

// The single application window, phone-shaped. Its root screen fills it;
// screens that stop being the root stay alive, hidden.
class AppWindow : public QWidget
{
    Q_OBJECT

public:
    explicit AppWindow(QWidget *parent = nullptr);

    BaseViewController *rootViewController() const { return m_root; }
    // Shows `screen` in place of the current root, without animation. The
    // arriving screen gets its appearance call and refreshes from the files.
    void setRootViewController(BaseViewController *screen);
    void makeKeyAndVisible();

    QSize sizeHint() const override { return {390, 844}; }

private:
    QStackedLayout *m_stack;
    BaseViewController *m_root = nullptr;
};

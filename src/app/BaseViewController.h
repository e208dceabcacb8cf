#pragma once

#include "app/ProgressHUD.h"

#include <QPointer>
#include <QWidget>

// The common base of the application's screens. A screen builds its widgets
// in its constructor (its "interface resource"), completes them once in
// viewDidLoad() the first time it is about to be shown, and refreshes itself
// from the settings files in viewWillAppear().
//
// Screens that wait on slow work share its progress overlay: a spinner with
// an optional text over the screen (or over the whole window), and short
// hints that vanish by themselves.
class BaseViewController : public QWidget
{
    Q_OBJECT

public:
    explicit BaseViewController(QWidget *parent = nullptr);
    ~BaseViewController() override;

    // Runs viewDidLoad() the first time only; the overlay exists from then on.
    void loadViewIfNeeded();
    bool isViewLoaded() const { return m_loaded; }

    virtual void viewWillAppear(bool animated);

    // The screen's own overlay, reused for every busy indication.
    ProgressHUD *HUD() const { return m_HUD; }

    void showHUDView();
    void showHUDViewWithText(const QString &text);
    void showHUDViewYOffset(float yOffset);
    void showHUDViewWithText(const QString &text, float yOffset);

    // The same over the whole window, covering everything on screen.
    void showHUDViewOnWindow();
    void showHUDViewOnWindowWithText(const QString &text);
    void showHUDViewOnWindowYOffset(float yOffset);
    void showHUDViewOnWindowWithText(const QString &text, float yOffset);

    // Hides the overlay animated; it stays, transparent, for the next show.
    void hideHUDView();

    // A separate text-only overlay that hides itself a while after it appears.
    ProgressHUD *showHUDHintText(const QString &text);
    ProgressHUD *showHUDHintText(const QString &text, float yOffset);

    // how long a hint stays before it starts to fade, in seconds
    double hintHideDelay() const { return m_hintHideDelay; }
    void setHintHideDelay(double seconds) { m_hintHideDelay = seconds; }
    // The clock the overlays measure their times on; the system clock
    // unless set (screens pass the injected one).
    void setClock(const Clock *clock);

protected:
    virtual void viewDidLoad() {}

private:
    void createHUD();
    void showHUDOver(QWidget *host, const QString &text, float yOffset);

    bool m_loaded = false;
    QPointer<ProgressHUD> m_HUD;
    double m_hintHideDelay = 1.0;
    const Clock *m_clock = nullptr;
};

#pragma once

#include "app/ProgressHUDLayout.h"

#include <QDateTime>
#include <QPointer>
#include <QWidget>

#include <functional>

class Clock;
class ProgressHUDDelegate;
class QLabel;
class QThread;
class ClockTimer;
class QVariantAnimation;

// A rounded translucent box centred over a view, holding an indicator and up
// to two text lines, faded in and out. It covers its parent completely and,
// while visible, keeps touches from what lies beneath; fully transparent it
// lets them through.
class ProgressHUD : public QWidget
{
    Q_OBJECT

public:
    enum Mode {
        Indeterminate = 0,      // spinning activity indicator
        Determinate = 1,        // round progress indicator, a pie
        AnnularDeterminate = 2, // round progress indicator, a ring
        CustomView = 3,         // the caller's customView
        Text = 4,               // text only
    };
    enum AnimationType { Fade = 0, Zoom = 1 };

    // --- over a view's direct children
    static ProgressHUD *showHUDAddedTo(QWidget *view, bool animated);
    static bool hideHUDForView(QWidget *view, bool animated);
    static bool hideAllHUDsForView(QWidget *view, bool animated);
    static ProgressHUD *HUDForView(const QWidget *view);
    static QList<ProgressHUD *> allHUDsForView(const QWidget *view);

    // Sized to the view's bounds; not yet added to it (see addTo()).
    explicit ProgressHUD(QWidget *view);
    explicit ProgressHUD(const QRect &frame);
    ~ProgressHUD() override;

    // Makes the overlay the view's topmost child over its whole bounds. It
    // follows the view's size from then on; when the device turns, the window
    // system turns and resizes the window itself, so an overlay on a window
    // needs no turning of its own.
    void addTo(QWidget *view);
    void removeFromSuperview();

    void show(bool animated);
    void hide(bool animated);
    void hide(bool animated, double afterDelay);
    // Runs `work` on its own thread with the overlay shown; when it returns,
    // the overlay cleans up and hides on the GUI thread.
    void showWhileExecuting(std::function<void()> work, bool animated);

    int mode() const { return m_mode; }
    void setMode(int mode);
    int animationType() const { return m_animationType; }
    void setAnimationType(int type) { m_animationType = type; }
    QString labelText() const { return m_labelText; }
    void setLabelText(const QString &text);
    QString detailsLabelText() const { return m_detailsLabelText; }
    void setDetailsLabelText(const QString &text);
    QFont labelFont() const { return m_labelFont; }
    void setLabelFont(const QFont &font);
    QFont detailsLabelFont() const { return m_detailsLabelFont; }
    void setDetailsLabelFont(const QFont &font);
    float opacity() const { return m_opacity; }
    void setOpacity(float opacity);
    float xOffset() const { return m_xOffset; }
    void setXOffset(float offset);
    float yOffset() const { return m_yOffset; }
    void setYOffset(float offset);
    float margin() const { return m_margin; }
    void setMargin(float margin);
    bool dimBackground() const { return m_dimBackground; }
    void setDimBackground(bool dim);
    float graceTime() const { return m_graceTime; }
    void setGraceTime(float seconds) { m_graceTime = seconds; }
    float minShowTime() const { return m_minShowTime; }
    void setMinShowTime(float seconds) { m_minShowTime = seconds; }
    bool removeFromSuperViewOnHide() const { return m_removeFromSuperViewOnHide; }
    void setRemoveFromSuperViewOnHide(bool remove) { m_removeFromSuperViewOnHide = remove; }
    QSizeF minSize() const { return m_minSize; }
    void setMinSize(QSizeF size);
    bool square() const { return m_square; }
    void setSquare(bool square);
    bool taskInProgress() const { return m_taskInProgress; }
    void setTaskInProgress(bool running) { m_taskInProgress = running; }
    float progress() const { return m_progress; }
    void setProgress(float progress);
    QWidget *customView() const { return m_customView; }
    // the overlay takes the view as its child
    void setCustomView(QWidget *view);
    ProgressHUDDelegate *delegate() const { return m_delegate; }
    // not owned: whoever sets a delegate clears it before the delegate goes
    void setDelegate(ProgressHUDDelegate *delegate) { m_delegate = delegate; }
    QDateTime showStarted() const { return m_showStarted; }
    // the box's size from the last layout
    QSizeF boxSize() const { return m_layout.box.size(); }
    const ProgressHUDLayout &currentLayout() const { return m_layout; }

    // how transparent the whole overlay is: 0 hidden, 1 fully shown
    qreal alpha() const;
    qreal scale() const;
    bool isFinished() const { return m_isFinished; }
    QWidget *indicator() const { return m_indicator; }

    // show and hide fades, in milliseconds
    static constexpr int AnimationDuration = 300;
    // where showStarted comes from; the system clock unless a test sets one
    void setClock(const Clock *clock);
    // whether the overlay deletes itself once removed from its parent; on for
    // overlays that only their parent keeps
    void setDeleteWhenRemoved(bool on) { m_deleteWhenRemoved = on; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUp();
    void makeTimers();
    void setAlpha(qreal alpha);
    void setScale(qreal scale);
    void updateIndicators();
    void updateLabels();
    void layoutContent();
    void showUsingAnimation(bool animated);
    void hideUsingAnimation(bool animated);
    void animateTo(qreal alpha, qreal scale, std::function<void()> finished);
    void done();
    void cleanUp();
    void watchParent(QWidget *parent);

    int m_mode = Indeterminate;
    int m_animationType = Fade;
    QString m_labelText;
    QString m_detailsLabelText;
    QFont m_labelFont;
    QFont m_detailsLabelFont;
    float m_opacity = 0.8f;
    float m_xOffset = 0.0f;
    float m_yOffset = 0.0f;
    float m_margin = 20.0f;
    bool m_dimBackground = false;
    float m_graceTime = 0.0f;
    float m_minShowTime = 0.0f;
    bool m_removeFromSuperViewOnHide = false;
    QSizeF m_minSize;
    bool m_square = false;
    bool m_taskInProgress = false;
    float m_progress = 0.0f;
    QPointer<QWidget> m_customView;
    ProgressHUDDelegate *m_delegate = nullptr;
    QDateTime m_showStarted;

    bool m_useAnimation = false;
    bool m_isFinished = false;
    bool m_deleteWhenRemoved = true;
    QPointer<QWidget> m_indicator;
    QLabel *m_label = nullptr;
    QLabel *m_detailsLabel = nullptr;
    ClockTimer *m_graceTimer = nullptr;
    ClockTimer *m_minShowTimer = nullptr;
    QVariantAnimation *m_animation = nullptr;
    QPointer<QWidget> m_watchedParent;
    QPointer<QThread> m_worker;
    const Clock *m_clock = nullptr;
    ProgressHUDLayout m_layout;
};

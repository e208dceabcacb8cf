#pragma once

#include "ui/ColorPalette.h"

#include <QColor>
#include <QWidget>

class QTimer;

// The large white spinning activity indicator: twelve spokes whose
// brightness runs round once a second.
class ActivityIndicatorView : public QWidget
{
    Q_OBJECT

public:
    explicit ActivityIndicatorView(QWidget *parent = nullptr);

    void startAnimating();
    void stopAnimating();
    bool isAnimating() const { return m_animating; }
    // an indicator nobody can see need not spin; it keeps its started state
    void setSuspended(bool suspended);

    QColor color() const { return m_color; }
    void setColor(const QColor &color);

    QSize sizeHint() const override { return {37, 37}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void updateTimer();

    QTimer *m_timer;
    QColor m_color = ColorPalette::whiteColor();
    int m_step = 0;
    bool m_animating = false;
    bool m_suspended = false;
};

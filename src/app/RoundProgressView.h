#pragma once

#include "ui/ColorPalette.h"

#include <QColor>
#include <QWidget>

// The overlay's progress indicator: a filled pie inside a circle, or, when
// annular, an arc over a faint ring. Progress runs from 0.0 to 1.0.
class RoundProgressView : public QWidget
{
    Q_OBJECT

public:
    explicit RoundProgressView(QWidget *parent = nullptr);

    float progress() const { return m_progress; }
    void setProgress(float progress);
    bool isAnnular() const { return m_annular; }
    void setAnnular(bool annular);
    QColor progressTintColor() const { return m_progressTintColor; }
    void setProgressTintColor(const QColor &color);
    QColor backgroundTintColor() const { return m_backgroundTintColor; }
    void setBackgroundTintColor(const QColor &color);

    QSize sizeHint() const override { return {37, 37}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    float m_progress = 0.0f;
    bool m_annular = false;
    QColor m_progressTintColor = ColorPalette::whiteColor();
    QColor m_backgroundTintColor = ColorPalette::withAlpha(ColorPalette::whiteColor(), 26);
};

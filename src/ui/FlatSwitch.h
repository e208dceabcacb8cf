#pragma once

#include <QColor>
#include <QRectF>
#include <QWidget>

class PanGestureRecognizer;
class QLabel;
class QVariantAnimation;
class TapGestureRecognizer;

// A sliding on/off switch. An inner strip twice the switch's width less its
// height holds the on label, the round knob and the off label side by side;
// the switch shows a window of it, and every colour blends with the position
// between fully on and fully off. Tapping flips it; dragging moves the strip
// and, on release, settles on the nearer end (on up to exactly half way).
class FlatSwitch : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool on READ isOn WRITE setOn NOTIFY valueChanged)

public:
    // Where everything lies in a switch of a given size, in points.
    struct Geometry
    {
        double contentWidth = 0;
        double contentHeight = 0;
        double knobDiameter = 0;
        double knobInset = 0;
        double labelWidth = 0;
        double scrollRange = 0;
        QRectF knob;
        QRectF onLabel;
        QRectF offLabel;
    };
    static Geometry geometryFor(QSizeF size);

    explicit FlatSwitch(QWidget *parent = nullptr);
    FlatSwitch(const QRect &frame, QWidget *parent = nullptr);

    bool isOn() const { return m_on; }
    // never sends valueChanged, never animates
    void setOn(bool on);
    void setOn(bool on, bool animated);
    void setOn(bool on, bool animated, bool sendEvent);
    // flips the value as a tap does: animated, sending valueChanged
    void toggle();

    double percentOn() const { return m_percentOn; }
    void setPercentOn(double percentOn);
    void setPercentOn(double percentOn, bool animated);
    // the strip's horizontal scroll offset, in points
    double contentOffset() const { return m_offset; }

    QColor onBackgroundColor() const { return m_onBackgroundColor; }
    void setOnBackgroundColor(const QColor &color);
    QColor offBackgroundColor() const { return m_offBackgroundColor; }
    void setOffBackgroundColor(const QColor &color);
    QColor onColor() const { return m_onColor; }
    void setOnColor(const QColor &color);
    QColor offColor() const { return m_offColor; }
    void setOffColor(const QColor &color);
    QColor highlightedColor() const { return m_highlightedColor; }
    void setHighlightedColor(const QColor &color);

    bool isHighlighted() const { return m_highlighted; }
    void setHighlighted(bool highlighted);
    // the colour the track is painted with now
    QColor trackColor() const { return m_trackColor; }

    QLabel *offLabel() const { return m_offLabel; }
    QLabel *onLabel() const { return m_onLabel; }
    QWidget *thumbView() const { return m_thumbView; }
    QWidget *internalContainer() const { return m_internalContainer; }

    // how long an animated move of the strip takes, in milliseconds
    int scrollDuration() const { return m_scrollDuration; }
    void setScrollDuration(int msecs) { m_scrollDuration = msecs; }

    QSize sizeHint() const override { return {80, 30}; }

signals:
    // sent only by the user's taps and drags (and setOn(on, animated, true))
    void valueChanged(bool on);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    // with the keyboard on it (see setFocusPolicy), Space or Return flips it
    void keyPressEvent(QKeyEvent *event) override;

private:
    void setUp();
    void layoutContent();
    void recolor();
    void scrollTo(double offset, bool animated);
    void applyOffset(double offset);
    void handleTap(TapGestureRecognizer *tap);
    void handlePan(PanGestureRecognizer *pan);

    bool m_on = true;
    double m_percentOn = 1.0;
    double m_offset = 0.0;
    bool m_highlighted = false;
    int m_scrollDuration = 300;
    Geometry m_geometry;
    QColor m_onBackgroundColor;
    QColor m_offBackgroundColor;
    QColor m_onColor;
    QColor m_offColor;
    QColor m_highlightedColor;
    QColor m_trackColor;
    QLabel *m_offLabel = nullptr;
    QLabel *m_onLabel = nullptr;
    QWidget *m_thumbView = nullptr;
    QWidget *m_internalContainer = nullptr;
    QWidget *m_content = nullptr;
    QVariantAnimation *m_scroll = nullptr;
};

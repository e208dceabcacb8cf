#pragma once

#include "ui/ColorPalette.h"
#include "ui/EdgeInsets.h"
#include "ui/StretchableImage.h"

#include <QColor>
#include <QPushButton>

// A flat button: a solid rounded background in its normal state and one of
// the shadow colour while pressed. The shadow height only shifts the title:
// up by the height at rest, back to its place while pressed.
class FlatButton : public QPushButton
{
    Q_OBJECT

public:
    explicit FlatButton(QWidget *parent = nullptr);
    FlatButton(const QRect &frame, QWidget *parent = nullptr);

    QColor buttonColor() const { return m_buttonColor; }
    void setButtonColor(const QColor &color);
    QColor shadowColor() const { return m_shadowColor; }
    void setShadowColor(const QColor &color);
    double shadowHeight() const { return m_shadowHeight; }
    void setShadowHeight(double height);
    double cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(double radius);

    EdgeInsets defaultEdgeInsets() const { return m_defaultEdgeInsets; }
    void setDefaultEdgeInsets(const EdgeInsets &insets) { m_defaultEdgeInsets = insets; }
    EdgeInsets normalEdgeInsets() const { return m_normalEdgeInsets; }
    void setNormalEdgeInsets(const EdgeInsets &insets) { m_normalEdgeInsets = insets; }
    EdgeInsets highlightedEdgeInsets() const { return m_highlightedEdgeInsets; }
    void setHighlightedEdgeInsets(const EdgeInsets &insets) { m_highlightedEdgeInsets = insets; }

    // where the title is placed inside the button
    EdgeInsets titleEdgeInsets() const { return m_titleEdgeInsets; }
    void setTitleEdgeInsets(const EdgeInsets &insets);

    // pressed look: the title insets first, then the button's own highlighting
    void setHighlighted(bool highlighted);
    bool isHighlighted() const { return isDown(); }

    void setTitleColor(const QColor &color, bool highlighted = false);
    QColor titleColor(bool highlighted = false) const;

    const StretchableImage &backgroundImage(bool highlighted) const
    {
        return highlighted ? m_highlightedBackground : m_normalBackground;
    }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void setUp();
    void configureFlatButton();

    QColor m_buttonColor;
    QColor m_shadowColor;
    double m_shadowHeight = 0;
    double m_cornerRadius = 6;
    EdgeInsets m_defaultEdgeInsets;
    EdgeInsets m_normalEdgeInsets;
    EdgeInsets m_highlightedEdgeInsets;
    EdgeInsets m_titleEdgeInsets;
    QColor m_titleColor = ColorPalette::whiteColor();
    QColor m_highlightedTitleColor = ColorPalette::whiteColor();
    StretchableImage m_normalBackground;
    StretchableImage m_highlightedBackground;
};

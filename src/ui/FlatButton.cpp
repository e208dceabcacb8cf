#include "ui/FlatButton.h"

#include "ui/ColorPalette.h"
#include "ui/FlatImages.h"

#include <QPainter>

FlatButton::FlatButton(QWidget *parent) : QPushButton(parent)
{
    setUp();
}

FlatButton::FlatButton(const QRect &frame, QWidget *parent) : QPushButton(parent)
{
    setGeometry(frame);
    setUp();
}

void FlatButton::setUp()
{
    m_defaultEdgeInsets = m_titleEdgeInsets;
    m_buttonColor = ColorPalette::turquoiseColor();
    m_shadowColor = ColorPalette::greenSeaColor();
    QFont font = this->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.15);
    setFont(font);
    setCursor(Qt::PointingHandCursor);
    // the pressed state can change without setHighlighted (the mouse leaving
    // a held button), so the title insets follow the button's own signals
    connect(this, &QAbstractButton::pressed, this,
            [this] { setTitleEdgeInsets(m_highlightedEdgeInsets); });
    connect(this, &QAbstractButton::released, this,
            [this] { setTitleEdgeInsets(m_normalEdgeInsets); });
    configureFlatButton();
}

void FlatButton::setButtonColor(const QColor &color)
{
    m_buttonColor = color;
    configureFlatButton();
}

void FlatButton::setShadowColor(const QColor &color)
{
    m_shadowColor = color;
    configureFlatButton();
}

void FlatButton::setShadowHeight(double height)
{
    m_shadowHeight = height;
    m_highlightedEdgeInsets = m_defaultEdgeInsets;
    m_normalEdgeInsets = m_defaultEdgeInsets;
    m_normalEdgeInsets.top -= height;
    setTitleEdgeInsets(m_normalEdgeInsets);
    configureFlatButton();
}

void FlatButton::setCornerRadius(double radius)
{
    m_cornerRadius = radius;
    configureFlatButton();
}

void FlatButton::setTitleEdgeInsets(const EdgeInsets &insets)
{
    m_titleEdgeInsets = insets;
    update();
}

void FlatButton::setHighlighted(bool highlighted)
{
    setTitleEdgeInsets(highlighted ? m_highlightedEdgeInsets : m_normalEdgeInsets);
    setDown(highlighted);
}

void FlatButton::setTitleColor(const QColor &color, bool highlighted)
{
    (highlighted ? m_highlightedTitleColor : m_titleColor) = color;
    update();
}

QColor FlatButton::titleColor(bool highlighted) const
{
    return highlighted ? m_highlightedTitleColor : m_titleColor;
}

void FlatButton::configureFlatButton()
{
    // the shadow is clear and has no insets: the button stays flat and
    // pressing it only changes its colour to the shadow colour
    const EdgeInsets none;
    m_normalBackground =
        FlatImages::buttonImageWithColor(m_buttonColor, m_cornerRadius, Qt::transparent, none);
    m_highlightedBackground =
        FlatImages::buttonImageWithColor(m_shadowColor, m_cornerRadius, Qt::transparent, none);
    update();
}

QSize FlatButton::sizeHint() const
{
    const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
    return {text.width() + 32, qMax(40, text.height() + 16)};
}

void FlatButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const bool pressed = isDown();
    const QRectF bounds(rect());
    backgroundImage(pressed).draw(&painter, bounds);
    const QRectF titleRect = bounds.marginsRemoved(m_titleEdgeInsets.toMargins());
    QColor title = titleColor(pressed);
    if (!isEnabled())
        title.setAlphaF(title.alphaF() * 0.5f);
    painter.setPen(title);
    painter.setFont(font());
    painter.drawText(titleRect, Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

#include "ui/FlatSwitch.h"

#include "ui/ColorPalette.h"
#include "ui/ViewHelpers.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QVariantAnimation>

#include <cmath>

namespace {
constexpr qreal CornerRadius = 3.0;
}

FlatSwitch::Geometry FlatSwitch::geometryFor(QSizeF size)
{
    const double w = size.width();
    const double h = size.height();
    Geometry g;
    g.contentWidth = 2 * w - h;
    g.contentHeight = h;
    // the knob's size is worked out in single precision
    g.knobDiameter = double(std::floor(float(h) * 0.75f));
    g.knobInset = (h - g.knobDiameter) / 2;
    g.knob = QRectF(w - h + g.knobInset, g.knobInset, g.knobDiameter, g.knobDiameter);
    g.labelWidth = (g.contentWidth - g.knobDiameter) / 2;
    g.onLabel = QRectF(0, 0, g.labelWidth, h);
    g.offLabel = QRectF(g.contentWidth - g.labelWidth, 0, g.labelWidth, h);
    g.scrollRange = g.contentWidth - w;
    return g;
}

FlatSwitch::FlatSwitch(QWidget *parent) : QWidget(parent)
{
    setUp();
}

FlatSwitch::FlatSwitch(const QRect &frame, QWidget *parent) : QWidget(parent)
{
    setGeometry(frame);
    setUp();
}

void FlatSwitch::setUp()
{
    m_onBackgroundColor = ColorPalette::turquoiseColor();
    m_offBackgroundColor = ColorPalette::silverColor();
    m_onColor = ColorPalette::cloudsColor();
    m_offColor = ColorPalette::cloudsColor();
    m_highlightedColor = ColorPalette::greenSeaColor();

    // the strip takes no touches of its own: the switch's gestures move it
    m_internalContainer = new QWidget(this);
    m_internalContainer->setObjectName(QStringLiteral("internalContainer"));
    m_internalContainer->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_content = new QWidget(m_internalContainer);

    QFont font = this->font();
    font.setBold(true);
    auto makeLabel = [this, &font](const QString &text, const char *name) {
        auto *label = new QLabel(text, m_content);
        label->setObjectName(QLatin1String(name));
        label->setAlignment(Qt::AlignCenter);
        label->setFont(font);
        ViewHelpers::setClearColor(label);
        return label;
    };
    m_onLabel = makeLabel(tr("ON"), "onLabel");
    m_offLabel = makeLabel(tr("OFF"), "offLabel");
    m_thumbView = new QWidget(m_content);
    m_thumbView->setObjectName(QStringLiteral("thumbView"));

    m_scroll = new QVariantAnimation(this);
    m_scroll->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_scroll, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { applyOffset(value.toDouble()); });

    ViewHelpers::addPanGestureWithTarget(this, this, &FlatSwitch::handlePan);
    ViewHelpers::addTapGestureWithTarget(this, this, &FlatSwitch::handleTap);

    m_on = true;
    m_percentOn = 1.0;
    layoutContent();
}

void FlatSwitch::resizeEvent(QResizeEvent *)
{
    layoutContent();
}

void FlatSwitch::layoutContent()
{
    m_geometry = geometryFor(QSizeF(size()));
    m_internalContainer->setGeometry(rect());
    m_content->resize(qRound(m_geometry.contentWidth), height());
    m_thumbView->setGeometry(m_geometry.knob.toRect());
    ViewHelpers::circle(m_thumbView);
    m_onLabel->setGeometry(m_geometry.onLabel.toRect());
    m_offLabel->setGeometry(m_geometry.offLabel.toRect());
    setOn(m_on, false);
}

void FlatSwitch::setOn(bool on)
{
    setOn(on, false, false);
}

void FlatSwitch::setOn(bool on, bool animated)
{
    setOn(on, animated, false);
}

void FlatSwitch::setOn(bool on, bool animated, bool sendEvent)
{
    if (on != m_on) {
        m_on = on;
        // screen readers hear of the new value whoever changed it
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(this, changed);
        QAccessible::updateAccessibility(&event);
        if (sendEvent)
            emit valueChanged(on);
    }
    // the display follows the value even when the value did not change
    setPercentOn(on ? 1.0 : 0.0, animated);
}

void FlatSwitch::setPercentOn(double percentOn)
{
    setPercentOn(percentOn, false);
}

void FlatSwitch::setPercentOn(double percentOn, bool animated)
{
    m_percentOn = percentOn;
    recolor();
    scrollTo(m_geometry.scrollRange * (1.0 - percentOn), animated);
}

void FlatSwitch::scrollTo(double offset, bool animated)
{
    m_scroll->stop();
    if (!animated || m_scrollDuration <= 0 || qFuzzyCompare(1.0 + offset, 1.0 + m_offset)) {
        applyOffset(offset);
        return;
    }
    m_scroll->setDuration(m_scrollDuration);
    m_scroll->setStartValue(m_offset);
    m_scroll->setEndValue(offset);
    m_scroll->start();
}

void FlatSwitch::applyOffset(double offset)
{
    m_offset = offset;
    m_content->move(-qRound(offset), 0);
}

void FlatSwitch::recolor()
{
    m_trackColor = ColorPalette::blendedColorWithForegroundColor(m_onBackgroundColor,
                                                                 m_offBackgroundColor, m_percentOn);
    const QColor foreground =
        ColorPalette::blendedColorWithForegroundColor(m_onColor, m_offColor, m_percentOn);
    ViewHelpers::setColor(m_thumbView, foreground);
    for (QLabel *label : {m_onLabel, m_offLabel}) {
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, foreground);
        label->setPalette(palette);
    }
    update();
}

void FlatSwitch::setOnBackgroundColor(const QColor &color)
{
    m_onBackgroundColor = color;
    recolor();
}

void FlatSwitch::setOffBackgroundColor(const QColor &color)
{
    m_offBackgroundColor = color;
    recolor();
}

void FlatSwitch::setOnColor(const QColor &color)
{
    m_onColor = color;
    recolor();
}

void FlatSwitch::setOffColor(const QColor &color)
{
    m_offColor = color;
    recolor();
}

void FlatSwitch::setHighlightedColor(const QColor &color)
{
    m_highlightedColor = color;
    recolor();
}

void FlatSwitch::setHighlighted(bool highlighted)
{
    m_highlighted = highlighted;
    // only the start of a touch paints the track; the next recolouring
    // brings the blended colour back
    if (highlighted) {
        m_trackColor = m_highlightedColor;
        update();
    }
}

void FlatSwitch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath track;
    track.addRoundedRect(QRectF(rect()), CornerRadius, CornerRadius);
    painter.fillPath(track, m_trackColor);
}

void FlatSwitch::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setHighlighted(true);
    event->accept();
}

void FlatSwitch::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)
        toggle();
    else
        QWidget::keyPressEvent(event);
}

void FlatSwitch::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setHighlighted(false);
    event->accept();
}

void FlatSwitch::toggle()
{
    setOn(!m_on, true, true);
}

void FlatSwitch::handleTap(TapGestureRecognizer *)
{
    toggle();
}

void FlatSwitch::handlePan(PanGestureRecognizer *pan)
{
    const GestureRecognizer::State state = pan->state();
    if (state != GestureRecognizer::Began && state != GestureRecognizer::Changed &&
        state != GestureRecognizer::Ended)
        return;
    const double range = m_geometry.scrollRange;
    const double translation = pan->translationInView(m_internalContainer).x();
    pan->setTranslation(QPointF(0, 0), m_internalContainer);
    m_scroll->stop();
    const double offset = qBound(0.0, m_offset - translation, qMax(0.0, range));
    if (state == GestureRecognizer::Ended) {
        setOn(offset <= range / 2, true, true);
        return;
    }
    setPercentOn(range > 0 ? 1.0 - offset / range : 1.0, false);
}

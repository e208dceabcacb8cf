// What the progress overlay shows and how it is drawn: the indicator for its
// mode, the labels, their layout and the rounded box. Showing, hiding and the
// view hierarchy are in ProgressHUD.cpp.

#include "app/ProgressHUD.h"

#include "app/ActivityIndicatorView.h"
#include "app/RoundProgressView.h"

#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

void ProgressHUD::setMode(int mode)
{
    m_mode = mode;
    updateIndicators();
    layoutContent();
}

void ProgressHUD::setCustomView(QWidget *view)
{
    if (m_customView && m_customView != view && m_indicator == m_customView)
        m_customView->hide();
    m_customView = view;
    updateIndicators();
    layoutContent();
}

void ProgressHUD::setProgress(float progress)
{
    m_progress = progress;
    if (auto *round = qobject_cast<RoundProgressView *>(m_indicator.data()))
        round->setProgress(progress);
}

void ProgressHUD::updateIndicators()
{
    if (m_indicator && m_indicator != m_customView)
        delete m_indicator.data();
    else if (m_indicator)
        m_indicator->hide();
    m_indicator = nullptr;

    if (m_mode == Indeterminate) {
        auto *spinner = new ActivityIndicatorView(this);
        spinner->startAnimating();
        spinner->setSuspended(alpha() <= 0.0);
        m_indicator = spinner;
    } else if (m_mode == Determinate || m_mode == AnnularDeterminate) {
        auto *round = new RoundProgressView(this);
        round->setAnnular(m_mode == AnnularDeterminate);
        round->setProgress(m_progress);
        m_indicator = round;
    } else if (m_mode == CustomView && m_customView) {
        if (m_customView->parentWidget() != this)
            m_customView->setParent(this);
        m_indicator = m_customView;
    }
    if (m_indicator) {
        m_indicator->setObjectName(QStringLiteral("indicator"));
        m_indicator->show();
    }
}

void ProgressHUD::setLabelText(const QString &text)
{
    m_labelText = text;
    updateLabels();
}

void ProgressHUD::setDetailsLabelText(const QString &text)
{
    m_detailsLabelText = text;
    updateLabels();
}

void ProgressHUD::setLabelFont(const QFont &font)
{
    m_labelFont = font;
    updateLabels();
}

void ProgressHUD::setDetailsLabelFont(const QFont &font)
{
    m_detailsLabelFont = font;
    updateLabels();
}

void ProgressHUD::updateLabels()
{
    m_label->setFont(m_labelFont);
    m_detailsLabel->setFont(m_detailsLabelFont);
    m_detailsLabel->setText(m_detailsLabelText);
    layoutContent();
}

void ProgressHUD::setOpacity(float opacity)
{
    m_opacity = opacity;
    update();
}

void ProgressHUD::setXOffset(float offset)
{
    m_xOffset = offset;
    layoutContent();
}

void ProgressHUD::setYOffset(float offset)
{
    m_yOffset = offset;
    layoutContent();
}

void ProgressHUD::setMargin(float margin)
{
    m_margin = margin;
    layoutContent();
}

void ProgressHUD::setDimBackground(bool dim)
{
    m_dimBackground = dim;
    update();
}

void ProgressHUD::setMinSize(QSizeF size)
{
    m_minSize = size;
    layoutContent();
}

void ProgressHUD::setSquare(bool square)
{
    m_square = square;
    layoutContent();
}

void ProgressHUD::resizeEvent(QResizeEvent *)
{
    layoutContent();
}

void ProgressHUD::layoutContent()
{
    ProgressHUDLayout::Input input;
    input.bounds = QSizeF(size());
    if (m_indicator) {
        // a custom view that nobody sized comes at its preferred size
        const bool sized = m_indicator->testAttribute(Qt::WA_Resized);
        input.indicator = QSizeF(sized ? m_indicator->size() : m_indicator->sizeHint());
    }
    input.labelText = m_labelText;
    input.labelFont = m_labelFont;
    input.detailsLabelText = m_detailsLabelText;
    input.detailsLabelFont = m_detailsLabelFont;
    input.margin = m_margin;
    input.xOffset = m_xOffset;
    input.yOffset = m_yOffset;
    input.square = m_square;
    input.minSize = m_minSize;
    m_layout = ProgressHUDLayout::compute(input);

    if (m_indicator)
        m_indicator->setGeometry(m_layout.indicator.toAlignedRect());
    m_label->setText(m_layout.labelText);
    // a long text is cut short on screen but read out whole
    m_label->setAccessibleName(m_labelText);
    m_label->setVisible(!m_layout.labelText.isEmpty());
    m_label->setGeometry(m_layout.label.toAlignedRect());
    m_detailsLabel->setVisible(!m_detailsLabelText.isEmpty());
    m_detailsLabel->setGeometry(m_layout.detailsLabel.toAlignedRect());
    update();
}

void ProgressHUD::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_dimBackground) {
        const QPointF centre = QRectF(rect()).center();
        const qreal radius = qMin(width(), height());
        QRadialGradient shade(centre, radius);
        shade.setColorAt(0.0, QColor(Qt::transparent));
        shade.setColorAt(1.0, QColor::fromRgbF(0, 0, 0, 0.75f));
        painter.fillRect(rect(), shade);
    }
    QPainterPath box;
    box.addRoundedRect(m_layout.box, 10.0, 10.0);
    painter.fillPath(box, QColor::fromRgbF(0, 0, 0, m_opacity));
}

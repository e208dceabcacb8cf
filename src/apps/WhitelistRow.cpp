#include "apps/WhitelistRow.h"

#include "ui/ColorPalette.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

WhitelistRow::WhitelistRow(const QString &name, const QImage &icon, QWidget *parent)
    : QAbstractButton(parent), m_icon(icon)
{
    setText(name);
    QFont font = this->font();
    font.setPixelSize(15);
    setFont(font);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setFixedHeight(RowHeight);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize WhitelistRow::sizeHint() const
{
    return {320, RowHeight};
}

void WhitelistRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRect bounds = rect();
    QColor background = ColorPalette::whiteColor();
    if (isDown())
        background = ColorPalette::silverColor();
    else if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange))
        // the keyboard's row, once the keyboard is in use: a tap opening the
        // list shows no row as picked
        background = ColorPalette::cloudsColor();
    painter.fillRect(bounds, background);

    const QRect iconRect(7, 7, 30, 30);
    if (!m_icon.isNull()) {
        const qreal ratio = devicePixelRatioF();
        if (m_iconPixmap.isNull()) {
            m_iconPixmap = QPixmap::fromImage(m_icon.scaled(
                QSize(30, 30) * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation));
            m_iconPixmap.setDevicePixelRatio(ratio);
        }
        const QSizeF drawn = m_iconPixmap.deviceIndependentSize();
        const QPointF corner(iconRect.x() + (30 - drawn.width()) / 2,
                             iconRect.y() + (30 - drawn.height()) / 2);
        painter.drawPixmap(corner, m_iconPixmap);
    }

    const int checkWidth = 44;
    painter.setPen(ColorPalette::midnightBlueColor());
    painter.setFont(font());
    const QRect nameRect(45, 7, qMax(0, bounds.width() - 45 - checkWidth), 30);
    painter.drawText(nameRect, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(text(), Qt::ElideRight, nameRect.width()));

    if (isChecked()) {
        QPainterPath mark;
        const QPointF origin(bounds.width() - checkWidth + 14, bounds.height() / 2.0);
        mark.moveTo(origin + QPointF(0, 0));
        mark.lineTo(origin + QPointF(5, 5));
        mark.lineTo(origin + QPointF(15, -6));
        painter.setPen(
            QPen(ColorPalette::turquoiseColor(), 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(mark);
    }

    painter.setPen(QPen(ColorPalette::cloudsColor().darker(108), 1));
    painter.drawLine(45, bounds.height() - 1, bounds.width(), bounds.height() - 1);
}

void WhitelistRow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        emit moveFocus(event->key() == Qt::Key_Up ? -1 : 1);
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

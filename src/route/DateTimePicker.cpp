#include "route/DateTimePicker.h"

#include "ui/ColorPalette.h"

#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {
constexpr double RowHeight = 40.0;
constexpr double DragThreshold = 6.0;
} // namespace

DateTimePicker::DateTimePicker(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Date and time"));
    setCursor(Qt::OpenHandCursor);
    m_value = QDateTime::currentDateTime();
    m_minimum = QDateTime::fromSecsSinceEpoch(0);
    m_maximum = distantFuture();
    updateDescription();
}

QDateTime DateTimePicker::distantFuture()
{
    return QDateTime(QDate(4001, 1, 1), QTime(0, 0), Qt::UTC);
}

void DateTimePicker::setDate(const QDateTime &value)
{
    m_value = std::clamp(value, m_minimum, m_maximum);
    updateDescription();
    update();
}

void DateTimePicker::setMinimumDate(const QDateTime &minimum)
{
    m_minimum = minimum;
    setDate(m_value);
}

void DateTimePicker::setMaximumDate(const QDateTime &maximum)
{
    m_maximum = maximum;
    setDate(m_value);
}

QDateTime DateTimePicker::stepped(Column column, const QDateTime &value, int steps) const
{
    switch (column) {
    case Day:
        return value.addDays(steps);
    case Hour:
        return value.addSecs(qint64(steps) * 3600);
    case Minute:
        return value.addSecs(qint64(steps) * 60);
    }
    return value;
}

void DateTimePicker::step(Column column, int steps)
{
    if (steps == 0)
        return;
    const QDateTime next = std::clamp(stepped(column, m_value, steps), m_minimum, m_maximum);
    if (next == m_value)
        return;
    m_value = next;
    updateDescription();
    update();
    emit valueChanged(m_value);
}

void DateTimePicker::updateDescription()
{
    setAccessibleDescription(QLocale().toString(m_value, QLocale::LongFormat));
}

QRectF DateTimePicker::columnRect(Column column) const
{
    const double w = width();
    const double dayWidth = w * 0.5;
    const double otherWidth = (w - dayWidth) / 2.0;
    switch (column) {
    case Day:
        return {0, 0, dayWidth, double(height())};
    case Hour:
        return {dayWidth, 0, otherWidth, double(height())};
    case Minute:
        return {dayWidth + otherWidth, 0, otherWidth, double(height())};
    }
    return {};
}

DateTimePicker::Column DateTimePicker::columnAt(const QPointF &point) const
{
    if (columnRect(Minute).contains(point))
        return Minute;
    if (columnRect(Hour).contains(point))
        return Hour;
    return Day;
}

QString DateTimePicker::text(Column column, const QDateTime &value) const
{
    switch (column) {
    case Day:
        if (value.date() == QDate::currentDate())
            return tr("Today");
        return QLocale().toString(value.date(), QStringLiteral("ddd d MMM"));
    case Hour:
        return value.toString(QStringLiteral("HH"));
    case Minute:
        return value.toString(QStringLiteral("mm"));
    }
    return {};
}

void DateTimePicker::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), ColorPalette::whiteColor());
    const double middle = height() / 2.0;
    const QRectF band(8, middle - RowHeight / 2, width() - 16, RowHeight);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColorPalette::cloudsColor());
    painter.drawRoundedRect(band, 8, 8);

    QFont font = this->font();
    font.setPixelSize(21);
    const int rows = int(std::ceil(middle / RowHeight)) + 1;
    for (Column column : {Day, Hour, Minute}) {
        const QRectF area = columnRect(column);
        const double offset = (m_pressed && m_dragColumn == column) ? m_dragOffset : 0.0;
        for (int row = -rows; row <= rows; ++row) {
            const QDateTime value = stepped(column, m_value, row);
            if (value < m_minimum || value > m_maximum)
                continue;
            const double y = middle + row * RowHeight + offset;
            const double distance = std::min(1.0, std::abs(y - middle) / (middle + 1));
            QColor color = row == 0 && offset == 0.0 ? ColorPalette::midnightBlueColor()
                                                     : ColorPalette::asbestosColor();
            color.setAlphaF(1.0 - 0.75 * distance);
            font.setWeight(row == 0 ? QFont::DemiBold : QFont::Normal);
            painter.setFont(font);
            painter.setPen(color);
            painter.drawText(QRectF(area.left(), y - RowHeight / 2, area.width(), RowHeight),
                             Qt::AlignCenter, text(column, value));
        }
        if (column != Day) {
            painter.setPen(ColorPalette::silverColor());
            painter.drawText(QRectF(area.left() - 6, middle - RowHeight / 2, 12, RowHeight),
                             Qt::AlignCenter, column == Minute ? QStringLiteral(":") : QString());
        }
    }
    if (hasFocus()) {
        // shows which column the arrow keys turn
        const QRectF area = columnRect(m_column);
        QPen pen(ColorPalette::turquoiseColor(), 2);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(
            QRectF(area.left() + 10, band.top() + 1, area.width() - 20, band.height() - 2), 7, 7);
    }
}

void DateTimePicker::mousePressEvent(QMouseEvent *event)
{
    m_pressed = true;
    m_dragged = false;
    m_dragColumn = columnAt(event->position());
    m_column = m_dragColumn;
    m_pressY = event->position().y();
    m_dragOffset = 0.0;
    update();
}

void DateTimePicker::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_pressed)
        return;
    const double moved = event->position().y() - m_pressY;
    if (!m_dragged && std::abs(moved) < DragThreshold)
        return;
    m_dragged = true;
    setCursor(Qt::ClosedHandCursor);
    // whole rows dragged past the band are applied at once; the rest shows as an offset
    m_dragOffset = moved;
    const int rows = int(m_dragOffset / RowHeight);
    if (rows != 0) {
        step(m_dragColumn, -rows);
        m_pressY += rows * RowHeight;
        m_dragOffset -= rows * RowHeight;
    }
    update();
}

void DateTimePicker::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_pressed)
        return;
    m_pressed = false;
    setCursor(Qt::OpenHandCursor);
    if (m_dragged) {
        // settle on the nearer row
        step(m_dragColumn, -int(std::lround(m_dragOffset / RowHeight)));
    } else {
        const double fromMiddle = event->position().y() - height() / 2.0;
        const int rows = int(std::lround(fromMiddle / RowHeight));
        step(m_dragColumn, rows);
    }
    m_dragOffset = 0.0;
    update();
}

void DateTimePicker::wheelEvent(QWheelEvent *event)
{
    const int steps = event->angleDelta().y() / 120;
    m_column = columnAt(event->position());
    step(m_column, -steps);
    event->accept();
}

void DateTimePicker::keyPressEvent(QKeyEvent *event)
{
    const int big = m_column == Minute ? 10 : m_column == Hour ? 6 : 7;
    switch (event->key()) {
    case Qt::Key_Left:
        m_column = Column(std::max(0, int(m_column) - 1));
        update();
        break;
    case Qt::Key_Right:
        m_column = Column(std::min(2, int(m_column) + 1));
        update();
        break;
    case Qt::Key_Up:
        step(m_column, -1);
        break;
    case Qt::Key_Down:
        step(m_column, 1);
        break;
    case Qt::Key_PageUp:
        step(m_column, -big);
        break;
    case Qt::Key_PageDown:
        step(m_column, big);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit activated();
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

#pragma once

#include <QDateTime>
#include <QWidget>

// A date-and-time wheel as phones show it: a day column, an hour column and
// a minute column, the chosen row in a band across the middle. A finger
// drags a column, a mouse wheel turns it, a tap on a row above or below the
// band moves it by one; by keyboard, Left and Right pick the column, Up and
// Down (Page Up and Page Down by larger steps) turn it, and Return confirms.
// Values stay between the minimum and the maximum; the seconds of the value
// are kept as they were set.
class DateTimePicker : public QWidget
{
    Q_OBJECT

public:
    enum Column { Day, Hour, Minute };

    explicit DateTimePicker(QWidget *parent = nullptr);

    QDateTime date() const { return m_value; }
    // never sends valueChanged
    void setDate(const QDateTime &value);
    QDateTime minimumDate() const { return m_minimum; }
    void setMinimumDate(const QDateTime &minimum);
    QDateTime maximumDate() const { return m_maximum; }
    void setMaximumDate(const QDateTime &maximum);

    // Turns `column` by `steps` rows (positive: later), as the user does.
    void step(Column column, int steps);
    Column currentColumn() const { return m_column; }

    // the far future, as the platform's date pickers take it
    static QDateTime distantFuture();

    QSize sizeHint() const override { return {390, 216}; }

signals:
    // every change the user makes
    void valueChanged(const QDateTime &value);
    // Return or Enter pressed: the user is done
    void activated();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QRectF columnRect(Column column) const;
    Column columnAt(const QPointF &point) const;
    QString text(Column column, const QDateTime &value) const;
    QDateTime stepped(Column column, const QDateTime &value, int steps) const;
    void updateDescription();

    QDateTime m_value;
    QDateTime m_minimum;
    QDateTime m_maximum;
    Column m_column = Day;
    // dragging
    bool m_pressed = false;
    bool m_dragged = false;
    Column m_dragColumn = Day;
    double m_pressY = 0.0;
    double m_dragOffset = 0.0; // rows moved but not yet applied, in pixels
};

#pragma once

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QWidget>

class QMouseEvent;

// Turns the mouse (and touch, which Qt delivers to widgets as mouse events)
// on one widget into a gesture with a state, reported through triggered()
// whenever the state carries news: began, changed, ended or cancelled. A
// recogniser only watches its widget's events; it never takes them away, so
// the widget's own press and release handling still runs.
class GestureRecognizer : public QObject
{
    Q_OBJECT

public:
    enum State { Possible, Began, Changed, Ended, Cancelled, Failed };
    Q_ENUM(State)

    explicit GestureRecognizer(QWidget *view);

    QWidget *view() const { return m_view; }
    State state() const { return m_state; }
    // where the pointer is now, in `view`'s coordinates (the recogniser's own
    // view when null)
    QPointF locationInView(const QWidget *view = nullptr) const;

signals:
    void triggered(GestureRecognizer *recognizer);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

    virtual void pressed(QPointF position) = 0;
    virtual void moved(QPointF position) = 0;
    virtual void released(QPointF position) = 0;
    virtual void cancelled();

    void setState(State state);
    QPointF mapToView(QPointF position, const QWidget *view) const;

private:
    QPointer<QWidget> m_view;
    State m_state = Possible;
    QPointF m_location;
    bool m_tracking = false;
};

#pragma once

#include <QListWidget>

// The favourites list's table: one row per saved place, with the ways a
// phone list offers to delete a row. In browsing mode a tap (or Return)
// selects a row and a swipe to the left reveals its Delete button; in edit
// mode every row shows a delete control that reveals the Delete button, and
// the Delete key removes the current row at once.
class FavoritesTableView : public QListWidget
{
    Q_OBJECT

public:
    explicit FavoritesTableView(QWidget *parent = nullptr);

    bool isEditing() const { return m_editing; }
    void setEditing(bool editing);
    // the row whose Delete button shows, or -1
    int revealedRow() const { return m_revealedRow; }
    void revealDeleteButton(int row);

    // where a row's controls lie, in viewport coordinates
    QRect deleteControlRect(int row) const;
    QRect deleteButtonRect(int row) const;

    static constexpr int RowHeight = 52;

signals:
    void rowSelected(int row);
    void deleteRequested(int row);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void tapAt(const QPoint &position);

    bool m_editing = false;
    int m_revealedRow = -1;
    bool m_pressed = false;
    QPoint m_pressPosition;
};

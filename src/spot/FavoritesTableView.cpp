#include "spot/FavoritesTableView.h"

#include "ui/ColorPalette.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace {

// a horizontal move this long, and mostly sideways, is a swipe
constexpr int SwipeDistance = 40;
constexpr int DeleteButtonWidth = 82;
constexpr int ControlInset = 14;
constexpr int ControlSize = 22;

// Paints a row: its name, in edit mode the round delete control before it,
// and the Delete button over its right end while revealed.
class FavoriteRowDelegate : public QStyledItemDelegate
{
public:
    explicit FavoriteRowDelegate(FavoritesTableView *table)
        : QStyledItemDelegate(table), m_table(table)
    {
    }

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return {0, FavoritesTableView::RowHeight};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const QRect row = option.rect;
        const bool selectable = index.flags() & Qt::ItemIsSelectable;
        const bool current = option.state & QStyle::State_HasFocus;
        painter->fillRect(row,
                          current ? ColorPalette::selectionColor() : ColorPalette::whiteColor());
        painter->setPen(ColorPalette::cloudsColor().darker(106));
        painter->drawLine(row.left() + 16, row.bottom(), row.right(), row.bottom());

        int textLeft = row.left() + 16;
        if (m_table->isEditing()) {
            const QRect control = m_table->deleteControlRect(index.row());
            painter->setPen(Qt::NoPen);
            painter->setBrush(ColorPalette::alizarinColor());
            painter->drawEllipse(control);
            painter->setPen(QPen(ColorPalette::whiteColor(), 2.5));
            painter->drawLine(control.left() + 6, control.center().y() + 1, control.right() - 5,
                              control.center().y() + 1);
            textLeft = control.right() + 14;
        }
        QRect textRect(textLeft, row.top(), row.right() - textLeft - 12, row.height());
        const bool revealed = index.row() == m_table->revealedRow();
        if (revealed)
            textRect.setRight(m_table->deleteButtonRect(index.row()).left() - 8);
        QFont font = option.font;
        font.setPixelSize(17);
        painter->setFont(font);
        painter->setPen(selectable ? ColorPalette::rowTextColor() : ColorPalette::concreteColor());
        const QString text = painter->fontMetrics().elidedText(
            index.data(Qt::DisplayRole).toString(), Qt::ElideRight, textRect.width());
        painter->drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter, text);

        if (revealed) {
            const QRect button = m_table->deleteButtonRect(index.row());
            painter->fillRect(button, ColorPalette::alizarinColor());
            painter->setPen(ColorPalette::whiteColor());
            font.setPixelSize(16);
            painter->setFont(font);
            painter->drawText(button, Qt::AlignCenter, FavoritesTableView::tr("Delete"));
        }
        painter->restore();
    }

private:
    FavoritesTableView *m_table;
};

} // namespace

FavoritesTableView::FavoritesTableView(QWidget *parent) : QListWidget(parent)
{
    setItemDelegate(new FavoriteRowDelegate(this));
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::NoSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
}

void FavoritesTableView::setEditing(bool editing)
{
    m_editing = editing;
    m_revealedRow = -1;
    viewport()->update();
}

void FavoritesTableView::revealDeleteButton(int row)
{
    m_revealedRow = row;
    viewport()->update();
}

QRect FavoritesTableView::deleteControlRect(int row) const
{
    const QRect rect = visualRect(model()->index(row, 0));
    return {rect.left() + ControlInset, rect.center().y() - ControlSize / 2 + 1, ControlSize,
            ControlSize};
}

QRect FavoritesTableView::deleteButtonRect(int row) const
{
    const QRect rect = visualRect(model()->index(row, 0));
    return {rect.right() + 1 - DeleteButtonWidth, rect.top(), DeleteButtonWidth, rect.height() - 1};
}

void FavoritesTableView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    setFocus(Qt::MouseFocusReason);
    m_pressed = true;
    m_pressPosition = event->position().toPoint();
}

void FavoritesTableView::mouseMoveEvent(QMouseEvent *) {}

void FavoritesTableView::mouseDoubleClickEvent(QMouseEvent *event)
{
    // a second quick tap is a tap like any other
    mousePressEvent(event);
}

void FavoritesTableView::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_pressed || event->button() != Qt::LeftButton)
        return;
    m_pressed = false;
    const QPoint position = event->position().toPoint();
    const QPoint moved = position - m_pressPosition;
    if (moved.x() <= -SwipeDistance && qAbs(moved.y()) < qAbs(moved.x()) / 2) {
        const int row = indexAt(m_pressPosition).row();
        if (row >= 0)
            revealDeleteButton(row);
        return;
    }
    if (moved.manhattanLength() < SwipeDistance / 2)
        tapAt(position);
}

void FavoritesTableView::tapAt(const QPoint &position)
{
    const int row = indexAt(position).row();
    if (m_revealedRow >= 0) {
        // with a Delete button out, a tap either presses it or puts it away
        const int revealed = m_revealedRow;
        revealDeleteButton(-1);
        if (row == revealed && deleteButtonRect(row).contains(position))
            emit deleteRequested(row);
        return;
    }
    if (row < 0)
        return;
    setCurrentRow(row);
    if (m_editing) {
        if (deleteControlRect(row).adjusted(-10, -10, 10, 10).contains(position))
            revealDeleteButton(row);
        return;
    }
    emit rowSelected(row);
}

void FavoritesTableView::keyPressEvent(QKeyEvent *event)
{
    const int row = currentRow();
    switch (event->key()) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        if (m_editing && row >= 0) {
            emit deleteRequested(row);
            return;
        }
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (!m_editing && row >= 0) {
            emit rowSelected(row);
            return;
        }
        break;
    case Qt::Key_Escape:
        if (m_revealedRow >= 0) {
            revealDeleteButton(-1);
            return;
        }
        break;
    default:
        break;
    }
    QListWidget::keyPressEvent(event);
}

void FavoritesTableView::paintEvent(QPaintEvent *event)
{
    QListWidget::paintEvent(event);
    if (count() > 0)
        return;
    // an empty list says how it fills
    QPainter painter(viewport());
    QFont font = painter.font();
    font.setPixelSize(15);
    painter.setFont(font);
    painter.setPen(ColorPalette::asbestosColor());
    painter.drawText(viewport()->rect().adjusted(32, 0, -32, -viewport()->height() / 3),
                     Qt::AlignCenter | Qt::TextWordWrap,
                     tr("No saved places yet.\nChoose a place on the map and press “Add To →”."));
}

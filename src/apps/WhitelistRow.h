#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QPixmap>

// One application in the whitelist: its icon, its name and a checkmark when
// it receives the simulated position. A checkable button, so that a tap, the
// space bar and a screen reader's press or toggle all reach the same signal
// (toggled); the screen then decides the mark from the whitelist record.
class WhitelistRow : public QAbstractButton
{
    Q_OBJECT

public:
    WhitelistRow(const QString &name, const QImage &icon, QWidget *parent = nullptr);

    static constexpr int RowHeight = 44;

    QSize sizeHint() const override;

signals:
    // up or down arrow: the neighbouring row should take the focus
    void moveFocus(int step);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QImage m_icon;
    QPixmap m_iconPixmap; // made on the first paint: rows out of sight cost nothing
};

#pragma once

#include <QString>

class QLabel;
class QPushButton;
class QWidget;

// The frame both main screens share: a top bar with the mode's name, the
// screen's body, and a bottom bar holding the mode button.
struct ModeScreenLayout
{
    QLabel *title = nullptr;
    QWidget *body = nullptr;
    QPushButton *exchangeButton = nullptr;

    static ModeScreenLayout build(QWidget *screen, const QString &title, const QString &subtitle,
                                  const QString &otherMode);
};

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

    // Names that screen readers and test drivers know the bars' buttons by;
    // the buttons show a picture (or, for the mode, an arrow and the other
    // mode's name) rather than a word for what they are.
    static QString modeName();
    static QString informationName();
    static QString currentLocationName();

    static ModeScreenLayout build(QWidget *screen, const QString &title, const QString &subtitle,
                                  const QString &otherMode);
};

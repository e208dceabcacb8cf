#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

// A message with buttons, shown over the application. Texts arrive already
// translated. `done` receives the index of the pressed button.
struct Alert
{
    QString title;
    QString message;
    QStringList buttons;
    std::function<void(int)> done;
};

class AlertPresenter
{
public:
    virtual ~AlertPresenter() = default;
    virtual void present(const Alert &alert, QWidget *over) = 0;

    // The common case: no title, the message, one button.
    void showMessage(const QString &message, const QString &button, QWidget *over);
};

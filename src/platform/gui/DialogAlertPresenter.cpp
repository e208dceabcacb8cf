#include "platform/gui/DialogAlertPresenter.h"

#include <QMessageBox>
#include <QPushButton>

void DialogAlertPresenter::present(const Alert &alert, QWidget *over)
{
    auto *box = new QMessageBox(over ? over->window() : nullptr);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::ApplicationModal);
    box->setWindowTitle(alert.title.isEmpty() ? QStringLiteral("Trekmime") : alert.title);
    if (!alert.title.isEmpty())
        box->setText(alert.title);
    if (alert.title.isEmpty())
        box->setText(alert.message);
    else
        box->setInformativeText(alert.message);
    const QStringList buttons =
        alert.buttons.isEmpty() ? QStringList{QStringLiteral("OK")} : alert.buttons;
    QList<QPushButton *> pushButtons;
    for (int i = 0; i < buttons.size(); ++i) {
        pushButtons.append(
            box->addButton(buttons[i], i == 0 ? QMessageBox::AcceptRole : QMessageBox::RejectRole));
    }
    if (alert.done) {
        QObject::connect(box, &QMessageBox::buttonClicked, box,
                         [pushButtons, done = alert.done](QAbstractButton *pressed) {
                             done(int(pushButtons.indexOf(pressed)));
                         });
    }
    box->show();
}

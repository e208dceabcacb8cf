#include "platform/AlertPresenter.h"

void AlertPresenter::showMessage(const QString &message, const QString &button, QWidget *over)
{
    present(Alert{QString(), message, {button}, {}}, over);
}

#pragma once

#include "platform/AlertPresenter.h"

// Shows alerts as application-modal message boxes.
class DialogAlertPresenter : public AlertPresenter
{
public:
    void present(const Alert &alert, QWidget *over) override;
};

#include "app/BaseViewController.h"

BaseViewController::BaseViewController(QWidget *parent) : QWidget(parent) {}

void BaseViewController::loadViewIfNeeded()
{
    if (m_loaded)
        return;
    m_loaded = true;
    viewDidLoad();
}

void BaseViewController::viewWillAppear(bool)
{
}

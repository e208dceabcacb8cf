#include "app/ModeScreenLayout.h"

#include <QCoreApplication>

QString ModeScreenLayout::modeName()
{
    return QCoreApplication::translate("ModeScreenLayout", "Mode");
}

QString ModeScreenLayout::informationName()
{
    return QCoreApplication::translate("ModeScreenLayout", "Information");
}

QString ModeScreenLayout::currentLocationName()
{
    return QCoreApplication::translate("ModeScreenLayout", "Current location");
}

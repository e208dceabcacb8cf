#include "app/TopBar.h"

#include "app/SafeArea.h"
#include "ui/Accessibility.h"

#include <QLabel>

TopBar TopBar::build(QWidget *screen)
{
    TopBar bar;
    bar.bgLabel = new QLabel(screen);
    bar.bgLabel->setObjectName(QStringLiteral("bgLabel"));
    bar.bgLabel->hide();
    setDecorative(bar.bgLabel);
    bar.topView = new QWidget(screen);
    bar.topView->setObjectName(QStringLiteral("topView"));
    bar.topView->setAttribute(Qt::WA_StyledBackground);
    return bar;
}

void TopBar::showStatusStrip(const SafeArea &area) const
{
    if (area.statusBar)
        bgLabel->show();
}

int TopBar::place(int width, int barHeight, const SafeArea &area) const
{
    bgLabel->setGeometry(0, 0, width, SafeArea::StatusBarHeight);
    const int height = barHeight + area.topBarExtra();
    topView->setGeometry(0, area.top(), width, height);
    return area.top() + height;
}

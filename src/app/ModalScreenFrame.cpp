#include "app/ModalScreenFrame.h"

#include "app/SafeArea.h"
#include "app/TopBar.h"

#include <QHBoxLayout>
#include <QLabel>

ModalScreenFrame ModalScreenFrame::forSize(const QSize &size, const DeviceMetrics *metrics)
{
    const SafeArea area = SafeArea::of(metrics);
    const int w = size.width();
    const int h = size.height();
    ModalScreenFrame frame;
    if (area.statusBar)
        frame.statusStrip = QRect(0, 0, w, SafeArea::StatusBarHeight);
    frame.topView = QRect(0, area.top(), w, TopBarHeight + area.topBarExtra());
    const int bottomHeight = BottomBarHeight + area.bottom();
    frame.bottomView = QRect(0, h - bottomHeight, w, bottomHeight);
    const int bodyTop = frame.topView.bottom() + 1;
    frame.body = QRect(0, bodyTop, w, frame.bottomView.top() - bodyTop);
    return frame;
}

ModalScreenFrame::TitleBar ModalScreenFrame::buildTopBar(QWidget *screen)
{
    const TopBar shared = TopBar::build(screen);
    TitleBar bar{shared.bgLabel, shared.topView, new QLabel(shared.topView)};
    bar.titleTopLabel->setObjectName(QStringLiteral("titleTopLabel"));
    bar.titleTopLabel->setAlignment(Qt::AlignCenter);
    auto *row = new QHBoxLayout(bar.topView);
    row->setContentsMargins(16, 0, 16, 0);
    row->addWidget(bar.titleTopLabel);
    return bar;
}

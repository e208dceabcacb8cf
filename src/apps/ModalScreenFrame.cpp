#include "apps/ModalScreenFrame.h"

#include "platform/gui/DeviceMetrics.h"

#include <QHBoxLayout>
#include <QLabel>

ModalScreenFrame ModalScreenFrame::forSize(const QSize &size, const DeviceMetrics *metrics)
{
    const int w = size.width();
    const int h = size.height();
    ModalScreenFrame frame;
    frame.topView = QRect(0, 0, w, TopBarHeight);
    frame.bottomView = QRect(0, h - BottomBarHeight, w, BottomBarHeight);
    frame.body = QRect(0, TopBarHeight, w, h - TopBarHeight - BottomBarHeight);
    if (metrics && metrics->isVersion7OrLater()) {
        frame.statusStrip = QRect(0, 0, w, 20);
        frame.topView.translate(0, 20);
        frame.body.adjust(0, 20, 0, 0);
        if (metrics->isTallScreen()) {
            frame.topView.setHeight(frame.topView.height() + 10);
            frame.bottomView.adjust(0, -34, 0, 0);
            frame.body.adjust(0, 10, 0, -34);
        }
    }
    return frame;
}

ModalScreenFrame::TopBar ModalScreenFrame::buildTopBar(QWidget *screen)
{
    TopBar bar;
    bar.bgLabel = new QLabel(screen);
    bar.bgLabel->setObjectName(QStringLiteral("bgLabel"));
    bar.bgLabel->hide();
    bar.topView = new QWidget(screen);
    bar.topView->setObjectName(QStringLiteral("topView"));
    bar.titleTopLabel = new QLabel(bar.topView);
    bar.titleTopLabel->setObjectName(QStringLiteral("titleTopLabel"));
    bar.titleTopLabel->setAlignment(Qt::AlignCenter);
    auto *row = new QHBoxLayout(bar.topView);
    row->setContentsMargins(16, 0, 16, 0);
    row->addWidget(bar.titleTopLabel);
    return bar;
}

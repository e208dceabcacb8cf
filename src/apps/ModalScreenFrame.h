#pragma once

#include <QRect>
#include <QSize>

class DeviceMetrics;
class QLabel;
class QWidget;

// Where the bars of a modal screen (information, whitelist) go: a top bar, a
// bottom bar and the body between them. From system version 7.0 on the top
// bar sits below a 20-point status-bar strip; on screens over 2400 pixels
// high the top bar grows by 10 points and the bottom bar rises and grows by
// 34, clear of the rounded corners and the home indicator.
struct ModalScreenFrame
{
    QRect statusStrip; // empty when there is no strip
    QRect topView;
    QRect body;
    QRect bottomView;

    static constexpr int TopBarHeight = 44;
    static constexpr int BottomBarHeight = 64;

    static ModalScreenFrame forSize(const QSize &size, const DeviceMetrics *metrics);

    // The top bar both modal screens share: the status-bar strip (hidden
    // until the frame places it), the bar, and its centred title, named
    // "bgLabel", "topView" and "titleTopLabel".
    struct TopBar
    {
        QLabel *bgLabel = nullptr;
        QWidget *topView = nullptr;
        QLabel *titleTopLabel = nullptr;
    };
    static TopBar buildTopBar(QWidget *screen);
};

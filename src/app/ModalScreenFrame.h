#pragma once

#include <QRect>
#include <QSize>

class DeviceMetrics;
class QLabel;
class QWidget;

// Where the bars of a modal screen (information, whitelist) go: a top bar, a
// bottom bar and the body between them, kept clear of the status bar and, on
// tall displays, of the rounded corners and the home indicator (SafeArea).
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
    struct TitleBar
    {
        QLabel *bgLabel = nullptr;
        QWidget *topView = nullptr;
        QLabel *titleTopLabel = nullptr;
    };
    static TitleBar buildTopBar(QWidget *screen);
};

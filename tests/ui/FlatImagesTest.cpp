#include "TestMain.h"

#include "ui/FlatButton.h"
#include "ui/FlatImages.h"

#include <QPainter>
#include <QTest>

class FlatImagesTest : public QObject
{
    Q_OBJECT

private slots:
    void onlyTheMiddleStretches()
    {
        // radius 8: drawn 100 by 40, the corners stay round arcs of radius 8
        QImage image(QSize(100, 40), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        FlatImages::imageWithColor(Qt::red, 8, 1).draw(&painter, QRectF(0, 0, 100, 40));
        painter.end();
        QCOMPARE(qAlpha(image.pixel(99, 39)), 0);
        QCOMPARE(image.pixel(50, 0), qRgb(255, 0, 0)); // straight edge between caps
        // a corner scaled up instead of kept would be transparent further in
        QCOMPARE(image.pixel(4, 4), qRgb(255, 0, 0));
        QCOMPARE(qAlpha(image.pixel(1, 1)), 0);
    }

    void pressedButtonShowsItsShadowSide()
    {
        FlatButton button(QRect(0, 0, 120, 44));
        button.setButtonColor(QColor(10, 200, 10));
        button.setShadowColor(QColor(200, 10, 10));
        button.setShadowHeight(3);
        QCOMPARE(button.titleEdgeInsets(), (EdgeInsets{-3, 0, 0, 0}));
        QCOMPARE(button.grab().toImage().pixel(60, 5), qRgb(10, 200, 10));
        // held down, the title sits lower and the face turns to the shadow
        QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(60, 22));
        QCOMPARE(button.titleEdgeInsets(), EdgeInsets{});
        QCOMPARE(button.grab().toImage().pixel(60, 5), qRgb(200, 10, 10));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(60, 22));
        QCOMPARE(button.titleEdgeInsets(), (EdgeInsets{-3, 0, 0, 0}));
    }
};

TREKMIME_TEST(FlatImagesTest)
#include "FlatImagesTest.moc"

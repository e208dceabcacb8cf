#include "TestMain.h"

#include "ui/FlatButton.h"
#include "ui/FlatImages.h"

#include <QPainter>
#include <QTest>

namespace {

QImage drawn(const StretchableImage &image, QSize target)
{
    QImage canvas(target, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    image.draw(&painter, QRectF(QPointF(0, 0), QSizeF(target)));
    return canvas;
}

} // namespace

class FlatImagesTest : public QObject
{
    Q_OBJECT

private slots:
    void roundedImageIsTwoRadiiPlusOne_data()
    {
        QTest::addColumn<double>("radius");
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<QSize>("pixels");
        QTest::newRow("radius 3, scale 1") << 3.0 << 1.0 << QSize(7, 7);
        QTest::newRow("radius 3, scale 2") << 3.0 << 2.0 << QSize(14, 14);
        QTest::newRow("radius 0 is one point") << 0.0 << 2.0 << QSize(2, 2);
        QTest::newRow("radius 6, scale 3") << 6.0 << 3.0 << QSize(39, 39);
    }
    void roundedImageIsTwoRadiiPlusOne()
    {
        QFETCH(double, radius);
        QFETCH(qreal, scale);
        QFETCH(QSize, pixels);
        const StretchableImage image = FlatImages::imageWithColor(Qt::red, radius, scale);
        QCOMPARE(image.pixmap().size(), pixels);
        QCOMPARE(image.size(), QSizeF(2 * radius + 1, 2 * radius + 1));
        QCOMPARE(image.capInsets(), (EdgeInsets{radius, radius, radius, radius}));
    }

    void onlyTheMiddleStretches()
    {
        // radius 8: drawn 100 by 40, the corners stay round arcs of radius 8
        const QImage image = drawn(FlatImages::imageWithColor(Qt::red, 8, 1), QSize(100, 40));
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(image.pixel(99, 39)), 0);
        QCOMPARE(image.pixel(50, 20), qRgb(255, 0, 0));
        QCOMPARE(image.pixel(50, 0), qRgb(255, 0, 0)); // straight edge between caps
        QCOMPARE(image.pixel(0, 20), qRgb(255, 0, 0));
        // a corner scaled up instead of kept would be transparent further in
        QCOMPARE(image.pixel(4, 4), qRgb(255, 0, 0));
        QCOMPARE(qAlpha(image.pixel(1, 1)), 0);
    }

    void buttonImageLaysColourInsideShadow()
    {
        const StretchableImage image =
            FlatImages::buttonImageWithColor(Qt::green, 5, Qt::blue, EdgeInsets{0, 0, 4, 0}, 1);
        QCOMPARE(image.size(), QSizeF(11, 15));
        QCOMPARE(image.capInsets(), (EdgeInsets{5, 5, 9, 5}));
        const QImage out = drawn(image, QSize(60, 44));
        QCOMPARE(out.pixel(30, 10), qRgb(0, 255, 0));
        // the bottom inset shows the shadow colour
        QCOMPARE(out.pixel(30, 42), qRgb(0, 0, 255));
    }

    void pressedButtonTakesTheShadowColourAndInsets()
    {
        FlatButton button(QRect(0, 0, 120, 44));
        button.setButtonColor(QColor(10, 200, 10));
        button.setShadowColor(QColor(200, 10, 10));
        button.setShadowHeight(3);
        button.setCornerRadius(4);
        QCOMPARE(button.normalEdgeInsets(), (EdgeInsets{-3, 0, 0, 0}));
        QCOMPARE(button.titleEdgeInsets(), button.normalEdgeInsets());
        QCOMPARE(button.grab().toImage().pixel(60, 5), qRgb(10, 200, 10));
        // flat: no shadow edge under the resting button
        QCOMPARE(button.grab().toImage().pixel(60, 42), qRgb(10, 200, 10));
        // held down, the title sits lower, on the highlighted insets
        QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(60, 22));
        QCOMPARE(button.titleEdgeInsets(), EdgeInsets{});
        QCOMPARE(button.grab().toImage().pixel(60, 5), qRgb(200, 10, 10));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(60, 22));
        QCOMPARE(button.titleEdgeInsets(), button.normalEdgeInsets());
    }
};

TREKMIME_TEST(FlatImagesTest)
#include "FlatImagesTest.moc"

// Draws the scalable icon as a square PNG of the size asked for, at build
// time, so the fixed-size icon never drifts from the drawn one. Qt's SVG
// image plugin, which the application needs anyway, does the drawing.
#include <QCoreApplication>
#include <QImage>
#include <QImageReader>
#include <QTextStream>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    QTextStream err(stderr);
    bool ok = false;
    const int side = args.size() == 4 ? args.at(2).toInt(&ok) : 0;
    if (!ok || side <= 0) {
        err << "usage: render-icon SVG SIZE PNG" << Qt::endl;
        return 2;
    }
    QImageReader reader(args.at(1));
    reader.setScaledSize(QSize(side, side));
    const QImage image = reader.read();
    if (image.isNull()) {
        err << "render-icon: " << args.at(1) << ": " << reader.errorString() << Qt::endl;
        return 1;
    }
    if (!image.save(args.at(3), "PNG")) {
        err << "render-icon: cannot write " << args.at(3) << Qt::endl;
        return 1;
    }
    return 0;
}

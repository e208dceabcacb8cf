#include "Gallery.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("trekmime-gallery"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows the interface toolkit."));
    parser.addHelpOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save the window to FILE (PNG) and exit."),
                                        QStringLiteral("FILE"));
    parser.addOption(screenshot);
    parser.process(application);

    Gallery gallery;
    gallery.show();
    if (parser.isSet(screenshot)) {
        const QString path = parser.value(screenshot);
        // let the first layout and paint happen before grabbing
        QTimer::singleShot(200, &gallery, [&gallery, path] {
            QApplication::exit(gallery.saveScreenshot(path) ? 0 : 1);
        });
    }
    return application.exec();
}

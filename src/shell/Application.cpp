#include "shell/Application.h"

#include "platform/Configuration.h"
#include "shell/AppDelegate.h"
#include "shell/AppWindow.h"
#include "shell/RealServices.h"
#include "shell/Translations.h"
#include "startup/Startup.h"
#include "ui/Accessibility.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>
#include <QTimer>

namespace {

void saveScreenshotLater(AppWindow *window, const QString &file, int delayMs)
{
    QTimer::singleShot(delayMs, window, [window, file] {
        const bool saved = window->grab().save(file, "PNG");
        QTextStream(stderr) << (saved ? "trekmime: screenshot saved to "
                                      : "trekmime: cannot save screenshot to ")
                            << file << Qt::endl;
        QCoreApplication::exit(saved ? 0 : 1);
    });
}

} // namespace

int runApplication(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("trekmime"));
    QApplication::setApplicationDisplayName(QStringLiteral("Trekmime"));
    // matches the window to its desktop entry (Wayland app id)
    QApplication::setDesktopFileName(QStringLiteral("com.velmora.trekmime"));
    QApplication::setApplicationVersion(QStringLiteral(TREKMIME_VERSION));
    installAccessibilityFactories();
    Theme::apply(application);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Choose the position this device reports to other applications."));
    parser.addHelpOption();
    parser.addVersionOption();
    Configuration::addOptionsTo(parser);
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Save a picture of the window to FILE once it is shown, then quit."),
        QStringLiteral("FILE"));
    parser.addOption(screenshot);
    parser.process(application);

    Configuration configuration;
    QTextStream err(stderr);
    if (!startUp(parser, QStringLiteral("trekmime"), err, configuration))
        return 2;

    installTranslations(configuration.language);
    RealServices services(configuration);
    AppDelegate delegate(services.services());
    delegate.followApplicationState();
    delegate.didFinishLaunching();

    if (parser.isSet(screenshot))
        saveScreenshotLater(delegate.window(), parser.value(screenshot), 1500);

    return application.exec();
}

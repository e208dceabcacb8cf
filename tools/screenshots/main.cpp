// trekmime-screenshots: every screen, in the states worth looking at, drawn
// with fake services and a fixed clock into PNG files. scripts/screenshots
// runs it under Xvfb.

#include "Scene.h"
#include "ScreenshotWorld.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QDir>
#include <QTextStream>
#include <QWidget>

QList<Scene> &allScenes()
{
    static QList<Scene> scenes;
    return scenes;
}

namespace {

// Lets layouts, animations and the fakes' answers run their course.
void settle(int msecs)
{
    QDeadlineTimer deadline(msecs);
    while (!deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

bool take(const Scene &scene, const QDir &out)
{
    ScreenshotWorld world;
    QWidget *widget = scene.build(world);
    widget->resize(390, 844);
    widget->show();
    settle(900);
    if (scene.then) {
        scene.then(world, widget);
        settle(900);
    }
    const QString file = out.filePath(scene.name + QStringLiteral(".png"));
    const bool saved = widget->grab().save(file, "PNG");
    QTextStream(saved ? stdout : stderr)
        << (saved ? "" : "cannot save ") << QDir::current().relativeFilePath(file) << Qt::endl;
    return saved;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("trekmime-screenshots"));
    Theme::apply(application);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Draws every screen into PNG files."));
    parser.addHelpOption();
    const QCommandLineOption outOption(QStringLiteral("out"),
                                       QStringLiteral("Folder for the pictures."),
                                       QStringLiteral("DIR"), QStringLiteral("screenshots"));
    const QCommandLineOption listOption(QStringLiteral("list"),
                                        QStringLiteral("List the pictures and exit."));
    parser.addOption(outOption);
    parser.addOption(listOption);
    parser.addPositionalArgument(QStringLiteral("NAME"), QStringLiteral("Only these pictures."));
    parser.process(application);

    if (parser.isSet(listOption)) {
        for (const Scene &scene : std::as_const(allScenes()))
            QTextStream(stdout) << scene.name << Qt::endl;
        return 0;
    }
    QDir out(parser.value(outOption));
    if (!QDir().mkpath(out.path())) {
        QTextStream(stderr) << "trekmime-screenshots: cannot create " << out.path() << Qt::endl;
        return 1;
    }
    const QStringList wanted = parser.positionalArguments();
    int failures = 0;
    int taken = 0;
    for (const Scene &scene : std::as_const(allScenes())) {
        if (!wanted.isEmpty() && !wanted.contains(scene.name))
            continue;
        ++taken;
        failures += take(scene, out) ? 0 : 1;
    }
    if (taken == 0) {
        QTextStream(stderr) << "trekmime-screenshots: no such picture" << Qt::endl;
        return 1;
    }
    return failures == 0 ? 0 : 1;
}

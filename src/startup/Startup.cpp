#include "startup/Startup.h"

#include "platform/Configuration.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QTextStream>

bool startUp(const QCommandLineParser &parser, const QString &program, QTextStream &err,
             Configuration &configuration, MissingFolder missing)
{
    QString error;
    if (!Configuration::load(&parser, QProcessEnvironment::systemEnvironment(), configuration,
                             &error)) {
        err << program << ": " << error << Qt::endl;
        return false;
    }
    if (missing == MissingFolder::RefuseGiven && !configuration.preferencesDir.isEmpty() &&
        !QFileInfo(configuration.preferencesDir).isDir()) {
        err << program << ": no preferences folder " << configuration.preferencesDir << Qt::endl;
        return false;
    }
    QString announcement;
    // from here on the configuration names the folder actually used, and
    // the settings store is made over it (CoreServices)
    configuration.preferencesDir = choosePreferencesDirectory(configuration, &announcement);
    if (!announcement.isEmpty())
        err << announcement << Qt::endl;
    return true;
}

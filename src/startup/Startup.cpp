#include "startup/Startup.h"

#include "platform/Configuration.h"
#include "settings/PreferenceFiles.h"

#include <QCommandLineParser>
#include <QTextStream>

bool startUp(const QCommandLineParser &parser, const QString &program, QTextStream &err,
             Configuration &configuration)
{
    QString error;
    if (!Configuration::load(&parser, QProcessEnvironment::systemEnvironment(), configuration,
                             &error)) {
        err << program << ": " << error << Qt::endl;
        return false;
    }
    QString announcement;
    PreferenceFiles::setDirectory(choosePreferencesDirectory(configuration, &announcement));
    if (!announcement.isEmpty())
        err << announcement << Qt::endl;
    return true;
}

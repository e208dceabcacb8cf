#pragma once

#include <QString>

class Configuration;
class QCommandLineParser;
class QTextStream;

// How the application and trekmime-ctl both begin: the configuration, read
// and checked whole before anything touches the disk, then the preferences
// folder (created when missing, named on `err` when it was chosen by
// default, and written into `configuration`). A value that cannot be used prints one line "program:
// why" on `err` and answers false; the caller then exits with status 2.
bool startUp(const QCommandLineParser &parser, const QString &program, QTextStream &err,
             Configuration &configuration);

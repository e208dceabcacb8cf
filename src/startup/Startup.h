#pragma once

#include <QString>

class Configuration;
class QCommandLineParser;
class QTextStream;

// What start-up does with a preferences folder that is not there.
enum class MissingFolder {
    Create, // the writers: the folder is theirs to make
    // a reader: a folder given by the user must exist (a typo would read
    // nothing for ever); the default one is still made, as the writers would
    RefuseGiven,
};

// How the application, trekmime-ctl and trekmime-feed begin: the configuration, read
// and checked whole before anything touches the disk, then the preferences
// folder (created when missing, named on `err` when it was chosen by
// default, and written into `configuration`). A value that cannot be used prints one line "program:
// why" on `err` and answers false; the caller then exits with status 2.
bool startUp(const QCommandLineParser &parser, const QString &program, QTextStream &err,
             Configuration &configuration, MissingFolder missing = MissingFolder::Create);

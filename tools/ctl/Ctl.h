#pragma once

#include "platform/HeadlessServices.h"

#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>
#include <optional>

// Exit statuses of every command.
enum CtlStatus {
    CtlOk = 0,
    CtlFailed = 1,   // refused, nothing found, an index out of range, or a failed write
    CtlBadInput = 2, // bad arguments or configuration; nothing was written
};

// What a command gets to work with.
struct CtlContext
{
    QTextStream &out;
    QTextStream &err;
    bool json = false;
    HeadlessServices services;

    // One line on stderr, prefixed with the tool's name; answers `status`.
    int fail(int status, const QString &message);
    // A settings file that could not be replaced: one line naming it;
    // answers CtlFailed.
    int writeFailed(const QString &file);
    void printJson(const QJsonValue &value);
};

struct CtlCommand
{
    QString name;
    QString synopsis; // e.g. "spot on [LAT LNG] | spot off"
    QString summary;
    std::function<int(CtlContext &, const QStringList &)> run;
};

using CtlCommandTable = QList<CtlCommand>;

// Each group of commands adds itself to the table.
void addSettingsCommands(CtlCommandTable &table);
void addRouteCommands(CtlCommandTable &table);
void addLocationCommands(CtlCommandTable &table);
void addAppsCommands(CtlCommandTable &table);

// Parses the global options, then runs the named command.
int runCtl(int argc, char **argv);

// Strict readers for command arguments: a whole decimal number in range, or
// nothing (after printing why).
namespace CtlArgs {
std::optional<double> latitude(CtlContext &context, const QString &text);
std::optional<double> longitude(CtlContext &context, const QString &text);
std::optional<double> number(CtlContext &context, const QString &what, const QString &text);
std::optional<qint64> index(CtlContext &context, const QString &text);
// Fails with a usage line unless `args` has between `min` and `max` entries.
bool count(CtlContext &context, const QStringList &args, int min, int max, const QString &usage);
} // namespace CtlArgs

#include "Ctl.h"

#include "platform/AlertPresenter.h"
#include "settings/TMPreferenceUtil.h"
#include "startup/CoreServices.h"
#include "startup/Startup.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace {

// There is no window: alerts are written to stderr.
class StderrAlertPresenter : public AlertPresenter
{
public:
    explicit StderrAlertPresenter(QTextStream &err) : m_err(err) {}
    void present(const Alert &alert, QWidget *) override
    {
        if (!alert.title.isEmpty())
            m_err << alert.title << ": ";
        m_err << alert.message << Qt::endl;
        if (alert.done)
            alert.done(0);
    }

private:
    QTextStream &m_err;
};

void printUsage(QTextStream &out, const CtlCommandTable &table)
{
    out << "Usage: trekmime-ctl [--preferences-dir DIR] [--json] COMMAND [ARGS]\n\n"
           "Reads and changes the settings files that the location hook reads.\n\nCommands:\n";
    for (const CtlCommand &command : table)
        out << "  " << command.synopsis << "\n      " << command.summary << "\n";
    out << "\nRun with --help for every global option.\n";
    out.flush();
}

} // namespace

int CtlContext::fail(int status, const QString &message)
{
    err << "trekmime-ctl: " << message << Qt::endl;
    return status;
}

int CtlContext::writeFailed(const QString &file)
{
    return fail(CtlFailed, QStringLiteral("cannot write %1").arg(file));
}

void CtlContext::printJson(const QJsonValue &value)
{
    QJsonDocument document;
    if (value.isArray())
        document = QJsonDocument(value.toArray());
    else if (value.isObject())
        document = QJsonDocument(value.toObject());
    else {
        // a bare value: wrap and strip, as QJsonDocument holds only containers
        const QByteArray wrapped = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
        out << wrapped.mid(1, wrapped.size() - 2) << Qt::endl;
        return;
    }
    out << document.toJson(QJsonDocument::Indented);
    out.flush();
}

namespace CtlArgs {

std::optional<double> number(CtlContext &context, const QString &what, const QString &text)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok); // C locale: "." is the decimal point
    if (!ok || !std::isfinite(value)) {
        context.fail(CtlBadInput, QStringLiteral("%1 is not a number: \"%2\"").arg(what, text));
        return std::nullopt;
    }
    return value;
}

std::optional<double> latitude(CtlContext &context, const QString &text)
{
    const auto value = number(context, QStringLiteral("latitude"), text);
    if (value && (*value < -90.0 || *value > 90.0)) {
        context.fail(CtlBadInput,
                     QStringLiteral("latitude %1 is outside -90 to 90").arg(text.trimmed()));
        return std::nullopt;
    }
    return value;
}

std::optional<double> longitude(CtlContext &context, const QString &text)
{
    const auto value = number(context, QStringLiteral("longitude"), text);
    if (value && (*value < -180.0 || *value > 180.0)) {
        context.fail(CtlBadInput,
                     QStringLiteral("longitude %1 is outside -180 to 180").arg(text.trimmed()));
        return std::nullopt;
    }
    return value;
}

std::optional<qint64> index(CtlContext &context, const QString &text)
{
    bool ok = false;
    const qint64 value = text.trimmed().toLongLong(&ok);
    if (!ok) {
        context.fail(CtlBadInput, QStringLiteral("index is not a whole number: \"%1\"").arg(text));
        return std::nullopt;
    }
    return value;
}

bool count(CtlContext &context, const QStringList &args, int min, int max, const QString &usage)
{
    if (args.size() >= min && args.size() <= max)
        return true;
    context.fail(CtlBadInput, QStringLiteral("wrong number of arguments; usage: %1").arg(usage));
    return false;
}

} // namespace CtlArgs

int runCtl(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trekmime"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TREKMIME_VERSION));
    QTextStream out(stdout);
    QTextStream err(stderr);

    CtlCommandTable table;
    addSettingsCommands(table);
    addRouteCommands(table);
    addLocationCommands(table);
    addAppsCommands(table);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Reads and changes the settings files that the location hook reads."));
    // global options come before the command; what follows belongs to it
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Print results as JSON."));
    parser.addOption(help);
    parser.addOption(json);
    parser.addVersionOption();
    Configuration::addOptionsTo(parser);
    if (!parser.parse(application.arguments())) {
        err << "trekmime-ctl: " << parser.errorText() << Qt::endl;
        return CtlBadInput;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        out << "trekmime-ctl " << TREKMIME_VERSION << Qt::endl;
        return CtlOk;
    }
    QStringList positional = parser.positionalArguments();
    if (parser.isSet(help)) {
        out << parser.helpText() << "\n";
        printUsage(out, table);
        return CtlOk;
    }
    if (positional.isEmpty()) {
        printUsage(err, table);
        return CtlBadInput;
    }

    Configuration configuration;
    if (!startUp(parser, QStringLiteral("trekmime-ctl"), err, configuration))
        return CtlBadInput;

    // no screens here: no device metrics, no URL opener, alerts on stderr
    StderrAlertPresenter alerts(err);
    const CoreServices core(configuration, &alerts);
    CtlContext context{out, err, parser.isSet(json), core.services()};
    if (TMPreferenceUtil *store = core.services().preferences) {
        // one line for each settings file the command had to take as empty
        store->setUnreadableHandler([&err](const QString &path, const QString &problem) {
            err << "trekmime-ctl: " << path << " is unreadable (" << problem
                << "); taken as empty and left as it is" << Qt::endl;
        });
    }

    const QString name = positional.takeFirst();
    for (const CtlCommand &command : std::as_const(table)) {
        if (command.name == name) {
            const int status = command.run(context, positional);
            out.flush();
            err.flush();
            return status;
        }
    }
    return context.fail(
        CtlBadInput,
        QStringLiteral("unknown command \"%1\"; run with --help for the list").arg(name));
}

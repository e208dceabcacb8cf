#pragma once

#include <QProcess>
#include <QTest>

// What one run of trekmime-ctl printed and answered (-1: it crashed or hung).
struct Run
{
    int status = -1;
    QString out;
    QString err;
};

// "a b c" as the argument list {a, b, c}.
inline QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

// Runs `program` with `arguments`, its config and state homes inside `dir` so that
// the user's own config file never counts, and `extra` added to the
// environment. The event loop keeps turning meanwhile, so a stub server of
// this process can answer the tool.
inline Run runProgram(const QString &program, const QString &dir, const QStringList &arguments,
                      const QList<QPair<QString, QString>> &extra = {})
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), dir + QStringLiteral("/config"));
    environment.insert(QStringLiteral("XDG_STATE_HOME"), dir + QStringLiteral("/state"));
    // set by QtTest for this process; a child that sees it gets only Qt
    // Positioning's test plugins
    environment.remove(QStringLiteral("QT_QTESTLIB_RUNNING"));
    for (const auto &[name, value] : extra)
        environment.insert(name, value);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    const bool ended =
        QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 20000);
    return {ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

inline Run runCtl(const QString &dir, const QStringList &arguments,
                  const QList<QPair<QString, QString>> &extra = {})
{
    return runProgram(QStringLiteral(TREKMIME_CTL), dir, arguments, extra);
}

#include "TestMain.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTextStream>

#include <memory>

QList<TestRegistry::Entry> &TestRegistry::entries()
{
    static QList<Entry> all;
    return all;
}

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "UTC");
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"trekmime-tests"_s);
    QStandardPaths::setTestModeEnabled(true);
    QLocale::setDefault(QLocale::c());

    QStringList arguments = application.arguments();
    QStringList registered;
    for (const TestRegistry::Entry &entry : TestRegistry::entries())
        registered.append(QString::fromLatin1(entry.name));
    const auto option = [&arguments](const char *name) {
        const qsizetype at = arguments.indexOf(QLatin1String(name));
        if (at <= 0 || at + 1 >= arguments.size())
            return QString();
        const QString value = arguments.at(at + 1);
        arguments.remove(at, 2);
        return value;
    };

    // CTest lists the classes it runs; this keeps that list and the
    // registrations from drifting apart
    if (const QString listed = option("-check-classes"); !listed.isEmpty()) {
        QStringList classes = listed.split(u',');
        classes.sort();
        registered.sort();
        if (classes != registered)
            QTextStream(stderr) << "registered test classes " << registered.join(u' ')
                                << "\nbut CTest lists " << classes.join(u' ') << Qt::endl;
        return classes == registered ? 0 : 1;
    }
    const QString only = option("-class");
    if (!only.isEmpty() && !registered.contains(only)) {
        QTextStream(stderr) << "no test class " << only << Qt::endl;
        return 1;
    }
    int failures = 0;
    for (const TestRegistry::Entry &entry : TestRegistry::entries())
        if (only.isEmpty() || only == QLatin1String(entry.name))
            failures += QTest::qExec(std::unique_ptr<QObject>(entry.make()).get(), arguments);
    return failures == 0 ? 0 : 1;
}

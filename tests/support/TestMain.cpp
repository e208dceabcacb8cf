#include "TestMain.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTest>

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
    QApplication::setApplicationName(QStringLiteral("trekmime-tests"));
    QStandardPaths::setTestModeEnabled(true);
    QLocale::setDefault(QLocale::c());

    QStringList arguments = application.arguments();
    QString only;
    const qsizetype classOption = arguments.indexOf(QStringLiteral("-class"));
    if (classOption > 0 && classOption + 1 < arguments.size()) {
        only = arguments.at(classOption + 1);
        arguments.remove(classOption, 2);
    }
    int failures = 0;
    for (const TestRegistry::Entry &entry : TestRegistry::entries()) {
        if (!only.isEmpty() && only != QLatin1String(entry.name))
            continue;
        std::unique_ptr<QObject> test(entry.make());
        failures += QTest::qExec(test.get(), arguments);
    }
    return failures == 0 ? 0 : 1;
}

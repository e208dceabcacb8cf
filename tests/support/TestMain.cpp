#include "TestMain.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTest>
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
    QApplication::setApplicationName(QStringLiteral("trekmime-tests"));
    QStandardPaths::setTestModeEnabled(true);
    QLocale::setDefault(QLocale::c());

    QStringList arguments = application.arguments();
    QStringList registered;
    for (const TestRegistry::Entry &entry : TestRegistry::entries())
        registered.append(QString::fromLatin1(entry.name));

    // CTest lists the classes it runs; this keeps that list and the
    // registrations from drifting apart
    const qsizetype checkOption = arguments.indexOf(QStringLiteral("-check-classes"));
    if (checkOption > 0 && checkOption + 1 < arguments.size()) {
        QStringList listed = arguments.at(checkOption + 1).split(QLatin1Char(','));
        listed.sort();
        registered.sort();
        if (listed == registered)
            return 0;
        QTextStream(stderr) << "registered test classes " << registered.join(QLatin1Char(' '))
                            << "\nbut CTest lists " << listed.join(QLatin1Char(' ')) << Qt::endl;
        return 1;
    }

    QString only;
    const qsizetype classOption = arguments.indexOf(QStringLiteral("-class"));
    if (classOption > 0 && classOption + 1 < arguments.size()) {
        only = arguments.at(classOption + 1);
        arguments.remove(classOption, 2);
        if (!registered.contains(only)) {
            QTextStream(stderr) << "no test class " << only << Qt::endl;
            return 1;
        }
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

#include "TestMain.h"

#include "platform/PreferredLanguages.h"

#include <QTest>

// The system's locale names become the language tags the screens compare.
class PreferredLanguagesTest : public QObject
{
    Q_OBJECT

private slots:
    void systemLanguages_data()
    {
        QTest::addColumn<QString>("language"); // LANGUAGE
        QTest::addColumn<QString>("lcAll");
        QTest::addColumn<QString>("lang");
        QTest::addColumn<QString>("tags");
        QTest::newRow("simplified") << ""
                                    << ""
                                    << "zh_CN.UTF-8"
                                    << "zh-Hans";
        QTest::newRow("singapore") << ""
                                   << ""
                                   << "zh_SG.GB2312"
                                   << "zh-Hans";
        QTest::newRow("traditional") << ""
                                     << ""
                                     << "zh_TW.UTF-8"
                                     << "zh-Hant";
        QTest::newRow("hong kong") << ""
                                   << ""
                                   << "zh_HK"
                                   << "zh-Hant";
        QTest::newRow("region kept") << ""
                                     << ""
                                     << "en_GB.UTF-8@euro"
                                     << "en-GB";
        QTest::newRow("no region") << ""
                                   << ""
                                   << "de"
                                   << "de";
        QTest::newRow("list first") << "zh_CN:fr_FR:zh_CN"
                                    << ""
                                    << "de_DE.UTF-8"
                                    << "zh-Hans fr-FR de-DE";
        QTest::newRow("list in C") << "zh_CN"
                                   << "C.UTF-8"
                                   << ""
                                   << "zh-Hans";
        QTest::newRow("LC_ALL wins") << ""
                                     << "pt_BR.UTF-8"
                                     << "de_DE"
                                     << "pt-BR";
        QTest::newRow("C") << ""
                           << "C"
                           << "zh_CN"
                           << "";
        QTest::newRow("POSIX") << ""
                               << ""
                               << "POSIX"
                               << "";
        QTest::newRow("nothing") << ""
                                 << ""
                                 << ""
                                 << "";
        QTest::newRow("nonsense") << "::x y:"
                                  << ""
                                  << "/etc/passwd"
                                  << "";
    }
    void systemLanguages()
    {
        QFETCH(QString, language);
        QFETCH(QString, lcAll);
        QFETCH(QString, lang);
        QFETCH(QString, tags);
        QProcessEnvironment environment;
        for (const auto &[name, value] : {std::pair{"LANGUAGE", language},
                                          {"LC_ALL", lcAll},
                                          {"LANG", lang},
                                          {"LC_MESSAGES", QString()}}) {
            if (!value.isEmpty())
                environment.insert(QString::fromLatin1(name), value);
        }
        QCOMPARE(systemPreferredLanguages(environment).join(u' '), tags);
    }
};

TREKMIME_TEST(PreferredLanguagesTest)
#include "PreferredLanguagesTest.moc"

#include "TestMain.h"

#include "platform/PreferredLanguages.h"

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
        addRow("simplified", "", "", "zh_CN.UTF-8", "zh-Hans");
        addRow("singapore", "", "", "zh_SG.GB2312", "zh-Hans");
        addRow("traditional", "", "", "zh_TW.UTF-8", "zh-Hant");
        addRow("hong kong", "", "", "zh_HK", "zh-Hant");
        addRow("region kept", "", "", "en_GB.UTF-8@euro", "en-GB");
        addRow("no region", "", "", "de", "de");
        addRow("list first", "zh_CN:fr_FR:zh_CN", "", "de_DE.UTF-8", "zh-Hans fr-FR de-DE");
        addRow("list in C", "zh_CN", "C.UTF-8", "", "zh-Hans");
        addRow("LC_ALL wins", "", "pt_BR.UTF-8", "de_DE", "pt-BR");
        addRow("C", "", "C", "zh_CN", "");
        addRow("POSIX", "", "", "POSIX", "");
        addRow("nothing", "", "", "", "");
        addRow("nonsense", "::x y:", "", "/etc/passwd", "");
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

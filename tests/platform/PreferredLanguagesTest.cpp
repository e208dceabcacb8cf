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
        const auto row = [](const char *name, const char *language, const char *lcAll,
                            const char *lang, const char *tags) {
            QTest::newRow(name) << QString::fromLatin1(language) << QString::fromLatin1(lcAll)
                                << QString::fromLatin1(lang) << QString::fromLatin1(tags);
        };
        row("simplified", "", "", "zh_CN.UTF-8", "zh-Hans");
        row("singapore", "", "", "zh_SG.GB2312", "zh-Hans");
        row("traditional", "", "", "zh_TW.UTF-8", "zh-Hant");
        row("hong kong", "", "", "zh_HK", "zh-Hant");
        row("region kept", "", "", "en_GB.UTF-8@euro", "en-GB");
        row("no region", "", "", "de", "de");
        row("list first", "zh_CN:fr_FR:zh_CN", "", "de_DE.UTF-8", "zh-Hans fr-FR de-DE");
        row("list in C", "zh_CN", "C.UTF-8", "", "zh-Hans");
        row("LC_ALL wins", "", "pt_BR.UTF-8", "de_DE", "pt-BR");
        row("C", "", "C", "zh_CN", "");
        row("POSIX", "", "", "POSIX", "");
        row("nothing", "", "", "", "");
        row("nonsense", "::x y:", "", "/etc/passwd", "");
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

#include "TestMain.h"

#include "shell/Translations.h"

#include <QCoreApplication>

// Which texts a person sees for the language asked for or the system's.
class TranslationsTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        qunsetenv("LANGUAGE");
        installTranslations(u"C"_s);
    }

    void textsFollowTheLanguage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QByteArray>("system"); // LANGUAGE; the locale stays C
        QTest::addColumn<QString>("ours");      // an English text of the screens
        QTest::addColumn<QString>("location");  // a Chinese text of the location service
        QTest::addColumn<QString>("qt");        // the text fields' Copy
        const QString today = u"Today"_s, ok = u"OK"_s, copy = u"&Copy"_s;
        const QString jintian = u"今天"_s, queding = u"确定"_s, fuzhi = u"复制(&C)"_s;
        addRow("asked zh_CN", "zh_CN", QByteArray(), jintian, queding, fuzhi);
        addRow("system zh_CN", "", QByteArray("zh_CN"), jintian, queding, fuzhi);
        addRow("system list", "", QByteArray("de_DE:zh_CN"), jintian, queding, fuzhi);
        addRow("untranslated", "de_DE", QByteArray(), today, ok, copy);
        addRow("system untranslated", "", QByteArray("de_DE"), today, ok, copy);
        addRow("system C", "", QByteArray(), today, ok, copy);
        addRow("as written", "C", QByteArray("zh_CN"), today, queding, copy);
    }
    void textsFollowTheLanguage()
    {
        QFETCH(QString, language);
        QFETCH(QByteArray, system);
        QFETCH(QString, ours);
        QFETCH(QString, location);
        QFETCH(QString, qt);
        qputenv("LANGUAGE", system);
        installTranslations(language);
        QCOMPARE(QCoreApplication::translate("DateTimePicker", "Today"), ours);
        QCOMPARE(QCoreApplication::translate("Location", "确定"), location);
        QCOMPARE(QCoreApplication::translate("QLineEdit", "&Copy"), qt);
    }
};

TREKMIME_TEST(TranslationsTest)
#include "TranslationsTest.moc"

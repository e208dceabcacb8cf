#include "shell/Translations.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

QString installTranslations(const QString &language)
{
    static QPointer<QTranslator> installed;
    if (installed) {
        QCoreApplication::removeTranslator(installed);
        delete installed;
    }
    const QLocale locale = language.isEmpty() ? QLocale::system() : QLocale(language);
    // the C locale (and tests, which run in it) shows the source texts
    if (locale.language() == QLocale::C)
        return {};
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(locale, QStringLiteral("trekmime"), QStringLiteral("_"),
                          QStringLiteral(":/i18n"))) {
        delete translator;
        return {};
    }
    QCoreApplication::installTranslator(translator);
    installed = translator;
    return translator->filePath();
}

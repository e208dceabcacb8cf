#include "shell/Translations.h"

#include "platform/PreferredLanguages.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

namespace {

QPointer<QTranslator> g_own;
QPointer<QTranslator> g_qt;

void removeInstalled()
{
    for (QPointer<QTranslator> *installed : {&g_own, &g_qt}) {
        if (*installed) {
            QCoreApplication::removeTranslator(*installed);
            delete installed->data();
        }
    }
}

QTranslator *load(const QLocale &locale, const QString &name, const QString &folder)
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(locale, name, QStringLiteral("_"), folder)) {
        QCoreApplication::installTranslator(translator);
        return translator;
    }
    delete translator;
    return nullptr;
}

} // namespace

QString installTranslations(const QString &language)
{
    removeInstalled();
    const QStringList wanted =
        language.isEmpty() ? systemPreferredLanguages() : QStringList{language};
    if (!language.isEmpty() && QLocale(language).language() == QLocale::C)
        return {};
    const QString own = QStringLiteral(":/i18n");
    for (const QString &name : wanted) {
        const QLocale locale(name);
        if (locale.language() == QLocale::C)
            continue;
        if ((g_own = load(locale, QStringLiteral("trekmime"), own))) {
            g_qt = load(locale, QStringLiteral("qtbase"),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath));
            return g_own->filePath();
        }
    }
    // the code holds some texts in Chinese (the location service's), so a
    // language without a translation of its own reads English
    g_own = load(QLocale(QLocale::English), QStringLiteral("trekmime"), own);
    return g_own ? g_own->filePath() : QString();
}

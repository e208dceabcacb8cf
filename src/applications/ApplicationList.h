#pragma once

#include "applications/ApplicationModel.h"
#include "applications/ApplicationProxy.h"

#include <QList>
#include <QStringList>
#include <QVariantMap>

class ApplicationRegistry;
class TMPreferenceUtil;

// Which applications the whitelist offers: those of the home screen, then
// those a sibling application hides from it (its hide list, read through the
// settings store). Class operations only; every call asks the registry and
// reads the hide list afresh.
class ApplicationList
{
public:
    ApplicationList() = delete;

    // The list the whitelist screen shows.
    static QList<ApplicationModel> installedAppModel(const ApplicationRegistry &registry,
                                                     const TMPreferenceUtil &preferences);
    static QStringList installedAppBundle(const ApplicationRegistry &registry,
                                          const TMPreferenceUtil &preferences);
    // Appends the sibling's hidden applications that are installed and not
    // yet listed, in the order the hide list reads; answers `bundles`.
    static QStringList &fixWithHushdeck(const ApplicationRegistry &registry,
                                        const TMPreferenceUtil &preferences, QStringList &bundles);
    static QStringList currentRunningAppBundle(const ApplicationRegistry &registry);
    // installedAppModel() without the platform maker's own applications.
    static QList<ApplicationModel> installedUserAppModel(const ApplicationRegistry &registry,
                                                         const TMPreferenceUtil &preferences);
    // Platform services that look like applications but are no place to
    // send a position; made once, never changed.
    static const QStringList &hiddenIdentifiers();
    static QStringList identifierArrayFromProxyArray(const QList<ApplicationProxy> &proxies);
    static QStringList desktopAppsFromDictionary(const QVariantMap &dictionary);

    static constexpr const char *PlatformMakerPrefix = "com.apple.";
};

#include "applications/ApplicationList.h"

#include "applications/ApplicationRegistry.h"
#include "settings/TMPreferenceUtil.h"

QList<ApplicationModel> ApplicationList::installedAppModel(const ApplicationRegistry &registry,
                                                           const TMPreferenceUtil &preferences)
{
    const QStringList bundles = installedAppBundle(registry, preferences);
    if (bundles.isEmpty())
        return {};
    return ApplicationModel::appModelListWithAppList(registry, bundles);
}

QStringList ApplicationList::installedAppBundle(const ApplicationRegistry &registry,
                                                const TMPreferenceUtil &preferences)
{
    QStringList bundles = registry.displayIdentifiers(false, false);
    return fixWithHushdeck(registry, preferences, bundles);
}

QStringList &ApplicationList::fixWithHushdeck(const ApplicationRegistry &registry,
                                              const TMPreferenceUtil &preferences,
                                              QStringList &bundles)
{
    // the sibling hides these from the home screen, so the registry left them
    // out above; they can still be whitelisted. Uninstalled ones have no name.
    for (const QString &bundle : preferences.hideListBundles()) {
        if (bundles.contains(bundle))
            continue;
        if (!ApplicationModel::appNameWithBundle(registry, bundle).isEmpty())
            bundles.append(bundle);
    }
    return bundles;
}

QStringList ApplicationList::currentRunningAppBundle(const ApplicationRegistry &registry)
{
    return registry.displayIdentifiers(true, false);
}

QList<ApplicationModel> ApplicationList::installedUserAppModel(const ApplicationRegistry &registry,
                                                               const TMPreferenceUtil &preferences)
{
    QList<ApplicationModel> models = installedAppModel(registry, preferences);
    models.removeIf([](const ApplicationModel &model) {
        return model.appBundle().startsWith(QLatin1String(PlatformMakerPrefix));
    });
    return models;
}

const QStringList &ApplicationList::hiddenIdentifiers()
{
    static const QStringList identifiers{
        QStringLiteral("com.apple.AdSheet"),
        QStringLiteral("com.apple.AdSheetPhone"),
        QStringLiteral("com.apple.AdSheetPad"),
        QStringLiteral("com.apple.DataActivation"),
        QStringLiteral("com.apple.DemoApp"),
        QStringLiteral("com.apple.Diagnostics"),
        QStringLiteral("com.apple.fieldtest"),
        QStringLiteral("com.apple.iosdiagnostics"),
        QStringLiteral("com.apple.iphoneos.iPodOut"),
        QStringLiteral("com.apple.TrustMe"),
        QStringLiteral("com.apple.WebSheet"),
        QStringLiteral("com.apple.springboard"),
        QStringLiteral("com.apple.purplebuddy"),
        QStringLiteral("com.apple.datadetectors.DDActionsService"),
        QStringLiteral("com.apple.FacebookAccountMigrationDialog"),
        QStringLiteral("com.apple.iad.iAdOptOut"),
        QStringLiteral("com.apple.ios.StoreKitUIService"),
        QStringLiteral("com.apple.TextInput.kbd"),
        QStringLiteral("com.apple.MailCompositionService"),
        QStringLiteral("com.apple.mobilesms.compose"),
        QStringLiteral("com.apple.quicklook.quicklookd"),
        QStringLiteral("com.apple.ShoeboxUIService"),
        QStringLiteral("com.apple.social.remoteui.SocialUIService"),
        QStringLiteral("com.apple.WebViewService"),
        QStringLiteral("com.apple.gamecenter.GameCenterUIService"),
        QStringLiteral("com.apple.appleaccount.AACredentialRecoveryDialog"),
        QStringLiteral("com.apple.CompassCalibrationViewService"),
        QStringLiteral("com.apple.WebContentFilter.remoteUI.WebContentAnalysisUI"),
        QStringLiteral("com.apple.PassbookUIService"),
        QStringLiteral("com.apple.uikit.PrintStatus"),
        QStringLiteral("com.apple.Copilot"),
        QStringLiteral("com.apple.MusicUIService"),
        QStringLiteral("com.apple.AccountAuthenticationDialog"),
        QStringLiteral("com.apple.MobileReplayer"),
        QStringLiteral("com.apple.SiriViewService"),
        QStringLiteral("com.apple.TencentWeiboAccountMigrationDialog"),
        QStringLiteral("com.apple.AskPermissionUI"),
        QStringLiteral("com.apple.CoreAuthUI"),
        QStringLiteral("com.apple.family"),
        QStringLiteral("com.apple.mobileme.fmip1"),
        QStringLiteral("com.apple.GameController"),
        QStringLiteral("com.apple.HealthPrivacyService"),
        QStringLiteral("com.apple.InCallService"),
        QStringLiteral("com.apple.mobilesms.notification"),
        QStringLiteral("com.apple.PhotosViewService"),
        QStringLiteral("com.apple.PreBoard"),
        QStringLiteral("com.apple.PrintKit.Print-Center"),
        QStringLiteral("com.apple.share"),
        QStringLiteral("com.apple.SharedWebCredentialViewService"),
        QStringLiteral("com.apple.webapp"),
        QStringLiteral("com.apple.webapp1"),
        QStringLiteral("com.apple.SafariViewService"),
        QStringLiteral("com.apple.Fitness"),
        QStringLiteral("com.apple.appleseed.FeedbackAssistant"),
        QStringLiteral("com.apple.iCloudDriveApp"),
        QStringLiteral("com.apple.social.SLGoogleAuth"),
        QStringLiteral("com.apple.CloudKit.ShareBear"),
        QStringLiteral("com.apple.ServerDocuments"),
        QStringLiteral("com.apple.social.SLYahooAuth"),
        QStringLiteral("com.apple.Diagnostics.Mitosis"),
        QStringLiteral("com.apple.StoreDemoViewService"),
    };
    return identifiers;
}

QStringList ApplicationList::identifierArrayFromProxyArray(const QList<ApplicationProxy> &proxies)
{
    QStringList identifiers;
    for (const ApplicationProxy &proxy : proxies) {
        if (!hiddenIdentifiers().contains(proxy.applicationIdentifier))
            identifiers.append(proxy.applicationIdentifier);
    }
    return identifiers;
}

QStringList ApplicationList::desktopAppsFromDictionary(const QVariantMap &dictionary)
{
    return dictionary.keys();
}

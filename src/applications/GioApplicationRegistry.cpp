#include "applications/GioApplicationRegistry.h"

#include <QSet>

#include <memory>

// GLib's headers use "signals" as a field name
#undef signals
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

namespace {

const QLatin1String DesktopSuffix(".desktop");

template <typename T> struct GObjectDeleter
{
    void operator()(T *object) const
    {
        if (object)
            g_object_unref(object);
    }
};
template <typename T> using GObjectPtr = std::unique_ptr<T, GObjectDeleter<T>>;

QString bundleOf(GAppInfo *info)
{
    QString id = QString::fromUtf8(g_app_info_get_id(info));
    if (id.endsWith(DesktopSuffix))
        id.chop(DesktopSuffix.size());
    return id;
}

GObjectPtr<GDesktopAppInfo> desktopEntry(const QString &bundle)
{
    if (bundle.isEmpty())
        return {};
    const QByteArray id = (bundle + DesktopSuffix).toUtf8();
    return GObjectPtr<GDesktopAppInfo>(g_desktop_app_info_new(id.constData()));
}

} // namespace

QStringList GioApplicationRegistry::displayIdentifiers(bool onlyRunning, bool /*debuggable*/) const
{
    QSet<QString> running;
    if (onlyRunning) {
        const QStringList names = sessionBusNames();
        running = QSet<QString>(names.cbegin(), names.cend());
    }
    QStringList identifiers;
    GList *all = g_app_info_get_all();
    for (GList *item = all; item; item = item->next) {
        auto *info = static_cast<GAppInfo *>(item->data);
        if (!g_app_info_should_show(info))
            continue;
        const QString bundle = bundleOf(info);
        if (!onlyRunning || running.contains(bundle))
            identifiers.append(bundle);
    }
    g_list_free_full(all, g_object_unref);
    return identifiers;
}

QString GioApplicationRegistry::localizedName(const QString &bundle) const
{
    const GObjectPtr<GDesktopAppInfo> entry = desktopEntry(bundle);
    if (!entry)
        return {};
    // read the key itself: GIO names an entry without a usable Name (none,
    // or not UTF-8) "Unnamed", which is no application's name
    char *name = g_desktop_app_info_get_locale_string(entry.get(), "Name");
    const QString answer = name ? QString::fromUtf8(name) : QLatin1String("");
    g_free(name);
    return answer;
}

ApplicationIcon GioApplicationRegistry::icon(const QString &bundle) const
{
    const GObjectPtr<GDesktopAppInfo> entry = desktopEntry(bundle);
    if (!entry)
        return {};
    GIcon *icon = g_app_info_get_icon(G_APP_INFO(entry.get())); // owned by the entry
    if (!icon)
        return {};
    ApplicationIcon answer;
    if (G_IS_FILE_ICON(icon)) {
        char *path = g_file_get_path(g_file_icon_get_file(G_FILE_ICON(icon)));
        if (path)
            answer.filePath = QString::fromLocal8Bit(path);
        g_free(path);
    } else if (G_IS_THEMED_ICON(icon)) {
        for (const char *const *name = g_themed_icon_get_names(G_THEMED_ICON(icon)); name && *name;
             ++name) {
            answer.themeNames.append(QString::fromUtf8(*name));
        }
    }
    return answer;
}

QStringList GioApplicationRegistry::sessionBusNames()
{
    // a connection of our own each time: the shared one would outlive a
    // session bus that goes away, and nothing here may be kept between calls
    GError *error = nullptr;
    char *address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, &error);
    // "autolaunch:" would start a bus of its own: no bus means no running
    // applications
    if (!address || g_str_has_prefix(address, "autolaunch:")) {
        g_clear_error(&error);
        g_free(address);
        return {};
    }
    GObjectPtr<GDBusConnection> connection(g_dbus_connection_new_for_address_sync(
        address,
        GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, &error));
    g_free(address);
    if (!connection) {
        g_clear_error(&error);
        return {};
    }
    GVariant *reply = g_dbus_connection_call_sync(connection.get(), "org.freedesktop.DBus",
                                                  "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                                  "ListNames", nullptr, G_VARIANT_TYPE("(as)"),
                                                  G_DBUS_CALL_FLAGS_NONE, 2000, nullptr, &error);
    QStringList names;
    if (reply) {
        GVariantIter *iter = nullptr;
        const char *name = nullptr;
        g_variant_get(reply, "(as)", &iter);
        while (g_variant_iter_loop(iter, "&s", &name))
            names.append(QString::fromUtf8(name));
        g_variant_iter_free(iter);
        g_variant_unref(reply);
    } else {
        g_clear_error(&error);
    }
    g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
    return names;
}

#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

// Where the list of installed applications comes from: identifiers, names in
// the user's language and icons. The application list asks it afresh every
// time; nothing here or above it keeps an answer.
class ApplicationRegistry
{
public:
    virtual ~ApplicationRegistry() = default;

    // The icon format the whitelist rows show: a small square icon.
    static constexpr int SmallIconFormat = 0;
    // The size in points of an icon of `format`.
    static int iconPointSize(int format) { return format == SmallIconFormat ? 30 : 60; }

    // Bundle identifiers of the applications a home screen (or menu) shows,
    // in the registry's own order; with `onlyRunning`, only those running now.
    // `debuggable` asks for the applications a debugger may attach to as
    // well; no caller asks for them.
    virtual QStringList displayIdentifiers(bool onlyRunning, bool debuggable) const = 0;
    // The display name in the user's language; a null string for an
    // identifier that is not an installed application.
    virtual QString localizedName(const QString &bundle) const = 0;
    // The application's icon at the size of `format` and `scale` device
    // pixels per point, or a null image.
    virtual QImage iconImage(const QString &bundle, int format, qreal scale) const = 0;
};

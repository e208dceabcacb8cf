#pragma once

#include <QString>
#include <QStringList>

// Where an application's icon is found, as its desktop entry names it: a
// picture file, or names in the icon theme from the most specific to the
// most generic. Drawing it needs Qt GUI, so that is left to whoever shows it
// (ApplicationIconLoader, next to the whitelist screen).
struct ApplicationIcon
{
    QString filePath;
    QStringList themeNames;

    bool isNull() const { return filePath.isEmpty() && themeNames.isEmpty(); }
    friend bool operator==(const ApplicationIcon &, const ApplicationIcon &) = default;
};

// Where the list of installed applications comes from: identifiers, names in
// the user's language and icons. The application list asks it afresh every
// time; nothing here or above it keeps an answer.
class ApplicationRegistry
{
public:
    virtual ~ApplicationRegistry() = default;

    // Bundle identifiers of the applications a home screen (or menu) shows,
    // in the registry's own order; with `onlyRunning`, only those running now.
    // `debuggable` asks for the applications a debugger may attach to as
    // well; no caller asks for them.
    virtual QStringList displayIdentifiers(bool onlyRunning, bool debuggable) const = 0;
    // The display name in the user's language; a null string for an
    // identifier that is not an installed application.
    virtual QString localizedName(const QString &bundle) const = 0;
    // Where the application's icon is found; a null icon for an application
    // without one or an identifier that is not installed.
    virtual ApplicationIcon icon(const QString &bundle) const = 0;
};

#pragma once

#include <QString>
#include <QVariantMap>

// The whitelist: bundle identifier to a boolean. Keys are never removed; a
// second tap stores false.
class WhitelistRecord
{
public:
    static bool isWhitelisted(const QVariantMap &record, const QString &bundle);
    // What a tap on an application's row does to the record: flips a stored
    // flag, or stores true for an application never tapped. Answers the new
    // value. Writing the file is the caller's.
    static bool toggle(QVariantMap &record, const QString &bundle);
};

#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

// Reads and writes property-list files. Values map to Qt types as follows:
// dictionary <-> QVariantMap, array <-> QVariantList, string <-> QString,
// real <-> double, integer <-> qint64 (quint64 above 2^63 - 1), boolean <->
// bool, data <-> QByteArray, date <-> QDateTime (UTC).
//
// Reading accepts both the XML and the binary form, since a file the system
// converted to binary still holds the user's data. Writing always produces the
// usual XML form and replaces the target whole.
class PropertyList
{
public:
    enum class ReadStatus { Missing, Read, Unreadable };
    struct Loaded
    {
        QVariant root; // invalid unless read
        ReadStatus status = ReadStatus::Missing;
        QString problem; // why it is unreadable, for a person
    };

    // Reads a file the user or another program may have put there: only a
    // regular file no larger than any settings file could be, nested no
    // deeper and expanding to no more than PropertyListGuard allows. Never
    // waits on a pipe or a device.
    static Loaded load(const QString &path);
    // The root of the file, or an invalid QVariant when the file is missing,
    // unreadable or not a property list.
    static QVariant read(const QString &path);
    // The root `data` holds, or an invalid QVariant; guarded as `load` is.
    static QVariant fromData(const QByteArray &data);

    // Convenience readers that answer empty for a missing file or a root of
    // the other kind.
    static QVariantMap readDictionary(const QString &path);
    static QVariantList readArray(const QString &path);

    // The XML text of a property list whose root is `root`.
    static QByteArray toXml(const QVariant &root);

    // Writes `root` as XML. The file is written beside the target and renamed
    // over it, so a reader in another process sees the old file or the new
    // one, never a part. Answers whether the file was replaced; callers that
    // ignore failures still get to know.
    static bool write(const QString &path, const QVariant &root);
};

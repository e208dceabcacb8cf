#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <QVariantList>

// One saved place of the favorites file. An entry that is not a place (not
// a dictionary) is kept exactly as it was read, so removing another entry
// never loses it.
class FavoriteEntry
{
public:
    FavoriteEntry() = default;

    // The entry as it is stored: the typed name trimmed, or "Unknow" (the
    // stored spelling) when nothing is left; coordinates as "%f" texts.
    static FavoriteEntry make(const QString &typedName, double latitude, double longitude);

    static FavoriteEntry fromPropertyList(const QVariant &stored);
    QVariant toPropertyList() const { return m_stored; }
    static QList<FavoriteEntry> listFromPropertyList(const QVariantList &stored);
    static QVariantList listToPropertyList(const QList<FavoriteEntry> &entries);

    bool isPlace() const;
    // "name" when it is a text, otherwise empty
    QString name() const;
    double latitude() const;
    double longitude() const;

private:
    QVariant m_stored;
};

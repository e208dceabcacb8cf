#pragma once

#include "settings/RoutePoint.h"

#include <QList>
#include <QString>
#include <QVariantMap>

// The route file's record: the trip's on/off flag, its start and end times,
// the two address texts and the planned points. Only what a setter changes
// is rewritten; every other key and value, understood or not, is written
// back exactly as it was read.
class RouteRecord
{
public:
    RouteRecord() = default;
    // A root that is not a dictionary reads as an empty record.
    static RouteRecord fromPropertyList(const QVariant &stored);
    QVariantMap toPropertyList() const { return m_values; }

    bool isEmpty() const { return m_values.isEmpty(); }

    // "enable" read as a flag; stored as "%d"
    bool isEnabled() const;
    void setEnabled(bool on);

    // "start" and "end": seconds since 1970, stored as "%f". Read as
    // numbers, or as the whole seconds (a 32-bit leading integer) the
    // hooking component and the route screen use; has...() tells whether
    // the key is there at all.
    double start() const;
    double end() const;
    qint32 startSeconds() const;
    qint32 endSeconds() const;
    bool hasStart() const;
    bool hasEnd() const;
    void setStart(double seconds);
    void setEnd(double seconds);

    // "s" and "e", the address texts as the route screen shows them (a
    // stored number shows as its text); hasText...() is true only for a
    // stored text. An unknown address (an empty text) removes the key.
    QString startAddress() const;
    QString endAddress() const;
    bool hasTextStartAddress() const;
    bool hasTextEndAddress() const;
    void setStartAddress(const QString &text);
    void setEndAddress(const QString &text);

    // "points": every entry counts, readable or not, as the hooking
    // component counts them.
    QList<RoutePoint> points() const;
    qsizetype pointCount() const;
    RoutePoint pointAt(qsizetype index) const;
    void setPoints(const QList<RoutePoint> &points);

private:
    void setAddress(const QString &key, const QString &text);

    QVariantMap m_values;
};

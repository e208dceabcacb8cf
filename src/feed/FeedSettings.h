#pragma once

#include "feed/NmeaSentences.h"
#include "settings/LocationRecord.h"
#include "settings/RouteRecord.h"

#include <QFileSystemWatcher>
#include <QObject>

#include <optional>

class TMPreferenceUtil;

// The three settings files that decide the position (master, location,
// route), kept in memory and read again only when one of them changes.
// The writers replace a file whole (a new file renamed over the old), so
// watching the folder sees every change; a file counts as changed when its
// size, times or inode differ from what was read.
class FeedSettings : public QObject
{
    Q_OBJECT

public:
    explicit FeedSettings(const TMPreferenceUtil &store, QObject *parent = nullptr);

    // Watches the folder, again if it was removed and made anew; false when
    // it cannot be watched, and the caller then has to call refresh() itself.
    bool watch();
    // Reads the files that changed since the last time; answers whether any did.
    bool refresh();

    // Where the location hook puts the device at that moment: the stored
    // place while the fixed location is on, the trip's point while the trip
    // is on (the master file's mode picks one when both are), otherwise
    // nowhere.
    std::optional<FeedFix> fixAt(qint64 msecsSinceEpoch) const;

    // How many times a settings file was read, for tests and benchmarks.
    int reads() const { return m_reads; }

signals:
    void changed();

private:
    struct Stamp
    {
        bool exists = false;
        qint64 size = 0, modified = 0, statusChanged = 0;
        quint64 device = 0, inode = 0;
        friend bool operator==(const Stamp &, const Stamp &) = default;
    };
    static Stamp stampOf(const QString &file);
    bool changedSince(const QString &file, std::optional<Stamp> &known);

    const TMPreferenceUtil &m_store;
    QFileSystemWatcher m_watcher;
    std::optional<Stamp> m_masterStamp, m_locationStamp, m_routeStamp;
    int m_mode = 0;
    LocationRecord m_location;
    RouteRecord m_route; // parsed once per change: a long trip has many points
    int m_reads = 0;
};

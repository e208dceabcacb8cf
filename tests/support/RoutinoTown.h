#pragma once

#include "FileBytes.h"

#include "platform/Coordinate.h"

#include <QDir>
#include <QProcess>

#include <tuple>

// A small town for the offline route planner: three by three street corners
// about 220 m apart (north-south) and 210 m apart (east-west), each row and
// each column one residential street, and a lone street east of the town
// that no road reaches. Written as an OpenStreetMap file and made into a
// Routino database by planetsplitter (from the routino package, which
// scripts/setup installs: without it the tests fail).
namespace RoutinoTown {

inline Coordinate corner(int row, int column)
{
    return {51.0 + 0.002 * row, 7.0 + 0.003 * column};
}
// the lone street's two ends (0 and 1)
inline Coordinate lone(int end)
{
    return {51.0 + 0.004 * end, 7.012};
}

// Builds the database in `dir`; answers what went wrong, or an empty text.
inline QString build(const QString &dir)
{
    // nodes 1 to 9 the corners (1 + row * 3 + column), 10 and 11 the lone street's ends
    QString osm = QStringLiteral("<osm version='0.6'>\n");
    for (int n = 0; n < 11; ++n) {
        const Coordinate c = n < 9 ? corner(n / 3, n % 3) : lone(n - 9);
        osm += QStringLiteral("<node id='%1' version='1' lat='%2' lon='%3'/>\n")
                   .arg(n + 1)
                   .arg(c.latitude, 0, 'f', 6)
                   .arg(c.longitude, 0, 'f', 6);
    }
    // the rows, the columns and the lone street, as first node, step and count
    for (const auto &[first, step, count] :
         {std::tuple{1, 1, 3}, {4, 1, 3}, {7, 1, 3}, {1, 3, 3}, {2, 3, 3}, {3, 3, 3}, {10, 1, 2}}) {
        osm += QStringLiteral("<way id='%1' version='1'>").arg(first * 10 + step);
        for (int i = 0; i < count; ++i)
            osm += QStringLiteral("<nd ref='%1'/>").arg(first + i * step);
        osm += QStringLiteral("<tag k='highway' v='residential'/></way>\n");
    }
    const QString file = QDir(dir).filePath(QStringLiteral("town.osm"));
    if (!writeBytes(file, (osm + QStringLiteral("</osm>\n")).toUtf8()))
        return QStringLiteral("cannot write ") + file;

    QProcess splitter;
    // unpruned: the lone street would lose its access as a small isolated group
    splitter.start(QStringLiteral("planetsplitter"),
                   {QStringLiteral("--dir=") + dir, QStringLiteral("--prune-none"), file});
    if (!splitter.waitForFinished(10000) || splitter.exitStatus() != QProcess::NormalExit ||
        splitter.exitCode() != 0)
        return QStringLiteral("planetsplitter failed: ") + splitter.errorString() +
               QString::fromLocal8Bit(splitter.readAllStandardError());
    return {};
}

} // namespace RoutinoTown

#pragma once

#include "FileBytes.h"

#include "platform/Coordinate.h"

#include <QDir>
#include <QProcess>

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
    QByteArray osm = "<?xml version='1.0' encoding='UTF-8'?>\n<osm version='0.6'>\n";
    const auto node = [&](int id, const Coordinate &c) {
        osm += QStringLiteral("<node id='%1' version='1' lat='%2' lon='%3'/>\n")
                   .arg(id)
                   .arg(c.latitude, 0, 'f', 6)
                   .arg(c.longitude, 0, 'f', 6)
                   .toUtf8();
    };
    const auto way = [&](int id, const QList<int> &nodes) {
        osm += "<way id='" + QByteArray::number(id) + "' version='1'>";
        for (int n : nodes)
            osm += "<nd ref='" + QByteArray::number(n) + "'/>";
        osm += "<tag k='highway' v='residential'/></way>\n";
    };
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            node(1 + row * 3 + column, corner(row, column));
    }
    for (int i = 0; i < 3; ++i) {
        way(100 + i, {1 + i * 3, 2 + i * 3, 3 + i * 3}); // row i
        way(110 + i, {1 + i, 4 + i, 7 + i});             // column i
    }
    node(20, lone(0));
    node(21, lone(1));
    way(120, {20, 21});
    osm += "</osm>\n";
    const QString file = QDir(dir).filePath(QStringLiteral("town.osm"));
    if (!writeBytes(file, osm))
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

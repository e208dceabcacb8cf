#pragma once

#include <QHashFunctions>
#include <QString>

// One tile of the XYZ scheme: at zoom z the world is 2^z by 2^z tiles, x
// growing eastwards from longitude -180 and y southwards from the top.
struct TileId
{
    int z = 0;
    int x = 0;
    int y = 0;

    bool isValid() const
    {
        const int count = 1 << z;
        return z >= 0 && z < 31 && x >= 0 && x < count && y >= 0 && y < count;
    }
    // the tile one level up that covers this one
    TileId parent() const { return TileId{z - 1, x >> 1, y >> 1}; }
    QString toString() const { return QStringLiteral("%1/%2/%3").arg(z).arg(x).arg(y); }

    friend bool operator==(const TileId &, const TileId &) = default;
};

inline size_t qHash(const TileId &t, size_t seed = 0) noexcept
{
    return qHashMulti(seed, t.z, t.x, t.y);
}

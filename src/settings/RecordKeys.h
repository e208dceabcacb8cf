#pragma once

#include <QString>

// The keys of the settings records, exactly as the hooking component reads
// them.
namespace RecordKeys {
inline QString enable()
{
    return QStringLiteral("enable");
}
inline QString latitude()
{
    return QStringLiteral("latitude");
}
inline QString longitude()
{
    return QStringLiteral("longitude");
}
inline QString name()
{
    return QStringLiteral("name");
}
inline QString start()
{
    return QStringLiteral("start");
}
inline QString end()
{
    return QStringLiteral("end");
}
inline QString startAddress()
{
    return QStringLiteral("s");
}
inline QString endAddress()
{
    return QStringLiteral("e");
}
inline QString points()
{
    return QStringLiteral("points");
}
inline QString pointLatitude()
{
    return QStringLiteral("lat");
}
inline QString pointLongitude()
{
    return QStringLiteral("lng");
}
inline QString mode()
{
    return QStringLiteral("mode");
}
} // namespace RecordKeys

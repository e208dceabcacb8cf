#pragma once

#include <QByteArray>

// A GPX 1.1 document around `body`.
inline QByteArray gpxDocument(const QByteArray &body)
{
    return R"(<?xml version="1.0"?><gpx xmlns="http://www.topografix.com/GPX/1/1" version="1.1">)" +
           body + "</gpx>";
}

// A route of three points across Hong Kong's harbour, from Central to Tsim Sha Tsui.
inline QByteArray gpxHarbourRoute()
{
    return gpxDocument(R"(<rte><rtept lat="22.2846809" lon="114.1588"/><rtept lat="22.29" )"
                       R"(lon="114.16"/><rtept lat="22.2988" lon="114.1722"/></rte>)");
}

#pragma once

#include <QByteArray>

// A GPX 1.1 document around `body`.
inline QByteArray gpxDocument(const QByteArray &body)
{
    return R"(<?xml version="1.0"?><gpx xmlns="http://www.topografix.com/GPX/1/1" version="1.1">)" +
           body + "</gpx>";
}

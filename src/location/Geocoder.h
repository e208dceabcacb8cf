#pragma once

#include "platform/Coordinate.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

// One place a geocoder found: its address lines (the first is the one-line
// address) and where it is. Either may be missing.
struct GeocoderPlacemark
{
    std::optional<QStringList> formattedAddressLines;
    std::optional<Coordinate> location;
};

// A geocoder's answer: the places found, or an error, or (rarely) neither.
struct GeocoderAnswer
{
    std::optional<QList<GeocoderPlacemark>> placemarks;
    std::optional<QString> error; // the error's description text

    static GeocoderAnswer found(QList<GeocoderPlacemark> placemarks)
    {
        return {std::move(placemarks), std::nullopt};
    }
    static GeocoderAnswer failure(QString description)
    {
        return {std::nullopt, std::move(description)};
    }
};

// Turns coordinates into addresses and addresses into coordinates. Each
// request gets exactly one answer, later, on the GUI thread; never from
// inside the call that asked.
class Geocoder
{
public:
    using Completion = std::function<void(const GeocoderAnswer &)>;

    virtual ~Geocoder() = default;
    virtual void reverseGeocodeLocation(const Coordinate &location, Completion completion) = 0;
    virtual void geocodeAddressString(const QString &address, Completion completion) = 0;
};

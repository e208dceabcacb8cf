#pragma once

#include "platform/Coordinate.h"

#include <QList>
#include <QObject>
#include <QPointer>
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
// request gets at most one answer, later, on the GUI thread; never from
// inside the call that asked.
//
// Every request names a receiver, as a context object does for
// QTimer::singleShot: the completion runs only while the receiver exists, so
// a screen or delegate that is destroyed with a lookup still out is simply
// not answered. A null receiver is never answered. The geocoder itself keeps
// working for the requests that follow.
class Geocoder
{
public:
    using Completion = std::function<void(const GeocoderAnswer &)>;

    virtual ~Geocoder() = default;
    virtual void reverseGeocodeLocation(const Coordinate &location, QObject *receiver,
                                        Completion completion) = 0;
    virtual void geocodeAddressString(const QString &address, QObject *receiver,
                                      Completion completion) = 0;
};

// A completion with the receiver it belongs to, for geocoders that keep
// requests waiting.
struct GeocoderRequest
{
    QPointer<QObject> receiver;
    Geocoder::Completion completion;

    // Calls the completion unless its receiver is gone.
    void answer(const GeocoderAnswer &answer) const
    {
        if (receiver && completion)
            completion(answer);
    }
};

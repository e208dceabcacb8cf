#pragma once

#include "platform/Coordinate.h"
#include "platform/PositionSource.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

class AlertPresenter;
class Geocoder;

// One answer of the location service: the value found, or a failure with the
// source's own description text (null when the failure carried none).
template <typename T> struct LocationAnswer
{
    std::optional<T> value;
    QString error;

    bool succeeded() const { return value.has_value(); }
    static LocationAnswer found(T value) { return {std::move(value), QString()}; }
    static LocationAnswer failure(QString error) { return {std::nullopt, std::move(error)}; }
};

// The completion most callers want: a found value goes to `found`, a
// failure's text (null when there was none) to `failed`.
template <typename T, typename Found, typename Failed>
std::function<void(const LocationAnswer<T> &)> splitAnswer(Found found, Failed failed)
{
    return [found = std::move(found), failed = std::move(failed)](const LocationAnswer<T> &answer) {
        if (answer.succeeded())
            found(*answer.value);
        else
            failed(answer.error);
    };
}

using PositionAnswer = LocationAnswer<Coordinate>;   // the device's position
using AddressAnswer = LocationAnswer<QString>;       // a one-line address
using CoordinateAnswer = LocationAnswer<Coordinate>; // the place of an address

// The device's own position, found once per request, and address lookups in
// both directions. Made once by whoever builds the services and handed to
// the screens that use it.
//
// Every request names a receiver, as Geocoder does: the completion runs only
// while the receiver exists, so a screen closed with a request still out
// hears nothing. A null receiver is never answered. Position requests share
// one source: the requester that asked last receives the answer, an earlier
// one that is still waiting gets nothing.
//
// The last valid fix is kept in memory and in the user defaults
// ("LocationLatitudeKey", "LocationLongitudeKey" in last-position.ini of
// the state folder, $XDG_STATE_HOME/trekmime), read back at construction
// so that a fresh start still knows where the device was.
class Location : public QObject
{
    Q_OBJECT

public:
    using PositionCompletion = std::function<void(const PositionAnswer &)>;
    using AddressCompletion = std::function<void(const AddressAnswer &)>;
    using CoordinateCompletion = std::function<void(const CoordinateAnswer &)>;

    // Any of the services may be null: without position sources every
    // position request fails, without a geocoder every lookup fails, without
    // alerts nothing is shown.
    Location(PositionSourceFactory *positionSources, Geocoder *geocoder, AlertPresenter *alerts,
             QObject *parent = nullptr);
    ~Location() override;

    // Finds the device's position once and reports it to the receiver that
    // asked last; updates stop after the answer.
    void startLocation(QObject *receiver, PositionCompletion completion);
    // The first address line of the first place at `coordinate`.
    void addressWithCoordinate(const Coordinate &coordinate, QObject *receiver,
                               AddressCompletion completion);
    // The place of the first match of `address`, sent as typed.
    void coordinateWithAddress(const QString &address, QObject *receiver,
                               CoordinateCompletion completion);
    // The address of the last fix; a success is also kept as `address()`.
    void startAddress(QObject *receiver, AddressCompletion completion);

    double latitude() const { return m_latitude; }
    double longitude() const { return m_longitude; }
    QString address() const { return m_address; } // null until `startAddress` succeeds
    bool isLocationOn() const;

    // Decodes backslash-u escapes (as printed by old-style property list
    // descriptions) into characters; null when the text cannot be decoded.
    static QString replaceUnicode(const QString &text);

private:
    void prepareLocationManager();
    void didUpdateToLocation(PositionSource *manager, const PositionFix &fix);
    void didFail(PositionSource *manager, int code, const QString &description);
    void answerPosition(const PositionAnswer &answer);
    void presentAlert(const QString &title, const QString &message) const;

    PositionSourceFactory *m_positionSources;
    Geocoder *m_geocoder;
    AlertPresenter *m_alerts;
    PositionSource *m_locationManager = nullptr;
    double m_latitude = 0.0;
    double m_longitude = 0.0;
    QString m_address;
    // the position request waiting for its answer
    QPointer<QObject> m_receiver;
    PositionCompletion m_completion;
};

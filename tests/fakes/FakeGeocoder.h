#pragma once

#include "location/Geocoder.h"

#include <QHash>
#include <QObject>

// A geocoder for tests: answers from tables set up beforehand, always later
// on the event loop, and records what it was asked. Unknown questions get
// a failure with the text "not found". A receiver destroyed before the
// answer gets nothing.
class FakeGeocoder : public QObject, public Geocoder
{
    Q_OBJECT

public:
    using QObject::QObject;

    void reverseGeocodeLocation(const Coordinate &location, QObject *receiver,
                                Completion completion) override;
    void geocodeAddressString(const QString &address, QObject *receiver,
                              Completion completion) override;

    void setAddress(const Coordinate &location, const QString &addressLine);
    void setCoordinate(const QString &address, const Coordinate &location);
    void setReverseAnswer(const Coordinate &location, const GeocoderAnswer &answer);

    const QList<Coordinate> &reverseRequests() const { return m_reverseRequests; }
    const QStringList &forwardRequests() const { return m_forwardRequests; }

private:
    void answerLater(const GeocoderAnswer &answer, QObject *receiver, Completion completion);

    QHash<Coordinate, GeocoderAnswer> m_reverse;
    QHash<QString, GeocoderAnswer> m_forward;
    QList<Coordinate> m_reverseRequests;
    QStringList m_forwardRequests;
};

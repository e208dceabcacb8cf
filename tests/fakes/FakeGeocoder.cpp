#include "fakes/FakeGeocoder.h"

#include <QTimer>

void FakeGeocoder::reverseGeocodeLocation(const Coordinate &location, QObject *receiver,
                                          Completion completion)
{
    m_reverseRequests.append(location);
    answerLater(m_reverse.value(location, GeocoderAnswer::failure(QStringLiteral("not found"))),
                receiver, std::move(completion));
}

void FakeGeocoder::geocodeAddressString(const QString &address, QObject *receiver,
                                        Completion completion)
{
    m_forwardRequests.append(address);
    answerLater(m_forward.value(address, GeocoderAnswer::failure(QStringLiteral("not found"))),
                receiver, std::move(completion));
}

void FakeGeocoder::setAddress(const Coordinate &location, const QString &addressLine)
{
    setReverseAnswer(
        location, GeocoderAnswer::found({GeocoderPlacemark{QStringList{addressLine}, location}}));
}

void FakeGeocoder::setCoordinate(const QString &address, const Coordinate &location)
{
    m_forward.insert(address,
                     GeocoderAnswer::found({GeocoderPlacemark{QStringList{address}, location}}));
}

void FakeGeocoder::setReverseAnswer(const Coordinate &location, const GeocoderAnswer &answer)
{
    m_reverse.insert(location, answer);
}

void FakeGeocoder::answerLater(const GeocoderAnswer &answer, QObject *receiver,
                               Completion completion)
{
    if (!receiver)
        return;
    // the receiver is the timer's context: if it goes first, so does the answer
    QTimer::singleShot(0, receiver,
                       [answer, completion = std::move(completion)] { completion(answer); });
}

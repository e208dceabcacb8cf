#pragma once

#include "FuzzInput.h"

#include "location/NominatimGeocoder.h"

// A Nominatim answer as the address screens take it: each place's lines and
// coordinate, or the error text. A refusal (HTTP 400) reads the same body for
// the service's own message.
inline void readNominatimAnswer(const uint8_t *data, size_t size)
{
    const QByteArray body = fuzzBytes(data, size);
    for (const int status : {200, 400}) {
        const GeocoderAnswer answer = NominatimGeocoder::answerFor(status, body);
        volatile qsizetype seen = answer.error.value_or(QString()).size();
        for (const GeocoderPlacemark &place :
             answer.placemarks.value_or(QList<GeocoderPlacemark>()))
            seen = place.formattedAddressLines.value_or(QStringList()).join(u", ").size() +
                   place.location.value_or(Coordinate{}).isValid();
        (void)seen;
    }
}

// The web geocoder's JSON answer: its places with every field the address
// screens and the diagnostic text use, or the error it reports.

#include "FuzzInput.h"

#include "location/WebGeocoder.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const WebGeocoder::Parsed parsed = WebGeocoder::parseResponseData(fuzzBytes(data, size));
    volatile qsizetype seen = parsed.error ? parsed.error->localizedDescription.size() : 0;
    for (const WebPlacemark &place : parsed.placemarks.value_or(WebGeocoder::PlacemarkList()))
        seen = place.name().size() + place.description().size() + place.coordinate.isValid();
    (void)seen;
    return 0;
}

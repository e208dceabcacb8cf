// The answer of Nominatim's "/search": a list of places.

#include "NominatimAnswer.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    readNominatimAnswer(data, size);
    return 0;
}

// The answer of Nominatim's "/reverse": one place, or an error object.

#include "NominatimAnswer.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    readNominatimAnswer(data, size);
    return 0;
}

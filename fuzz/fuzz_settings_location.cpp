// The location file as the fixed-location screen and the position feed read
// it, and as it is written back when the map comes to rest.

#include "FuzzInput.h"

#include "platform/Coordinate.h"
#include "settings/LocationRecord.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    LocationRecord location =
        LocationRecord::fromPropertyList(settingsRoot(data, size, QMetaType::QVariantMap));
    const Coordinate place{location.latitude(), location.longitude()};
    volatile bool seen = location.isEnabled() && place.isValid();
    (void)seen;
    location.setEnabled(!location.isEnabled());
    checkWrittenBack(location.toPropertyList());
    return 0;
}

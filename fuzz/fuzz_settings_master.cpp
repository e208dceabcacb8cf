// The master file as the start-up and the position feed read the mode.

#include "FuzzInput.h"

#include "settings/MasterRecord.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    volatile int mode =
        MasterRecord::fromPropertyList(settingsRoot(data, size, QMetaType::QVariantMap)).mode();
    (void)mode;
    return 0;
}

// The whitelist file as the whitelist screen reads it, and as it is written
// back after a tap on a row.

#include "FuzzInput.h"

#include "settings/WhitelistRecord.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    WhitelistRecord whitelist =
        WhitelistRecord::fromPropertyList(settingsRoot(data, size, QMetaType::QVariantMap));
    const QStringList bundles = whitelist.bundles();
    volatile int on = 0;
    for (const QString &bundle : bundles)
        on = on + whitelist.isWhitelisted(bundle);
    whitelist.toggle(bundles.isEmpty() ? QStringLiteral("org.example.app") : bundles.first());
    checkWrittenBack(whitelist.toPropertyList());
    return 0;
}

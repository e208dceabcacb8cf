// The favourites file as the favourites list reads it, as it is written back
// after a removal, and as it is exported to GPX.

#include "FuzzInput.h"

#include "gpx/GpxFile.h"
#include "settings/FavoriteEntry.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QList<FavoriteEntry> favorites = FavoriteEntry::listFromPropertyList(
        settingsRoot(data, size, QMetaType::QVariantList).toList());
    volatile double seen = 0;
    for (const FavoriteEntry &entry : favorites)
        seen = entry.isPlace() + entry.name().size() + entry.latitude() + entry.longitude();
    (void)seen;
    Gpx::toXml(favorites, {});
    if (!favorites.isEmpty())
        favorites.removeFirst();
    checkWrittenBack(FavoriteEntry::listToPropertyList(favorites));
    return 0;
}

#include "settings/HideList.h"

#include "settings/PreferenceFiles.h"
#include "settings/PropertyList.h"

QStringList HideList::bundleIdentifiers()
{
    return PropertyList::readDictionary(PreferenceFiles::hideListFile()).keys();
}

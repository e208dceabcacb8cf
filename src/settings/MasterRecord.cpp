#include "settings/MasterRecord.h"

#include "settings/PreferenceFiles.h"
#include "settings/PropertyList.h"
#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"

#include <QVariantMap>

int MasterRecord::readMode()
{
    const QVariantMap record = PropertyList::readDictionary(PreferenceFiles::masterFile());
    return StoredValue::intValue(record.value(RecordKeys::mode()));
}

bool MasterRecord::write(Mode mode)
{
    // a text, not a number: that is how the mode has always been stored
    const QVariantMap record{{RecordKeys::mode(), QString::asprintf("%d", int(mode))}};
    return PropertyList::write(PreferenceFiles::masterFile(), record);
}

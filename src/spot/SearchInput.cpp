#include "spot/SearchInput.h"

#include "settings/StoredValue.h"

#include <QStringList>

SearchInput SearchInput::parse(const QString &typed)
{
    SearchInput input;
    input.text = typed.trimmed();
    if (input.text.isEmpty())
        return input;
    static const QString prefix = QStringLiteral("#:");
    if (!input.text.startsWith(prefix)) {
        input.kind = Address;
        return input;
    }
    const QStringList parts = input.text.mid(prefix.size()).split(u',');
    // a part that is no finite number would put the map nowhere
    if (parts.size() != 2 || !StoredValue::isFiniteNumber(parts[0]) ||
        !StoredValue::isFiniteNumber(parts[1])) {
        input.kind = MalformedPair;
        return input;
    }
    input.kind = CoordinatePair;
    input.coordinate = {StoredValue::doubleValue(parts[0]), StoredValue::doubleValue(parts[1])};
    return input;
}

#include "settings/RouteRecord.h"

#include "settings/RecordKeys.h"
#include "settings/StoredValue.h"

using namespace RecordKeys;

namespace {
bool isText(const QVariant &value)
{
    return value.metaType().id() == QMetaType::QString;
}
} // namespace

RouteRecord RouteRecord::fromPropertyList(const QVariant &stored)
{
    RouteRecord record;
    if (stored.metaType().id() == QMetaType::QVariantMap)
        record.m_values = stored.toMap();
    return record;
}

bool RouteRecord::isEnabled() const
{
    return StoredValue::boolValue(m_values.value(enable()));
}

void RouteRecord::setEnabled(bool on)
{
    m_values.insert(enable(), StoredValue::formatFlag(on));
}

double RouteRecord::start() const
{
    return StoredValue::doubleValue(m_values.value(RecordKeys::start()));
}

double RouteRecord::end() const
{
    return StoredValue::doubleValue(m_values.value(RecordKeys::end()));
}

qint32 RouteRecord::startSeconds() const
{
    return StoredValue::intValue(m_values.value(RecordKeys::start()));
}

qint32 RouteRecord::endSeconds() const
{
    return StoredValue::intValue(m_values.value(RecordKeys::end()));
}

bool RouteRecord::hasStart() const
{
    return m_values.contains(RecordKeys::start());
}

bool RouteRecord::hasEnd() const
{
    return m_values.contains(RecordKeys::end());
}

void RouteRecord::setStart(double seconds)
{
    m_values.insert(RecordKeys::start(), StoredValue::formatReal(seconds));
}

void RouteRecord::setEnd(double seconds)
{
    m_values.insert(RecordKeys::end(), StoredValue::formatReal(seconds));
}

QString RouteRecord::startAddress() const
{
    return m_values.value(RecordKeys::startAddress()).toString();
}

QString RouteRecord::endAddress() const
{
    return m_values.value(RecordKeys::endAddress()).toString();
}

bool RouteRecord::hasTextStartAddress() const
{
    return isText(m_values.value(RecordKeys::startAddress()));
}

bool RouteRecord::hasTextEndAddress() const
{
    return isText(m_values.value(RecordKeys::endAddress()));
}

void RouteRecord::setAddress(const QString &key, const QString &text)
{
    // a missing value is a missing key, never an empty text
    if (text.isEmpty())
        m_values.remove(key);
    else
        m_values.insert(key, text);
}

void RouteRecord::setStartAddress(const QString &text)
{
    setAddress(RecordKeys::startAddress(), text);
}

void RouteRecord::setEndAddress(const QString &text)
{
    setAddress(RecordKeys::endAddress(), text);
}

QList<RoutePoint> RouteRecord::points() const
{
    return RoutePoint::listFromPropertyList(m_values.value(RecordKeys::points()).toList());
}

qsizetype RouteRecord::pointCount() const
{
    return m_values.value(RecordKeys::points()).toList().size();
}

RoutePoint RouteRecord::pointAt(qsizetype index) const
{
    return RoutePoint::fromPropertyList(m_values.value(RecordKeys::points()).toList().value(index));
}

void RouteRecord::setPoints(const QList<RoutePoint> &points)
{
    m_values.insert(RecordKeys::points(), RoutePoint::listToPropertyList(points));
}

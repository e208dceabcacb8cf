#pragma once

#include <QtGlobal>

// Days since 1970-01-01 and proleptic Gregorian dates with astronomical
// years (year 0 is 1 BC), for dates QDate would write with no year 0.
namespace CivilDate {

struct Date
{
    qint64 year;
    int month; // 1-12
    int day;   // 1-31
};

// Months and days outside their range roll over into the next or previous
// year and month, as mktime does.
constexpr qint64 daysFromCivil(qint64 year, qint64 month, qint64 day)
{
    year += (month - 1) / 12;
    month = (month - 1) % 12 + 1;
    if (month < 1) {
        month += 12;
        --year;
    }
    year -= month <= 2;
    const qint64 era = (year >= 0 ? year : year - 399) / 400;
    const qint64 yearOfEra = year - era * 400;
    const qint64 dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5;
    const qint64 dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468 + (day - 1);
}

constexpr Date civilFromDays(qint64 days)
{
    days += 719468;
    const qint64 era = (days >= 0 ? days : days - 146096) / 146097;
    const qint64 dayOfEra = days - era * 146097;
    const qint64 yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const qint64 dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const qint64 shifted = (5 * dayOfYear + 2) / 153;
    const int day = int(dayOfYear - (153 * shifted + 2) / 5 + 1);
    const int month = int(shifted < 10 ? shifted + 3 : shifted - 9);
    return {yearOfEra + era * 400 + (month <= 2), month, day};
}

static_assert(daysFromCivil(1970, 1, 1) == 0);
static_assert(daysFromCivil(2001, 1, 1) == 11323);
static_assert(daysFromCivil(2024, 13, 1) == daysFromCivil(2025, 1, 1));
static_assert(daysFromCivil(2024, 0, 1) == daysFromCivil(2023, 12, 1));
static_assert(civilFromDays(11323).year == 2001 && civilFromDays(-1).day == 31);
static_assert(civilFromDays(daysFromCivil(-100, 3, 1)).year == -100);

} // namespace CivilDate

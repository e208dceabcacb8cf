#include "feed/NmeaSentences.h"

#include <QDate>

#include <cmath>
#include <cstdio>

namespace {

constexpr double KnotsPerMeterPerSecond = 3600.0 / 1852.0;
constexpr qint64 MSecsPerDay = 86400000;

template <typename... Args> QByteArray format(const char *pattern, Args... args)
{
    char text[160];
    const int length = std::snprintf(text, sizeof text, pattern, args...);
    return QByteArray(text, qBound(0, length, int(sizeof text) - 1));
}

} // namespace

namespace NmeaSentences {

QByteArray sentence(const QByteArray &body)
{
    quint8 sum = 0;
    for (const char c : body)
        sum ^= quint8(c);
    return '$' + body + format("*%02X\r\n", unsigned(sum));
}

QByteArray angle(double degrees, int degreeDigits, char positive, char negative)
{
    // whole millionths of a minute, so that rounding carries into the degrees
    const long long microMinutes = std::llround(std::fabs(degrees) * 60e6);
    const long long minutes = microMinutes % 60000000;
    return format("%0*lld%02lld.%06lld,%c", degreeDigits, microMinutes / 60000000,
                  minutes / 1000000, minutes % 1000000,
                  degrees < 0 && microMinutes != 0 ? negative : positive);
}

QByteArray forMoment(qint64 msecsSinceEpoch, const std::optional<FeedFix> &fix)
{
    if (!fix) {
        return sentence("GPGGA,,,,,,0,00,99.99,,,,,,") + sentence("GPRMC,,V,,,,,,,,,,N") +
               sentence("GPVTG,,T,,M,,N,,K,N");
    }
    // the day and the time of day by hand: a QDateTime per second would be
    // most of the feed's work
    const qint64 day = msecsSinceEpoch >= 0 ? msecsSinceEpoch / MSecsPerDay
                                            : -((-msecsSinceEpoch + MSecsPerDay - 1) / MSecsPerDay);
    const qint64 ofDay = msecsSinceEpoch - day * MSecsPerDay;
    const QDate date = QDate::fromJulianDay(2440588 + day);
    const QByteArray time =
        format("%02d%02d%02d.%02d", int(ofDay / 3600000), int(ofDay / 60000 % 60),
               int(ofDay / 1000 % 60), int(ofDay % 1000 / 10));
    const QByteArray where = angle(fix->coordinate.latitude, 2, 'N', 'S') + ',' +
                             angle(fix->coordinate.longitude, 3, 'E', 'W');
    const double knots = fix->speedMetersPerSecond * KnotsPerMeterPerSecond;
    const QByteArray course = format("%.2f", fix->courseDegrees);
    return sentence("GPGGA," + time + ',' + where + ",1,08,1.0,0.0,M,0.0,M,,") +
           sentence("GPRMC," + time + ",A," + where + ',' + format("%.3f", knots) + ',' + course +
                    format(",%02d%02d%02d,,,A", date.day(), date.month(), date.year() % 100)) +
           sentence("GPVTG," + course + ",T,,M," +
                    format("%.3f,N,%.3f,K,A", knots, fix->speedMetersPerSecond * 3.6));
}

} // namespace NmeaSentences

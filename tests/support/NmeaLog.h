#pragma once

#include <QByteArray>

// Small NMEA logs for tests: one GGA and one RMC sentence per second at a
// place, with correct checksums.
namespace NmeaLog {

inline QByteArray sentence(const QByteArray &body)
{
    char sum = 0;
    for (char c : body)
        sum ^= c;
    return '$' + body + '*' + QByteArray::number(quint8(sum), 16).toUpper().rightJustified(2, '0') +
           "\r\n";
}

// Degrees as NMEA writes them: ddmm.mmmm (longitude dddmm.mmmm) and a hemisphere.
inline QByteArray angle(double degrees, int degreeDigits, const char *hemispheres)
{
    const double magnitude = qAbs(degrees);
    return QByteArray::number(int(magnitude)).rightJustified(degreeDigits, '0') +
           QByteArray::number((magnitude - int(magnitude)) * 60.0, 'f', 4).rightJustified(7, '0') +
           ',' + hemispheres[degrees < 0 ? 1 : 0];
}

// `seconds` fixes at one place, or without a fix when `fix` is false.
inline QByteArray log(double latitude, double longitude, int seconds = 3, bool fix = true)
{
    QByteArray text;
    const QByteArray where = angle(latitude, 2, "NS") + ',' + angle(longitude, 3, "EW");
    for (int i = 0; i < seconds; ++i) {
        const QByteArray time = "1235" + QByteArray::number(10 + i) + ".00";
        text += sentence("GPGGA," + time + ',' + where + (fix ? ",1" : ",0") +
                         ",08,0.9,45.4,M,46.9,M,,");
        text += sentence("GPRMC," + time + (fix ? ",A," : ",V,") + where + ",0.0,0.0,221126,,,A");
    }
    return text;
}

} // namespace NmeaLog

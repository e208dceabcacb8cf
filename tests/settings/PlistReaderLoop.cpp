// Reads a route record over and over until a stop file appears, and reports
// how many reads saw a whole record. Every read must: the writer replaces the
// file atomically.

#include "settings/PropertyList.h"

#include <QFile>
#include <QTextStream>
#include <QVariantMap>

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: plist_reader_loop FILE STOPFILE\n");
        return 2;
    }
    const QString path = QString::fromLocal8Bit(argv[1]);
    const QString stop = QString::fromLocal8Bit(argv[2]);
    qint64 reads = 0;
    qint64 broken = 0;
    QString firstProblem;
    std::printf("ready\n");
    std::fflush(stdout);
    while (!QFile::exists(stop)) {
        const QVariantMap record = PropertyList::readDictionary(path);
        ++reads;
        const QVariantList points = record.value(QStringLiteral("points")).toList();
        const qint64 generation = record.value(QStringLiteral("generation")).toLongLong();
        // a whole record has as many points as its generation says
        const bool whole = !record.isEmpty() && points.size() == 100 + generation % 2 * 50;
        if (!whole) {
            ++broken;
            if (firstProblem.isEmpty())
                firstProblem = QStringLiteral("read %1: %2 keys, %3 points")
                                   .arg(reads)
                                   .arg(record.size())
                                   .arg(points.size());
        }
    }
    QTextStream(stdout) << reads << ' ' << broken << ' ' << firstProblem << Qt::endl;
    return 0;
}

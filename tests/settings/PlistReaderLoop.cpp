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
    if (argc != 3)
        return 2;
    const QString path = QString::fromLocal8Bit(argv[1]);
    qint64 reads = 0;
    qint64 broken = 0;
    QString firstProblem;
    std::printf("ready\n");
    std::fflush(stdout);
    while (!QFile::exists(QString::fromLocal8Bit(argv[2]))) {
        const QVariantMap record = PropertyList::readDictionary(path);
        const qsizetype points = record.value(QStringLiteral("points")).toList().size();
        // a whole record has as many points as its generation says
        ++reads;
        if (points != 100 + record.value(QStringLiteral("generation")).toLongLong() % 2 * 50 &&
            ++broken == 1)
            firstProblem = QStringLiteral("read %1: %2 points").arg(reads).arg(points);
    }
    QTextStream(stdout) << reads << ' ' << broken << ' ' << firstProblem << Qt::endl;
    return 0;
}

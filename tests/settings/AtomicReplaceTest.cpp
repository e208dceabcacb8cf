#include "TestMain.h"

#include "settings/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The hooking component reads the settings files from other processes at any
// moment; it must see the old file or the new one, never a part of one.
class AtomicReplaceTest : public QObject
{
    Q_OBJECT

private:
    static QVariantMap record(int generation)
    {
        QVariantList points;
        for (int i = 0; i < 100 + generation % 2 * 50; ++i)
            points.append(QVariantMap{{QStringLiteral("lat"), 22.0 + i * 1e-4},
                                      {QStringLiteral("lng"), 114.0 + i * 1e-4}});
        return {{QStringLiteral("enable"), QStringLiteral("1")},
                {QStringLiteral("generation"), qint64(generation)},
                {QStringLiteral("points"), points}};
    }

private slots:
    void readerInAnotherProcessNeverSeesAPart()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("com.velmora.trekmimex.route.plist"));
        const QString stop = dir.filePath(QStringLiteral("stop"));
        QVERIFY(PropertyList::write(path, record(0)));

        QProcess reader;
        reader.start(QStringLiteral(PLIST_READER_LOOP), {path, stop});
        QVERIFY(reader.waitForStarted());
        QVERIFY(reader.waitForReadyRead(5000));
        QCOMPARE(reader.readLine().trimmed(), QByteArray("ready"));

        const QVariantMap records[2] = {record(0), record(1)};
        const int writes = 1200;
        int failedWrites = 0;
        for (int i = 1; i <= writes; ++i) {
            QVariantMap next = records[i % 2];
            next.insert(QStringLiteral("generation"), qint64(i));
            failedWrites += PropertyList::write(path, next) ? 0 : 1;
        }
        QFile stopFile(stop);
        QVERIFY(stopFile.open(QIODevice::WriteOnly));
        stopFile.close();
        QVERIFY(reader.waitForFinished(30000));

        const QList<QByteArray> report = reader.readAllStandardOutput().trimmed().split(' ');
        const qint64 reads = report.value(0).toLongLong();
        const qint64 broken = report.value(1).toLongLong();
        qInfo("%d writes, %lld reads by the other process, %lld broken", writes, reads, broken);
        QCOMPARE(failedWrites, 0);
        QVERIFY2(reads >= 100, "the reader hardly ran; the test proves nothing");
        QVERIFY2(broken == 0, report.mid(2).join(' ').constData());
        // no temporary file is left behind
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files),
                 (QStringList{QStringLiteral("com.velmora.trekmimex.route.plist"),
                              QStringLiteral("stop")}));
    }
};

TREKMIME_TEST(AtomicReplaceTest)
#include "AtomicReplaceTest.moc"

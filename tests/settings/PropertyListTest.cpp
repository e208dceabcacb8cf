#include "SettingsFiles.h"
#include "TestMain.h"

#include "settings/PropertyList.h"
#include "settings/StoredValue.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimeZone>

#include <limits>

using SettingsFiles::toBinary;

class PropertyListTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const char *name) const { return m_dir.filePath(QString::fromLatin1(name)); }

private slots:
    void everyValueTypeSurvivesAWriteAndARead()
    {
        const QVariantMap root{
            {u"text"_s, u"Ünïcode & <xml> \"quotes\" 中文"_s},
            {u"real"_s, 22.2846809},
            {u"integer"_s, qint64(-42)},
            {u"big"_s, qint64(1) << 40},
            {u"yes"_s, true},
            {u"no"_s, false},
            {u"data"_s, QByteArray("\x00\x01\xff", 3)},
            {u"date"_s, QDateTime(QDate(2024, 2, 29), QTime(12, 30, 15), QTimeZone::utc())},
            {u"list"_s, QVariantList{u"a"_s, 1.5, QVariantMap()}},
            {u"empty"_s, QVariantMap()},
            // a key set to nothing (an address label without text) is not written
            {u"nothing"_s, QVariant()},
        };
        QVERIFY(PropertyList::write(path("all.plist"), root));
        const QVariantMap back = PropertyList::readDictionary(path("all.plist"));
        QVariantMap written = root;
        written.remove(u"nothing"_s);
        QCOMPARE(back, written);
        QCOMPARE(PropertyList::readArray(path("all.plist")), QVariantList()); // not an array
        QCOMPARE(back.value(u"real"_s).metaType().id(), int(QMetaType::Double));
        QCOMPARE(back.value(u"yes"_s).metaType().id(), int(QMetaType::Bool));
    }

    void unreadableInputReadsAsNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray xml = PropertyList::toXml(QVariantMap{{u"a"_s, 1}});
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("not xml") << QByteArray("hello world");
        QTest::newRow("truncated xml") << xml.left(120);
        QTest::newRow("truncated binary") << toBinary(xml).left(12);
        // a root of the other kind reads as empty
        QTest::newRow("an array") << PropertyList::toXml(QVariantList{u"a"_s});
    }
    void unreadableInputReadsAsNothing()
    {
        QFETCH(QByteArray, content);
        SettingsFiles::writeBytes(path("bad.plist"), content);
        QCOMPARE(PropertyList::readDictionary(path("bad.plist")), QVariantMap());
        QVERIFY(!PropertyList::read(path("missing.plist")).isValid());
    }

    void failedWritesLeaveTheOldFileAndNoLitter()
    {
        QTemporaryDir dir;
        // the target is a directory: nothing can replace it
        const QString blocked = dir.filePath(u"blocked.plist"_s);
        QVERIFY(QDir().mkdir(blocked));
        QVERIFY(!PropertyList::write(blocked, QVariantMap{{u"a"_s, 1}}));
        QVERIFY(!PropertyList::write(dir.filePath(u"nowhere/x.plist"_s), QVariantMap()));
        // a read-only folder keeps the file it has (root may write anyway)
        const QString sub = dir.filePath(u"ro"_s);
        QVERIFY(QDir().mkdir(sub));
        const QString kept = sub + u"/kept.plist"_s;
        QVERIFY(PropertyList::write(kept, QVariantMap{{u"v"_s, u"old"_s}}));
        QFile::setPermissions(sub, QFile::ReadOwner | QFile::ExeOwner);
        const bool replaced = PropertyList::write(kept, QVariantMap{{u"v"_s, u"new"_s}});
        QCOMPARE(PropertyList::readDictionary(kept).value(u"v"_s).toString(),
                 replaced ? u"new"_s : u"old"_s);
        QFile::setPermissions(sub, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(QDir(sub).entryList(QDir::Files), QStringList{u"kept.plist"_s});
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList());
    }
};

// The hooking component reads the settings files from other processes at any
// moment; it must see the old file or the new one, never a part of one.
class AtomicReplaceTest : public QObject
{
    Q_OBJECT

private slots:
    void readerInAnotherProcessNeverSeesAPart()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"com.velmora.trekmimex.route.plist"_s);
        const QString stop = dir.filePath(u"stop"_s);
        QVariantMap records[2];
        for (int generation : {0, 1}) {
            QVariantList points;
            for (int i = 0; i < 100 + generation * 50; ++i)
                points.append(
                    QVariantMap{{u"lat"_s, 22.0 + i * 1e-4}, {u"lng"_s, 114.0 + i * 1e-4}});
            records[generation] = {{u"enable"_s, u"1"_s}, {u"points"_s, points}};
        }
        QVERIFY(PropertyList::write(path, records[0]));
        QProcess reader;
        reader.start(QStringLiteral(PLIST_READER_LOOP), {path, stop});
        QVERIFY(reader.waitForReadyRead(5000));
        QCOMPARE(reader.readLine().trimmed(), QByteArray("ready"));
        const int writes = 1200;
        int failedWrites = 0;
        for (int i = 1; i <= writes; ++i) {
            QVariantMap next = records[i % 2];
            next.insert(u"generation"_s, qint64(i));
            failedWrites += PropertyList::write(path, next) ? 0 : 1;
        }
        SettingsFiles::writeBytes(stop, {});
        QVERIFY(reader.waitForFinished(30000));
        const QList<QByteArray> report = reader.readAllStandardOutput().trimmed().split(' ');
        const qint64 reads = report.value(0).toLongLong();
        QCOMPARE(failedWrites, 0);
        QVERIFY2(reads >= 100, "the reader hardly ran; the test proves nothing");
        QVERIFY2(report.value(1) == "0", report.mid(1).join(' ').constData());
        // no temporary file is left behind
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files),
                 (QStringList{u"com.velmora.trekmimex.route.plist"_s, u"stop"_s}));
    }
};

namespace {
enum Kind { Flag, Integer, Real };
} // namespace

// How flags, integers and coordinates read back from whatever a settings
// file holds: the hooking component and older versions wrote texts, but
// users and other tools leave other types behind.
class StoredValueTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<double>("expected"); // a flag: 1 or 0
        const auto row = [](const char *name, Kind kind, const QVariant &stored, double expected) {
            QTest::newRow(name) << int(kind) << stored << expected;
        };
        const auto text = [](const char *value) { return QVariant(QString::fromUtf8(value)); };
        row("flag leading zeros then digit", Flag, text("0007"), 1);
        row("flag all zeros", Flag, text("000"), 0);
        row("flag white space and sign", Flag, text("  -1"), 1);
        row("flag yes", Flag, text("yes"), 1);
        row("flag True after blanks", Flag, text("\t True"), 1);
        row("flag false", Flag, text("false"), 0);
        row("flag on is not a flag", Flag, text("on"), 0);
        row("flag real 0.25", Flag, QVariant(0.25), 1);
        row("flag array", Flag, QVariant(QVariantList{u"1"_s}), 0);
        row("int not numeric", Integer, text("x"), 0);
        row("int leading number", Integer, text(" 12abc"), 12);
        row("int fraction dropped", Integer, text("1700000000.999999"), 1700000000);
        row("int saturates high", Integer, text("99999999999"), std::numeric_limits<int>::max());
        row("int saturates low", Integer, text("-99999999999"), std::numeric_limits<int>::min());
        row("int real truncates", Integer, QVariant(-2.9), -2);
        row("int missing", Integer, QVariant(), 0);
        row("real negative", Real, text("-0.500000"), -0.5);
        row("real blanks and plus", Real, text("  +3.5"), 3.5);
        row("real trailing garbage", Real, text("114.1588abc"), 114.1588);
        row("real exponent", Real, text("1.5e2"), 150.0);
        row("real exponent without digits", Real, text("2e"), 2.0);
        row("real point first", Real, text(".25"), 0.25);
        row("real not a number", Real, text("north"), 0.0);
        row("real lone sign", Real, text("-"), 0.0);
        row("real tiny underflows to zero", Real, text("1e-400"), 0.0);
        row("real boolean", Real, QVariant(true), 1.0);
        row("real missing", Real, QVariant(), 0.0);
    }
    void reads()
    {
        QFETCH(int, kind);
        QFETCH(QVariant, stored);
        QFETCH(double, expected);
        if (kind == Flag)
            QCOMPARE(StoredValue::boolValue(stored), expected != 0);
        else if (kind == Integer)
            QCOMPARE(StoredValue::intValue(stored), int(expected));
        else
            QCOMPARE(StoredValue::doubleValue(stored), expected);
    }

    void formats()
    {
        // not the user's locale: a German desktop must still write points
        QLocale::setDefault(QLocale(QLocale::German));
        QCOMPARE(StoredValue::formatReal(1.25), u"1.250000"_s);
        QLocale::setDefault(QLocale::c());
    }
};

TREKMIME_TEST(PropertyListTest)
TREKMIME_TEST(AtomicReplaceTest)
TREKMIME_TEST(StoredValueTest)
#include "PropertyListTest.moc"

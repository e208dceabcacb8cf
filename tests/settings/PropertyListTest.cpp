#include "SettingsFiles.h"
#include "TestMain.h"

#include "settings/PropertyList.h"
#include "settings/StoredValue.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTimeZone>

#include <cmath>
#include <cstring>
#include <limits>

using SettingsFiles::toBinary;

namespace {

// Random values of every kind, nested a few levels, with the text and
// numbers most likely to be written differently: markup characters, every
// control character, non-BMP text, reals from raw bits, data long enough to
// wrap at each indent.
class RandomRecord
{
public:
    explicit RandomRecord(quint32 seed) : m_random(seed) {}

    // A container whose last entry leads `levels` deeper, so text and data
    // are written at every indent; the other entries are random values.
    QVariant spine(int levels)
    {
        QVariant inner = levels > 0 ? spine(levels - 1) : value(0);
        if (m_random.bounded(2) == 0) {
            QVariantList list;
            for (int i = m_random.bounded(4); i > 0; --i)
                list.append(value(levels));
            list.append(inner);
            return list;
        }
        QVariantMap map;
        for (int i = m_random.bounded(4); i > 0; --i)
            map.insert(text(), value(levels));
        map.insert(u"~"_s, inner);
        return map;
    }

    QVariant value(int levels)
    {
        switch (m_random.bounded(levels > 1 ? 8 : 6)) {
        case 0:
            return text();
        case 1:
            return qint64(m_random.generate64());
        case 2:
            return real();
        case 3:
            return m_random.bounded(2) == 1;
        case 4: {
            QByteArray bytes(m_random.bounded(200), Qt::Uninitialized);
            for (char &byte : bytes)
                byte = char(m_random.bounded(256));
            return bytes;
        }
        case 5:
            // within the 32-bit seconds the binary reader keeps
            return QDateTime::fromSecsSinceEpoch(
                978307200 + qint64(m_random.bounded(4'000'000'000u)) - 2'000'000'000,
                QTimeZone::utc());
        case 6:
            return QVariantList{value(0), value(0)};
        default:
            return QVariantMap{{text(), value(0)}};
        }
    }

private:
    QString text()
    {
        static const char16_t pieces[] = u"ab &<>\"'\t\n\r\x01\x1f\xfffe\xe9\x4e2d";
        QString out;
        for (int i = m_random.bounded(8); i > 0; --i) {
            if (m_random.bounded(6) == 0)
                out += QString::fromUcs4(U"\U0001F30D", 1);
            else
                out += QChar(pieces[m_random.bounded(int(std::size(pieces)) - 1)]);
        }
        return out;
    }

    double real()
    {
        const quint64 bits = m_random.generate64();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        switch (m_random.bounded(4)) {
        case 0:
            return std::isnan(value) ? 1.5 : value;
        case 1:
            return double(qint32(m_random.generate())) / 1e6;
        case 2:
            return m_random.bounded(2) ? std::numeric_limits<double>::infinity() : -0.0;
        default:
            return double(qint64(m_random.generate64() >> m_random.bounded(64)));
        }
    }

    QRandomGenerator m_random;
};

// What a written text reads back as: characters XML cannot hold become U+FFFD.
QVariant cleaned(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::QString: {
        QString text = value.toString();
        for (QChar &c : text) {
            const char16_t u = c.unicode();
            if ((u < 0x20 && u != '\t' && u != '\n' && u != '\r') || u == 0xFFFE)
                c = QChar::ReplacementCharacter;
        }
        return text;
    }
    case QMetaType::QVariantList: {
        QVariantList list;
        for (const QVariant &item : value.toList())
            list.append(cleaned(item));
        return list;
    }
    case QMetaType::QVariantMap: {
        QVariantMap map;
        const QVariantMap in = value.toMap();
        for (auto it = in.cbegin(); it != in.cend(); ++it)
            map.insert(cleaned(it.key()).toString(), cleaned(it.value()));
        return map;
    }
    default:
        return value;
    }
}

} // namespace

class PropertyListTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const char *name) const { return m_dir.filePath(QString::fromLatin1(name)); }

private slots:
    // The writer matches libplist byte for byte, and both readers give back
    // the values written: from the XML, and from libplist's binary form of it.
    void randomRecordsMatchLibplist()
    {
        // a key set to nothing (an address label without text) is not written
        QCOMPARE(PropertyList::toXml(QVariantMap{{u"nothing"_s, QVariant()}}),
                 PropertyList::toXml(QVariantMap()));
        for (quint32 seed = 1; seed <= 400; ++seed) {
            const QVariant root = RandomRecord(seed).spine(int(seed % 12));
            const QByteArray xml = PropertyList::toXml(root);
            const QByteArray reference = SettingsFiles::throughLibplist(xml);
            QVERIFY2(xml == reference, qPrintable(u"seed %1:\n%2\nlibplist:\n%3"_s.arg(seed).arg(
                                           QString::fromUtf8(xml), QString::fromUtf8(reference))));
            QVERIFY2(PropertyList::fromData(xml) == cleaned(root),
                     qPrintable(u"seed %1"_s.arg(seed)));
            // libplist's binary form of the same document reads as the same values
            QVERIFY2(PropertyList::fromData(SettingsFiles::toBinary(xml)) == cleaned(root),
                     qPrintable(u"seed %1, binary"_s.arg(seed)));
        }
    }

    // Documents other writers make, or people edit by hand, read as libplist
    // reads them (what it writes for them is what we write for ours), in
    // either form.
    void oddDocumentsReadAsLibplistReadsThem_data()
    {
        QTest::addColumn<QByteArray>("xml");
        const auto row = [](const char *name, const char *body) {
            QTest::newRow(name) << QByteArray(body);
        };
        row("no wrapper, comment, processing instruction",
            "<?xml version=\"1.0\"?><!-- a > b --><dict><key>a</key><true/></dict>");
        row("doctype with an internal subset",
            "<!DOCTYPE plist [ <!ENTITY x \"]\"> ]><plist><array><false/></array></plist>");
        row("entities, references and CDATA",
            "<array><string>a&amp;&lt;&gt;&quot;&apos;&#65;&#x4E2D;&#x1F30D;<![CDATA[<&amp;>]]>"
            "<!-- c -->z</string><key>&lt;k</key></array>");
        row("integers in every base and sign",
            "<array><integer>\f12 </integer><integer>+5</integer><integer>-0x10</integer>"
            "<integer>010</integer><integer>1a</integer><integer/><integer>-  5</integer>"
            "<integer>-9223372036854775808</integer></array>");
        row("reals as strtod reads them",
            "<array><real>\v\f1.5 </real><real>+2.5x</real><real>1e400</real><real>-1e-400</real>"
            "<real>abc</real><real>0x1p3</real><real>-infinity</real><real/><real>5e-324</real>"
            "</array>");
        row("dates with and without time",
            "<array><date>2024-02-29T12:30:15Z</date><date>2024-2-9T1:2:3Z</date>"
            "<date>2024-02-29T12:30</date><date>2024-02-29T12:30:15Z   </date><date/></array>");
        row("data with breaks and padding",
            "<array><data>AAE\n C</data><data>AAE=AAE=</data><data>AAEC====</data>"
            "<data>QUI</data><data>!!!!</data><data/></array>");
        row("keys: repeated, in an array, twice in a row, left over",
            "<dict><key>a</key><true/><key>a</key><false/><key>b</key><key>c</key>"
            "<key>d</key><array><key>k</key></array><key>e</key></dict>");
        row("attributes and spaces in tags",
            "<plist version=\"1.0\"><dict ><key a=\"/>\">x</key><true/></dict ></plist>");
        row("content ignored in booleans, rest after the root", "<array><true>x</true></array><z");
        row("refused: unknown entity", "<array><string>&bogus;</string></array>");
        row("refused: bare ampersand", "<array><string>a&b</string></array>");
        row("refused: element in text", "<array><string>a<b>c</b></string></array>");
        row("refused: value without key", "<dict><string>x</string></dict>");
        row("refused: unclosed", "<array><true/>");
        row("refused: mismatched end", "<array><true/></dict>");
        row("refused: empty plist", "<plist version=\"1.0\"/>");
        row("refused: text between values", "<array>x<true/></array>");
        row("refused: unknown element", "<array><float>1</float></array>");
        row("refused: null character reference", "<array><string>&#0;</string></array>");
    }
    void oddDocumentsReadAsLibplistReadsThem()
    {
        QFETCH(QByteArray, xml);
        const QVariant ours = PropertyList::fromData(xml);
        const QByteArray theirs = SettingsFiles::throughLibplist(xml);
        if (theirs.isEmpty()) {
            QVERIFY2(!ours.isValid(), qPrintable(ours.toString()));
            return;
        }
        QCOMPARE(PropertyList::toXml(ours), theirs);
        QCOMPARE(PropertyList::toXml(PropertyList::fromData(SettingsFiles::toBinary(xml))), theirs);
    }

    // What libplist's own API cannot hand over: integers above 2^63 - 1 and
    // dates beyond 32-bit seconds. They read, in either form, and write back
    // as they were.
    void foreignValuesSurviveARoundTrip()
    {
        const QByteArray body =
            "<array>\n\t<integer>18446744073709551615</integer>\n"
            "\t<integer>9223372036854775808</integer>\n\t<integer>-9223372036854775808</integer>\n"
            "\t<date>1900-01-01T00:00:00Z</date>\n\t<date>2100-12-31T23:59:59Z</date>\n"
            "\t<date>9999-12-31T23:59:59Z</date>\n</array>\n";
        const QByteArray xml = PropertyList::toXml(QVariantList()).replace("<array/>\n", body);
        const QVariant read = PropertyList::fromData(xml);
        QCOMPARE(read.toList().value(0), QVariant::fromValue(std::numeric_limits<quint64>::max()));
        QCOMPARE(read.toList().value(3).toDateTime(),
                 QDateTime(QDate(1900, 1, 1), QTime(0, 0), QTimeZone::utc()));
        QCOMPARE(PropertyList::toXml(read), xml);
        QCOMPARE(PropertyList::fromData(SettingsFiles::toBinary(xml)), read);
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

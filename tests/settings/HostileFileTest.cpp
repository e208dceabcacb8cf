#include "FileBytes.h"
#include "TestMain.h"

#include "settings/PreferenceFiles.h"
#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

void appendBig(QByteArray &out, quint64 value, int size)
{
    for (int shift = (size - 1) * 8; shift >= 0; shift -= 8)
        out.append(char((value >> shift) & 0xFF));
}

// A binary property list whose object i is an array of the objects that
// `children[i]` names (object 0 the root), with four-byte references.
QByteArray binaryArrays(const QList<QList<quint32>> &children)
{
    QByteArray out("bplist00");
    QList<quint64> offsets;
    for (const QList<quint32> &refs : children) {
        offsets.append(quint64(out.size()));
        if (refs.size() < 15) {
            out.append(char(0xA0 | refs.size()));
        } else {
            out.append(char(0xAF)).append(char(0x12));
            appendBig(out, quint64(refs.size()), 4);
        }
        for (quint32 ref : refs)
            appendBig(out, ref, 4);
    }
    const quint64 tableAt = quint64(out.size());
    for (quint64 offset : offsets)
        appendBig(out, offset, 8);
    out.append(6, '\0').append(char(8)).append(char(4));
    appendBig(out, quint64(children.size()), 8);
    appendBig(out, 0, 8);
    appendBig(out, tableAt, 8);
    return out;
}

// The root names a chain of 40 arrays, then a chain of 30 whose last names
// the first chain again: shared, and nested 71 deep through that path.
QByteArray sharedTooDeep()
{
    QList<QList<quint32>> children(71);
    children[0] = {1, 41};
    for (quint32 i = 1; i < 70; ++i) {
        if (i != 40)
            children[i] = {i + 1};
    }
    children[70] = {1};
    return binaryArrays(children);
}

// Each array names the next `fanOut` times, `depth` arrays in all.
QByteArray binaryChain(int depth, int fanOut)
{
    QList<QList<quint32>> children(depth);
    for (int i = 0; i + 1 < depth; ++i)
        children[i] = QList<quint32>(fanOut, quint32(i + 1));
    return binaryArrays(children);
}

QByteArray xmlNesting(int depth)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" +
           QByteArray("<array>").repeated(depth) + QByteArray("</array>").repeated(depth) +
           "</plist>\n";
}

} // namespace

// Files a careless or hostile program could leave in the settings folder:
// each must read as unreadable in well under a second, be reported once,
// and be left exactly as it was.
class HostileFileTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void nestingUpToTheLimitStillReads()
    {
        const QString file = m_dir.filePath(u"deep.plist"_s);
        // shared references within the limit are fine too
        for (const QByteArray &content : {binaryChain(64, 1), binaryChain(12, 3), xmlNesting(64)}) {
            writeBytes(file, content);
            QCOMPARE(PropertyList::load(file).problem, QString());
            QVERIFY(PropertyList::load(file).root.isValid());
        }
        for (const QByteArray &content : {binaryChain(65, 1), xmlNesting(65)}) {
            writeBytes(file, content);
            QCOMPARE(PropertyList::load(file).problem, u"nested more than 64 levels deep"_s);
        }
    }

    void refusedQuicklyAndLeftAsTheyAre_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("link"); // what the file is instead, if not bytes
        QTest::addColumn<QString>("problem");
        addRow("shared references", binaryChain(30, 2), QString(), u"expands to more than"_s);
        addRow("deep binary", binaryChain(200000, 1), QString(), u"nested more than"_s);
        addRow("deep through a shared child", sharedTooDeep(), QString(), u"nested more than"_s);
        addRow("cycle", binaryArrays({{1}, {0}}), QString(), u"nested more than"_s);
        addRow("deep xml", xmlNesting(100000), QString(), u"nested more than"_s);
        // '>' and '/' inside a quoted value do not end or close an element
        addRow("deep xml, quoted '/>'",
               QByteArray("<plist>") + QByteArray("<array a=\"/>\">").repeated(1000), QString(),
               u"nested more than"_s);
        addRow("bad object index", binaryArrays({{7}}), QString(), u"not a well-formed"_s);
        addRow("named pipe", QByteArray(), u"fifo"_s, u"not a regular file"_s);
        addRow("link to a device", QByteArray(), u"/dev/zero"_s, u"not a regular file"_s);
        addRow("directory", QByteArray(), u"dir"_s, u"not a regular file"_s);
        addRow("300 MB", QByteArray(), u"huge"_s, u"larger than any settings file"_s);
    }
    void refusedQuicklyAndLeftAsTheyAre()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, link);
        QFETCH(QString, problem);
        QTemporaryDir folder;
        const PreferenceFiles files(folder.path());
        const QString file = files.masterFile();
        if (link == u"fifo")
            QCOMPARE(::mkfifo(QFile::encodeName(file).constData(), 0600), 0);
        else if (link == u"dir")
            QVERIFY(QDir().mkpath(file));
        else if (link == u"huge")
            QVERIFY(QFile(file).open(QIODevice::WriteOnly) && QFile(file).resize(300LL << 20));
        else if (!link.isEmpty())
            QVERIFY(QFile::link(link, file));
        else
            writeBytes(file, content);

        TMPreferenceUtil store{files};
        QStringList told;
        store.setUnreadableHandler(
            [&](const QString &path, const QString &why) { told.append(path + u": "_s + why); });
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(store.mode(), 0);
        QCOMPARE(store.mode(), 0);
        QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(told.size(), 1); // once, though read twice
        QVERIFY2(told.first().startsWith(file + u": "_s + problem), qPrintable(told.first()));

        QFileInfo after(file);
        if (link.isEmpty())
            QCOMPARE(bytesOf(file), content);
        else if (link == u"huge")
            QCOMPARE(after.size(), 300LL << 20);
        else
            QVERIFY(after.isSymLink() || !after.isFile());
    }

    // The map coming to rest puts back what was read, and nothing was; the
    // file is reported again only after it was fine in between.
    void unreadableUntilRepaired()
    {
        const PreferenceFiles files(m_dir.path());
        TMPreferenceUtil store{files};
        int told = 0;
        store.setUnreadableHandler([&](const QString &, const QString &) { ++told; });
        writeBytes(files.locationFile(), xmlNesting(70));
        QVERIFY(!store.setLocationLatitude(22.3, 114.2));
        QCOMPARE(bytesOf(files.locationFile()), xmlNesting(70));
        writeBytes(files.masterFile(), xmlNesting(70));
        store.mode();
        QVERIFY(store.writeMode(MasterRecord::Mode(1)));
        QCOMPARE(store.mode(), 1);
        writeBytes(files.masterFile(), "not a property list");
        store.mode();
        QCOMPARE(told, 3);
    }
};

TREKMIME_TEST(HostileFileTest)
#include "HostileFileTest.moc"

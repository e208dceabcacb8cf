#include "TestMain.h"

#include "settings/PropertyList.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

#include <plist/plist.h>

namespace {
QByteArray toBinary(const QByteArray &xml)
{
    plist_t root = nullptr;
    plist_from_xml(xml.constData(), uint32_t(xml.size()), &root);
    char *bin = nullptr;
    uint32_t length = 0;
    plist_to_bin(root, &bin, &length);
    QByteArray result(bin, qsizetype(length));
    plist_to_bin_free(bin);
    plist_free(root);
    return result;
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}
} // namespace

class PropertyListTest : public QObject
{
    Q_OBJECT

private slots:
    void everyValueTypeSurvivesAWriteAndARead()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("all.plist"));
        const QDateTime when(QDate(2024, 2, 29), QTime(12, 30, 15), QTimeZone::utc());
        const QVariantMap root{
            {QStringLiteral("text"), QStringLiteral("Ünïcode & <xml> \"quotes\" 中文")},
            {QStringLiteral("real"), 22.2846809},
            {QStringLiteral("integer"), qint64(-42)},
            {QStringLiteral("big"), qint64(1) << 40},
            {QStringLiteral("yes"), true},
            {QStringLiteral("no"), false},
            {QStringLiteral("data"), QByteArray("\x00\x01\xff", 3)},
            {QStringLiteral("date"), when},
            {QStringLiteral("list"), QVariantList{QStringLiteral("a"), 1.5, QVariantMap()}},
            {QStringLiteral("empty"), QVariantMap()},
        };
        QVERIFY(PropertyList::write(path, root));
        const QVariantMap back = PropertyList::readDictionary(path);
        QCOMPARE(back.keys(), root.keys());
        QCOMPARE(back.value(QStringLiteral("text")), root.value(QStringLiteral("text")));
        QCOMPARE(back.value(QStringLiteral("real")).toDouble(), 22.2846809); // no rounding
        QCOMPARE(back.value(QStringLiteral("real")).metaType().id(), int(QMetaType::Double));
        QCOMPARE(back.value(QStringLiteral("integer")).toLongLong(), -42);
        QCOMPARE(back.value(QStringLiteral("big")).toLongLong(), qint64(1) << 40);
        QCOMPARE(back.value(QStringLiteral("yes")).metaType().id(), int(QMetaType::Bool));
        QCOMPARE(back.value(QStringLiteral("yes")).toBool(), true);
        QCOMPARE(back.value(QStringLiteral("no")).toBool(), false);
        QCOMPARE(back.value(QStringLiteral("data")).toByteArray(), QByteArray("\x00\x01\xff", 3));
        QCOMPARE(back.value(QStringLiteral("date")).toDateTime(), when);
        QCOMPARE(back.value(QStringLiteral("list")).toList().size(), 3);
        QCOMPARE(back.value(QStringLiteral("empty")).toMap(), QVariantMap());
    }

    void missingValuesAreLeftOut()
    {
        // a key set to nothing (an address label without text) is not written
        const QByteArray xml = PropertyList::toXml(QVariantMap{
            {QStringLiteral("s"), QVariant()}, {QStringLiteral("e"), QStringLiteral("x")}});
        QVERIFY(!xml.contains("<key>s</key>"));
        QVERIFY(xml.contains("<key>e</key>"));
    }

    void binaryFilesReadLikeXml()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("bin.plist"));
        const QVariantMap root{
            {QStringLiteral("enable"), QStringLiteral("1")},
            {QStringLiteral("points"), QVariantList{QVariantMap{{QStringLiteral("lat"), 1.25},
                                                                {QStringLiteral("lng"), -2.5}}}}};
        const QByteArray binary = toBinary(PropertyList::toXml(root));
        QVERIFY(binary.startsWith("bplist00"));
        writeFile(path, binary);
        QCOMPARE(PropertyList::readDictionary(path), root);
    }

    void unreadableInputReadsAsNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("not xml") << QByteArray("hello world");
        QTest::newRow("truncated xml")
            << PropertyList::toXml(QVariantMap{{QStringLiteral("a"), 1}}).left(120);
        QTest::newRow("truncated binary")
            << toBinary(PropertyList::toXml(QVariantMap{{QStringLiteral("a"), 1}})).left(12);
    }
    void unreadableInputReadsAsNothing()
    {
        QFETCH(QByteArray, content);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("bad.plist"));
        writeFile(path, content);
        QVERIFY(!PropertyList::read(path).isValid() ||
                PropertyList::readDictionary(path).isEmpty());
        QCOMPARE(PropertyList::readDictionary(path), QVariantMap());
        QCOMPARE(PropertyList::readArray(path), QVariantList());
        QVERIFY(!PropertyList::read(dir.filePath(QStringLiteral("missing.plist"))).isValid());
    }

    void aRootOfTheOtherKindReadsAsEmpty()
    {
        QTemporaryDir dir;
        const QString dict = dir.filePath(QStringLiteral("dict.plist"));
        const QString array = dir.filePath(QStringLiteral("array.plist"));
        QVERIFY(PropertyList::write(dict, QVariantMap{{QStringLiteral("a"), QStringLiteral("b")}}));
        QVERIFY(PropertyList::write(array, QVariantList{QStringLiteral("a")}));
        QCOMPARE(PropertyList::readArray(dict), QVariantList());
        QCOMPARE(PropertyList::readDictionary(array), QVariantMap());
    }

    void failedWritesLeaveTheOldFileAndNoLitter()
    {
        QTemporaryDir dir;
        // the target is a directory: nothing can replace it
        const QString blocked = dir.filePath(QStringLiteral("blocked.plist"));
        QVERIFY(QDir().mkdir(blocked));
        QVERIFY(!PropertyList::write(blocked, QVariantMap{{QStringLiteral("a"), 1}}));
        // a folder that does not exist
        QVERIFY(
            !PropertyList::write(dir.filePath(QStringLiteral("nowhere/x.plist")), QVariantMap()));
        // a read-only folder keeps the file it has (root may write anyway)
        const QString sub = dir.filePath(QStringLiteral("ro"));
        QVERIFY(QDir().mkdir(sub));
        const QString kept = sub + QStringLiteral("/kept.plist");
        QVERIFY(
            PropertyList::write(kept, QVariantMap{{QStringLiteral("v"), QStringLiteral("old")}}));
        QFile::setPermissions(sub, QFile::ReadOwner | QFile::ExeOwner);
        const bool replaced =
            PropertyList::write(kept, QVariantMap{{QStringLiteral("v"), QStringLiteral("new")}});
        const QString expected = replaced ? QStringLiteral("new") : QStringLiteral("old");
        QCOMPARE(PropertyList::readDictionary(kept).value(QStringLiteral("v")).toString(),
                 expected);
        QFile::setPermissions(sub, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(QDir(sub).entryList(QDir::Files), QStringList{QStringLiteral("kept.plist")});
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList());
    }
};

TREKMIME_TEST(PropertyListTest)
#include "PropertyListTest.moc"

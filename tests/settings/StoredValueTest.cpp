#include "TestMain.h"

#include "settings/StoredValue.h"

#include <QTest>

#include <limits>

// How flags, integers and coordinates read back from whatever a settings
// file holds: the hooking component and older versions wrote texts, but
// users and other tools leave other types behind.
class StoredValueTest : public QObject
{
    Q_OBJECT

private slots:
    void boolValue_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<bool>("expected");
        QTest::newRow("one") << QVariant(QStringLiteral("1")) << true;
        QTest::newRow("zero") << QVariant(QStringLiteral("0")) << false;
        QTest::newRow("leading zeros then digit") << QVariant(QStringLiteral("0007")) << true;
        QTest::newRow("all zeros") << QVariant(QStringLiteral("000")) << false;
        QTest::newRow("white space and sign") << QVariant(QStringLiteral("  -1")) << true;
        QTest::newRow("plus sign and zero") << QVariant(QStringLiteral("+0")) << false;
        QTest::newRow("YES") << QVariant(QStringLiteral("YES")) << true;
        QTest::newRow("yes") << QVariant(QStringLiteral("yes")) << true;
        QTest::newRow("true") << QVariant(QStringLiteral("true")) << true;
        QTest::newRow("True after blanks") << QVariant(QStringLiteral("\t True")) << true;
        QTest::newRow("no") << QVariant(QStringLiteral("no")) << false;
        QTest::newRow("false") << QVariant(QStringLiteral("false")) << false;
        QTest::newRow("on is not a flag") << QVariant(QStringLiteral("on")) << false;
        QTest::newRow("decimal zero point five") << QVariant(QStringLiteral("0.5")) << false;
        QTest::newRow("empty text") << QVariant(QString()) << false;
        QTest::newRow("missing") << QVariant() << false;
        QTest::newRow("boolean true") << QVariant(true) << true;
        QTest::newRow("boolean false") << QVariant(false) << false;
        QTest::newRow("integer 2") << QVariant(qint64(2)) << true;
        QTest::newRow("integer 0") << QVariant(qint64(0)) << false;
        QTest::newRow("real 0.25") << QVariant(0.25) << true;
        QTest::newRow("array") << QVariant(QVariantList{QStringLiteral("1")}) << false;
    }
    void boolValue()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, expected);
        QCOMPARE(StoredValue::boolValue(stored), expected);
    }

    void intValue_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("expected");
        QTest::newRow("mode 1") << QVariant(QStringLiteral("1")) << 1;
        QTest::newRow("mode 2") << QVariant(QStringLiteral("2")) << 2;
        QTest::newRow("not numeric") << QVariant(QStringLiteral("x")) << 0;
        QTest::newRow("leading number") << QVariant(QStringLiteral(" 12abc")) << 12;
        QTest::newRow("negative") << QVariant(QStringLiteral("-7")) << -7;
        QTest::newRow("fraction dropped")
            << QVariant(QStringLiteral("1700000000.999999")) << 1700000000;
        QTest::newRow("saturates high")
            << QVariant(QStringLiteral("99999999999")) << std::numeric_limits<int>::max();
        QTest::newRow("saturates low")
            << QVariant(QStringLiteral("-99999999999")) << std::numeric_limits<int>::min();
        QTest::newRow("real truncates") << QVariant(-2.9) << -2;
        QTest::newRow("integer") << QVariant(qint64(42)) << 42;
        QTest::newRow("missing") << QVariant() << 0;
    }
    void intValue()
    {
        QFETCH(QVariant, stored);
        QFETCH(int, expected);
        QCOMPARE(StoredValue::intValue(stored), expected);
    }

    void doubleValue_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<double>("expected");
        QTest::newRow("six decimals") << QVariant(QStringLiteral("22.284681")) << 22.284681;
        QTest::newRow("negative") << QVariant(QStringLiteral("-0.500000")) << -0.5;
        QTest::newRow("blanks and plus") << QVariant(QStringLiteral("  +3.5")) << 3.5;
        QTest::newRow("trailing garbage") << QVariant(QStringLiteral("114.1588abc")) << 114.1588;
        QTest::newRow("exponent") << QVariant(QStringLiteral("1.5e2")) << 150.0;
        QTest::newRow("exponent without digits") << QVariant(QStringLiteral("2e")) << 2.0;
        QTest::newRow("point first") << QVariant(QStringLiteral(".25")) << 0.25;
        QTest::newRow("comma is not a point") << QVariant(QStringLiteral("1,5")) << 1.0;
        QTest::newRow("not a number") << QVariant(QStringLiteral("north")) << 0.0;
        QTest::newRow("lone sign") << QVariant(QStringLiteral("-")) << 0.0;
        QTest::newRow("tiny underflows to zero") << QVariant(QStringLiteral("1e-400")) << 0.0;
        QTest::newRow("real") << QVariant(48.85) << 48.85;
        QTest::newRow("boolean") << QVariant(true) << 1.0;
        QTest::newRow("missing") << QVariant() << 0.0;
    }
    void doubleValue()
    {
        QFETCH(QVariant, stored);
        QFETCH(double, expected);
        QCOMPARE(StoredValue::doubleValue(stored), expected);
    }

    void formats()
    {
        QCOMPARE(StoredValue::formatFlag(true), QStringLiteral("1"));
        QCOMPARE(StoredValue::formatFlag(false), QStringLiteral("0"));
        QCOMPARE(StoredValue::formatReal(22.2846809), QStringLiteral("22.284681"));
        QCOMPARE(StoredValue::formatReal(114.1588), QStringLiteral("114.158800"));
        QCOMPARE(StoredValue::formatReal(-0.5), QStringLiteral("-0.500000"));
        // not the user's locale: a German desktop must still write points
        QLocale::setDefault(QLocale(QLocale::German));
        QCOMPARE(StoredValue::formatReal(1.25), QStringLiteral("1.250000"));
        QLocale::setDefault(QLocale::c());
    }
};

TREKMIME_TEST(StoredValueTest)
#include "StoredValueTest.moc"

#include "TestMain.h"

#include "modes/ModeChange.h"
#include "settings/PropertyList.h"
#include "settings/TMPreferenceUtil.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {
QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

// The one mode change behind both mode buttons and trekmime-ctl: a refusal
// leaves the master file exactly as it was; a change writes it afresh.
class ModeChangeTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<TMPreferenceUtil> m_store;

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_store = std::make_unique<TMPreferenceUtil>(PreferenceFiles(m_dir->path()));
    }

    void refusalNeverWritesTheMasterFile_data()
    {
        QTest::addColumn<QString>("storedMode");
        QTest::addColumn<QString>("routeEnable");
        QTest::addColumn<QString>("locationEnable");
        QTest::addColumn<QString>("button"); // route, location, or stored: the stored mode's
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<QString>("newMode"); // when not refused
        const QString routeBusy =
            QStringLiteral("Trekmime is working,please turn off the Trekmime first!");
        const QString spotBusy =
            QStringLiteral("Spotmime is working,please turn off the Spotmime first!");
        QTest::newRow("route on") << "0"
                                  << "1"
                                  << "0"
                                  << "route" << routeBusy << "";
        QTest::newRow("route off, location on") << "0"
                                                << "0"
                                                << "1"
                                                << "route" << QString() << "1";
        QTest::newRow("location on") << "1"
                                     << "0"
                                     << "1"
                                     << "location" << spotBusy << "";
        QTest::newRow("location off, route on") << "1"
                                                << "1"
                                                << "0"
                                                << "location" << QString() << "0";
        QTest::newRow("stored route mode, route on") << "0"
                                                     << "1"
                                                     << "0"
                                                     << "stored" << routeBusy << "";
        QTest::newRow("stored mode 2 asks the location file") << "2"
                                                              << "1"
                                                              << "1"
                                                              << "stored" << spotBusy << "";
        QTest::newRow("stored mode x is the route mode") << "x"
                                                         << "0"
                                                         << "1"
                                                         << "stored" << QString() << "1";
    }
    void refusalNeverWritesTheMasterFile()
    {
        QFETCH(QString, storedMode);
        QFETCH(QString, routeEnable);
        QFETCH(QString, locationEnable);
        QFETCH(QString, button);
        QFETCH(QString, refusal);
        QFETCH(QString, newMode);
        PropertyList::write(m_store->files().masterFile(),
                            QVariantMap{{QStringLiteral("mode"), storedMode},
                                        {QStringLiteral("theme"), QStringLiteral("dark")}});
        const QByteArray before = bytesOf(m_store->files().masterFile());
        m_store->writeRoutePreference(
            RouteRecord::fromPropertyList(QVariantMap{{QStringLiteral("enable"), routeEnable}}));
        m_store->writeLocationPreference(LocationRecord::fromPropertyList(
            QVariantMap{{QStringLiteral("enable"), locationEnable}}));

        ModeChange change(*m_store);
        const ModeChange::Result result =
            button == QLatin1String("route")      ? change.fromRouteMode(m_store->routePreference())
            : button == QLatin1String("location") ? change.fromLocationMode()
                                                  : change.fromStoredMode();

        QCOMPARE(result.refusal, refusal);
        QCOMPARE(result.refused(), !refusal.isEmpty());
        if (result.refused()) {
            QVERIFY(!result.written);
            QCOMPARE(bytesOf(m_store->files().masterFile()), before);
        } else {
            QVERIFY(result.written);
            QCOMPARE(QString::number(result.mode), newMode);
            // a fresh one-key dictionary: the other key is gone
            QCOMPARE(PropertyList::readDictionary(m_store->files().masterFile()),
                     (QVariantMap{{QStringLiteral("mode"), newMode}}));
        }
    }
};

TREKMIME_TEST(ModeChangeTest)
#include "ModeChangeTest.moc"

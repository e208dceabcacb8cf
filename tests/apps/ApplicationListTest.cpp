#include "TestMain.h"
#include "TestServices.h"

#include "applications/ApplicationList.h"
#include "fakes/FakeApplicationRegistry.h"
#include "settings/PropertyList.h"

namespace {
QStringList bundlesOf(const QList<ApplicationModel> &models)
{
    QStringList bundles;
    for (const ApplicationModel &model : models)
        bundles.append(model.appBundle());
    return bundles;
}
QStringList ids(const char *names) // "a b c": org.example.a, org.example.b, ...
{
    QStringList result;
    for (const QString &name : QString::fromLatin1(names).split(u' ', Qt::SkipEmptyParts))
        result.append(name.contains(u'.') ? name : u"org.example."_s + name);
    return result;
}
} // namespace

// Which applications the whitelist offers, from a fake registry and a hide list written here.
class ApplicationListTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    FakeApplicationRegistry m_registry;

    QList<ApplicationModel> models(const QStringList &hideList = {})
    {
        QVariantMap keys; // values are never looked at
        for (const QString &key : hideList)
            keys.insert(key, false);
        if (!hideList.isEmpty())
            PropertyList::write(m_world->files().hideListFile(), keys);
        return ApplicationList::installedAppModel(m_registry, m_world->preferences());
    }

private slots:
    void init()
    {
        m_world = std::make_unique<TestServices>();
        m_registry = FakeApplicationRegistry();
        m_registry.addShown(ids("org.gnome.Maps com.apple.Maps Chat"));
        for (const QString &hidden : ids("Hidden AHidden"))
            m_registry.add({hidden, hidden.section(u'.', -1), {}, false});
        m_registry.add({u"org.example.Nameless"_s, QString(), {}, false});
    }

    void hideListCompletesThePlatformsList_data()
    {
        QTest::addColumn<QStringList>("hideList");
        QTest::addColumn<QStringList>("expected");
        addRow("no hide list", QStringList(), ids("org.gnome.Maps com.apple.Maps Chat"));
        addRow("installed hidden ones appended, in the file's order", ids("Hidden AHidden"),
               ids("org.gnome.Maps com.apple.Maps Chat AHidden Hidden"));
        addRow("already listed, not installed, no name: skipped", ids("Chat Gone Nameless Hidden"),
               ids("org.gnome.Maps com.apple.Maps Chat Hidden"));
    }
    void hideListCompletesThePlatformsList()
    {
        QFETCH(QStringList, hideList);
        QFETCH(QStringList, expected);
        QCOMPARE(bundlesOf(models(hideList)), expected);
    }

    void recordsAreFilledAfresh()
    {
        const QList<ApplicationModel> list = models(ids("Hidden"));
        const ApplicationModel &chat = list.at(2);
        QCOMPARE(chat.appName(), u"Chat"_s);
        QVERIFY(!chat.appIcon().isNull());
        QCOMPARE(chat.appIconBig(), chat.appIcon());
        QVERIFY(list.at(3).appIcon().isNull()); // a hidden one without an icon
        for (const ApplicationModel &model : list)
            QCOMPARE(m_registry.iconQueries.value(model.appBundle()), 2);
        // nothing is kept: a second list asks everything again
        models();
        QCOMPARE(m_registry.iconQueries.value(u"org.example.Chat"_s), 4);
        QCOMPARE(m_registry.identifierQueries, 2);
        // duplicates and order are kept, and there is no fallback to the identifier
        const QList<ApplicationModel> given =
            ApplicationModel::appModelListWithAppList(m_registry, ids("Chat Gone Chat"));
        QCOMPARE(bundlesOf(given), ids("Chat Gone Chat"));
        QVERIFY(given.at(1).appName().isNull());
    }

    void userListRunningAndProxies()
    {
        m_registry.addShown(ids("com.applemaps com.Apple.Maps"));
        QCOMPARE(
            bundlesOf(ApplicationList::installedUserAppModel(m_registry, m_world->preferences())),
            ids("org.gnome.Maps Chat com.applemaps com.Apple.Maps"));
        // the running ones; proxies for hidden services are left out
        m_registry.running = {u"org.example.Chat"_s, u"org.example.Gone"_s};
        QCOMPARE(ApplicationList::currentRunningAppBundle(m_registry), ids("Chat"));
        QCOMPARE(
            ApplicationList::identifierArrayFromProxyArray({{u"com.apple.springboard"_s},
                                                            {u"org.gnome.Maps"_s},
                                                            {u"com.apple.StoreDemoViewService"_s},
                                                            {u"com.apple.Springboard"_s}}),
            ids("org.gnome.Maps com.apple.Springboard"));
    }
};

TREKMIME_TEST(ApplicationListTest)
#include "ApplicationListTest.moc"

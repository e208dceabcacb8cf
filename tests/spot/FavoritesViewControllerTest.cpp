#include "FileBytes.h"
#include "GpxDocument.h"
#include "SpotWorld.h"
#include "TestMain.h"

#include "shell/ScreenNeeds.h"

#include <QAccessible>
#include <QApplication>
#include <QTemporaryDir>

namespace {

// entries that are not places, keys missing, values that are not numbers
QVariantList oddFile()
{
    return {place(u"Home"_s, u"22.280000"_s, u"114.160000"_s),
            u"just a string"_s,
            QVariantMap{{u"latitude"_s, u"1.0"_s}},
            place(u"Odd"_s, u"north"_s, u"east"_s),
            QVariantList{1, 2},
            QVariantMap{{u"name"_s, 42}, {u"latitude"_s, 3.5}, {u"longitude"_s, qint64(7)}}};
}

struct CountingDelegate : FavoritesDelegate
{
    int selected = 0;
    void favoritesDidSelected() override { ++selected; }
};

} // namespace

class FavoritesViewControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    std::unique_ptr<QWidget> m_window;

    FavoritesViewController *open(const QVariant &file)
    {
        setModalAnimationsEnabled(false);
        if (file.isValid())
            SpotWorld::writeFavorites(*m_world, file);
        m_window = std::make_unique<QWidget>();
        m_window->resize(390, 844);
        auto *list = new FavoritesViewController(ScreenNeeds::favorites(m_world->services()));
        presentViewController(m_window.get(), list, ModalTransition::CrossDissolve);
        m_window->show();
        return list;
    }
    static QStringList rows(FavoritesViewController *list)
    {
        QStringList texts;
        for (int i = 0; i < list->tableView()->count(); ++i)
            texts << list->tableView()->item(i)->text();
        return texts;
    }
    static QPushButton *editButton(FavoritesViewController *list)
    {
        return list->findChild<QPushButton *>(u"editButton"_s);
    }

private slots:
    void init() { m_world = std::make_unique<TestServices>(); }
    void cleanup() { m_window.reset(), m_world.reset(); }

    void load_data()
    {
        QTest::addColumn<QVariant>("file");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<bool>("editable");
        addRow("no file", QVariant(), QStringList{}, false);
        addRow("a dictionary, not a list", QVariant(place(u"x"_s)), QStringList{}, false);
        addRow("file order", QVariant(QVariantList{place(u"B first"_s), place(u"A second"_s)}),
               QStringList{u"B first"_s, u"A second"_s}, true);
        const QString unknown = u"Unknow"_s;
        addRow("edited by hand", QVariant(oddFile()),
               QStringList{u"Home"_s, unknown, unknown, u"Odd"_s, unknown, unknown}, true);
    }
    void load()
    {
        QFETCH(QVariant, file);
        QFETCH(QStringList, rows);
        QFETCH(bool, editable);
        FavoritesViewController *list = open(file);
        QCOMPARE(FavoritesViewControllerTest::rows(list), rows);
        QCOMPARE(editButton(list)->isEnabled(), editable);
        QVERIFY(!list->tableView()->grab().isNull()); // every kind of row draws
    }

    void editButtonAndDeletingTheOnlyEntry()
    {
        FavoritesViewController *list = open(QVariantList{place(u"Only"_s)});
        QPushButton *edit = editButton(list);
        QTest::mouseClick(edit, Qt::LeftButton);
        FavoritesTableView *table = list->tableView();
        QVERIFY(table->isEditing());
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                          table->deleteControlRect(0).center());
        QVERIFY(!table->grab().isNull()); // the delete control and button draw
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                          table->deleteButtonRect(0).center());
        QCOMPARE(SpotWorld::favorites(*m_world), QVariantList{});
        QTest::mouseClick(edit, Qt::LeftButton);
        QVERIFY(!table->isEditing());
    }

    void deletingByKeyKeepsEveryOtherEntry()
    {
        FavoritesViewController *list = open(oddFile());
        QVariantList expected = SpotWorld::favorites(*m_world);
        expected.removeAt(1);
        QTest::mouseClick(editButton(list), Qt::LeftButton);
        list->tableView()->setCurrentRow(1);
        QTest::keyClick(list->tableView(), Qt::Key_Delete);
        QCOMPARE(SpotWorld::favorites(*m_world), expected);
        QCOMPARE(list->tableView()->count(), expected.size());
    }

    void swipeDeletesInBrowsingMode()
    {
        FavoritesViewController *list = open(QVariantList{place(u"A"_s), place(u"B"_s)});
        FavoritesTableView *table = list->tableView();
        const QRect second = table->visualRect(table->model()->index(1, 0));
        QTest::mousePress(table->viewport(), Qt::LeftButton, {}, second.center());
        QTest::mouseMove(table->viewport(), second.center() - QPoint(60, 0));
        QTest::mouseRelease(table->viewport(), Qt::LeftButton, {}, second.center() - QPoint(90, 2));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                          table->deleteButtonRect(1).center());
        QCOMPARE(SpotWorld::favorites(*m_world), (QVariantList{place(u"A"_s)}));
    }

    void selecting()
    {
        CountingDelegate delegate;
        FavoritesViewController *list = open(oddFile());
        list->setDelegate(&delegate);
        QPointer<FavoritesViewController> alive(list);
        SpotWorld::tapRow(list->tableView(), 1); // not a place: nothing happens
        QVERIFY(!QFile::exists(m_world->files().locationFile()) && alive);
        setModalAnimationsEnabled(true); // a second tap while the list fades out does nothing
        SpotWorld::tapRow(list->tableView(), 0);
        SpotWorld::tapRow(list->tableView(), 0);
        QCOMPARE(SpotWorld::location(*m_world), (QVariantMap{{u"enable"_s, u"1"_s},
                                                             {u"latitude"_s, u"22.280000"_s},
                                                             {u"longitude"_s, u"114.160000"_s}}));
        QCOMPARE(delegate.selected, 1);
        QTRY_VERIFY(!alive);
    }

    // Import and Export, reached by Tab and named for screen readers, ask
    // the file choice; what one exports the other appends, a bad file is
    // reported and appends nothing.
    void importAndExportGpx()
    {
        FavoritesViewController *list =
            open(QVariantList{place(u"Home"_s, u"22.280000"_s, u"114.160000"_s)});
        QTemporaryDir dir;
        QString chosen = dir.filePath(u"places.gpx"_s);
        list->setFileChoice([&](QWidget *, FileChoice::Mode, const QString &) { return chosen; });
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        list->tableView()->setFocus();
        for (const char *name : {"importButton", "exportButton"}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QWidget *button = QApplication::focusWidget();
            QCOMPARE(button->objectName(), QLatin1String(name));
            QVERIFY(
                !QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name).isEmpty());
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space); // export, then import it
        QTest::mouseClick(list->findChild<QPushButton *>(u"importButton"_s), Qt::LeftButton);
        QCOMPARE(rows(list), (QStringList{u"Home"_s, u"Home"_s}));

        chosen = dir.filePath(u"bad.gpx"_s);
        QVERIFY(
            writeBytes(chosen, gpxDocument(R"(<wpt lat="1" lon="2"/><wpt lat="91" lon="2"/>)")));
        QTest::mouseClick(list->findChild<QPushButton *>(u"importButton"_s), Qt::LeftButton);
        QVERIFY(m_world->alerts.messages().last().contains(u"latitude"_s));
        QCOMPARE(rows(list), (QStringList{u"Home"_s, u"Home"_s}));
        QCOMPARE(SpotWorld::favorites(*m_world).size(), 2);
    }

    void delegateGoneBeforeAChoice()
    {
        FavoritesViewController *list = open(oddFile());
        list->setDelegate(std::make_unique<CountingDelegate>().get()); // gone at once
        list->didSelectRow(0);
        QVERIFY(QFile::exists(m_world->files().locationFile()));
    }
};

TREKMIME_TEST(FavoritesViewControllerTest)
#include "FavoritesViewControllerTest.moc"

#include "TestMain.h"
#include "TestServices.h"

#include "app/ModalPresentation.h"
#include "apps/WhitelistRow.h"
#include "apps/WhitelistViewController.h"
#include "fakes/FakeApplicationRegistry.h"
#include "settings/PropertyList.h"
#include "shell/ScreenNeeds.h"

#include <QAccessible>
#include <QApplication>
#include <QFileInfo>
#include <QPointer>

// The whitelist screen over a fake registry: marks, taps and the file.
class WhitelistViewControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    FakeApplicationRegistry m_registry;
    std::unique_ptr<QWidget> m_window;
    const QString maps = u"org.gnome.Maps"_s;
    const QString chat = u"org.example.Chat"_s;

    WhitelistViewController *present()
    {
        auto *screen = new WhitelistViewController(ScreenNeeds::whitelist(m_world->services()));
        presentViewController(m_window.get(), screen, ModalTransition::CoverVertical);
        return screen;
    }
    QVariantMap stored() const { return PropertyList::readDictionary(whitelist()); }
    QString whitelist() const { return m_world->files().whitelistFile(); }

private slots:
    void init()
    {
        setModalAnimationsEnabled(false);
        m_world = std::make_unique<TestServices>();
        m_registry = FakeApplicationRegistry();
        m_registry.addShown({maps, chat});
        m_world->services().applications = &m_registry;
        m_window = std::make_unique<QWidget>();
        m_window->resize(390, 844);
        m_window->show();
    }
    void cleanup() { m_window.reset(); }

    void tapsFlipAndWriteTheWholeFile_data()
    {
        QTest::addColumn<QVariantMap>("before"); // empty: no file
        QTest::addColumn<QStringList>("play");   // marks, rows tapped in order, marks after
        QTest::addColumn<QVariantMap>("after");  // empty: no file after
        const auto row = [](const char *name, const QVariantMap &before, const char *play,
                            const QVariantMap &after) {
            QTest::newRow(name) << before << QString::fromLatin1(play).split(u' ') << after;
        };
        const QString gone = u"org.example.Uninstalled"_s;
        const QString on = u"1"_s, off = u"0"_s;
        row("loading writes nothing", {}, "00  00", {});
        row("first tap, no file: one key", {}, "00 1 01", {{chat, true}});
        row("two taps: key kept, false", {{gone, true}}, "00 00 00", {{gone, true}, {maps, false}});
        row("\"1\" is on; tapped: false", {{maps, on}, {chat, off}}, "10 0 00",
            {{maps, false}, {chat, off}});
    }
    void tapsFlipAndWriteTheWholeFile()
    {
        QFETCH(QVariantMap, before);
        QFETCH(QStringList, play);
        QFETCH(QVariantMap, after);
        if (!before.isEmpty())
            QVERIFY(PropertyList::write(whitelist(), before));
        WhitelistViewController *screen = present();
        const auto marked = [screen] { // "01": the second is marked
            QString result;
            for (int row = 0; row < screen->numberOfRows(); ++row)
                result.append(screen->rowAt(row)->isChecked() ? u'1' : u'0');
            return result;
        };
        QCOMPARE(marked(), play[0]);
        for (QChar row : play[1])
            QTest::mouseClick(screen->rowAt(row.digitValue()), Qt::LeftButton);
        QCOMPARE(marked(), play[2]);
        QCOMPARE(QFileInfo::exists(whitelist()), !after.isEmpty());
        QCOMPARE(stored(), after);
    }

    void rowsShowNamesAndToggle()
    {
        m_registry.add({u"org.example.Nameless"_s, QString(), {}, true});
        QPointer<WhitelistViewController> screen = present();
        QCOMPARE(screen->numberOfRows(), 3);
        QCOMPARE(screen->rowAt(0)->text(), u"Maps"_s);
        // a screen reader names a row by its application, even a nameless one
        QAccessibleInterface *row = QAccessible::queryAccessibleInterface(screen->rowAt(2));
        QCOMPARE(row->text(QAccessible::Name), u"org.example.Nameless"_s);
        QVERIFY(row->state().checkable);
        row = QAccessible::queryAccessibleInterface(screen->rowAt(1));
        QCOMPARE(row->text(QAccessible::Name), u"Chat"_s);
        // keys and a screen reader toggle too
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QCOMPARE(QApplication::focusWidget(), screen->rowAt(0)); // not the scrolling frame
        QTest::keyClick(screen->rowAt(0), Qt::Key_Down);
        QTest::keyClick(screen->rowAt(1), Qt::Key_Space);
        QCOMPARE(stored().value(chat), QVariant(true));
        QVERIFY(row->state().checked);
        row->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(stored().value(chat), QVariant(false));
        QVERIFY(!row->state().checked);
        row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(stored().value(chat), QVariant(true));
        screen->rowAt(2)->setFocus(); // Tab goes down the rows, then to Done
        QTest::keyClick(screen->rowAt(2), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"backButton"_s);
        // Done dismisses
        QTest::mouseClick(screen->findChild<QAbstractButton *>(u"backButton"_s), Qt::LeftButton);
        QVERIFY(!presentedViewController(m_window.get()));
        QTRY_VERIFY(screen.isNull());
    }
};

TREKMIME_TEST(WhitelistViewControllerTest)
#include "WhitelistViewControllerTest.moc"

#include "TestMain.h"
#include "TestServices.h"

#include "app/ModalPresentation.h"
#include "apps/WhitelistRow.h"
#include "apps/WhitelistViewController.h"
#include "fakes/FakeApplicationRegistry.h"
#include "settings/PropertyList.h"
#include "shell/ScreenNeeds.h"

#include <QAccessible>
#include <QFileInfo>
#include <QPointer>
#include <QTest>

using Taps = QList<int>;

// The whitelist screen over a fake registry: marks, taps and the file.
class WhitelistViewControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    FakeApplicationRegistry m_registry;
    QWidget *m_window = nullptr;

    const QString maps = QStringLiteral("org.gnome.Maps");
    const QString chat = QStringLiteral("org.example.Chat");

    WhitelistViewController *present()
    {
        auto *screen = new WhitelistViewController(ScreenNeeds::whitelist(m_world->services()));
        presentViewController(m_window, screen, ModalTransition::CoverVertical);
        return screen;
    }
    QList<bool> marks(const WhitelistViewController *screen) const
    {
        QList<bool> result;
        for (int row = 0; row < screen->numberOfRows(); ++row)
            result.append(screen->rowAt(row)->isChecked());
        return result;
    }

private slots:
    void init()
    {
        setModalAnimationsEnabled(false);
        m_world = std::make_unique<TestServices>();
        m_registry = FakeApplicationRegistry();
        m_registry.addShown({maps, chat});
        m_world->services().applications = &m_registry;
        m_window = new QWidget;
        m_window->resize(390, 844);
        m_window->show();
    }
    void cleanup()
    {
        delete m_window;
        m_world.reset();
        setModalAnimationsEnabled(true);
    }

    void tapsFlipAndWriteTheWholeFile_data()
    {
        QTest::addColumn<QVariant>("stored"); // invalid: no file
        QTest::addColumn<Taps>("taps");
        QTest::addColumn<QList<bool>>("shownBefore");
        QTest::addColumn<QVariantMap>("written"); // empty: no file after
        QTest::addColumn<QList<bool>>("shownAfter");

        const QVariantMap other{{QStringLiteral("org.example.Uninstalled"), true}};
        QTest::newRow("loading writes nothing") << QVariant() << Taps{} << QList<bool>{false, false}
                                                << QVariantMap() << QList<bool>{false, false};
        QTest::newRow("first tap, no file: one key")
            << QVariant() << Taps{1} << QList<bool>{false, false} << QVariantMap{{chat, true}}
            << QList<bool>{false, true};
        QTest::newRow("second tap keeps the key, false")
            << QVariant(other) << Taps{0, 0} << QList<bool>{false, false}
            << QVariantMap{{QStringLiteral("org.example.Uninstalled"), true}, {maps, false}}
            << QList<bool>{false, false};
        QTest::newRow("text \"1\" is on; a tap stores false")
            << QVariant(QVariantMap{{maps, QStringLiteral("1")}, {chat, QStringLiteral("0")}})
            << Taps{0} << QList<bool>{true, false}
            << QVariantMap{{maps, false}, {chat, QStringLiteral("0")}} << QList<bool>{false, false};
    }
    void tapsFlipAndWriteTheWholeFile()
    {
        QFETCH(QVariant, stored);
        QFETCH(Taps, taps);
        QFETCH(QList<bool>, shownBefore);
        QFETCH(QVariantMap, written);
        QFETCH(QList<bool>, shownAfter);
        const QString file = m_world->files().whitelistFile();
        if (stored.isValid())
            QVERIFY(PropertyList::write(file, stored.toMap()));

        WhitelistViewController *screen = present();
        QCOMPARE(marks(screen), shownBefore);
        for (int row : taps)
            QTest::mouseClick(screen->rowAt(row), Qt::LeftButton);
        QCOMPARE(marks(screen), shownAfter);
        if (written.isEmpty() && !stored.isValid())
            QVERIFY(!QFileInfo::exists(file));
        else
            QCOMPARE(PropertyList::readDictionary(file), written);
    }

    void rowsShowTheListWithNamesAndIcons()
    {
        m_registry.add({QStringLiteral("org.example.Nameless"), QString(), {}, true});
        WhitelistViewController *screen = present();
        QCOMPARE(screen->numberOfRows(), 3);
        QCOMPARE(screen->rowAt(0)->text(), QStringLiteral("Maps"));
        // a screen reader names a row by its application, even a nameless one
        QAccessibleInterface *row = QAccessible::queryAccessibleInterface(screen->rowAt(2));
        QCOMPARE(row->text(QAccessible::Name), QStringLiteral("org.example.Nameless"));
        QVERIFY(row->state().checkable);
        QCOMPARE(QAccessible::queryAccessibleInterface(screen->rowAt(1))->text(QAccessible::Name),
                 QStringLiteral("Chat"));
    }

    void keyboardAndScreenReaderToggleToo()
    {
        WhitelistViewController *screen = present();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
        screen->rowAt(0)->setFocus();
        QTest::keyClick(screen->rowAt(0), Qt::Key_Down);
        QVERIFY(screen->rowAt(1)->hasFocus());
        QTest::keyClick(screen->rowAt(1), Qt::Key_Space);
        QCOMPARE(PropertyList::readDictionary(m_world->files().whitelistFile()),
                 (QVariantMap{{chat, true}}));

        QAccessibleInterface *row = QAccessible::queryAccessibleInterface(screen->rowAt(1));
        QVERIFY(row->state().checked);
        row->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(PropertyList::readDictionary(m_world->files().whitelistFile()),
                 (QVariantMap{{chat, false}}));
        QVERIFY(!row->state().checked);
        row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(PropertyList::readDictionary(m_world->files().whitelistFile()),
                     (QVariantMap{{chat, true}}));
    }

    void doneDismisses()
    {
        QPointer<WhitelistViewController> screen = present();
        QTest::mouseClick(screen->findChild<QAbstractButton *>(QStringLiteral("backButton")),
                          Qt::LeftButton);
        QVERIFY(!presentedViewController(m_window));
        QTRY_VERIFY(screen.isNull());
    }
};

TREKMIME_TEST(WhitelistViewControllerTest)
#include "WhitelistViewControllerTest.moc"

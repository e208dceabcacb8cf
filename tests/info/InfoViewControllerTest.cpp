#include "TestMain.h"
#include "TestServices.h"

#include "app/BaseViewController.h"
#include "app/ModalPresentation.h"
#include "apps/WhitelistViewController.h"
#include "fakes/FakeApplicationRegistry.h"
#include "info/InfoViewController.h"
#include "shell/AppDelegate.h"
#include "shell/AppWindow.h"
#include "shell/ScreenNeeds.h"
#include "ui/Accessibility.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QUrlQuery>

// The information screen: its title, its links and the ways to it and on.
class InfoViewControllerTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestServices> m_world;
    FakeApplicationRegistry m_registry;
    QWidget *m_window = nullptr;

    InfoViewController *present()
    {
        const Services &services = m_world->services();
        auto *screen = new InfoViewController(ScreenNeeds::info(services), [&services] {
            return new WhitelistViewController(ScreenNeeds::whitelist(services));
        });
        presentViewController(m_window, screen, ModalTransition::FlipHorizontal);
        return screen;
    }
    static void press(QWidget *screen, const char *button)
    {
        QTest::mouseClick(screen->findChild<QAbstractButton *>(QLatin1String(button)),
                          Qt::LeftButton);
    }

private slots:
    void init()
    {
        setModalAnimationsEnabled(false);
        QGuiApplication::setApplicationDisplayName(u"Trekmime Beta"_s);
        QCoreApplication::setApplicationVersion(u"9.8.7"_s);
        m_world = std::make_unique<TestServices>();
        m_world->services().applications = &m_registry;
        Configuration &configuration = m_world->services().configuration;
        configuration.set(Configuration::SupportMail, u"help@example.org"_s);
        configuration.set(Configuration::ShopUrl, u"https://shop.example.org/"_s);
        configuration.set(Configuration::WebsiteUrl, u"https://www.example.org/"_s);
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

    void visitOpensTheShopOnlyForSimplifiedChineseFirst_data()
    {
        QTest::addColumn<QString>("languages");
        QTest::addColumn<QByteArray>("system"); // LANGUAGE
        QTest::addColumn<bool>("chinese");
        QTest::newRow("zh-Hans") << "zh-Hans,en" << QByteArray("de") << true;
        QTest::newRow("with a region") << "zh-Hans-CN" << QByteArray() << false;
        QTest::newRow("traditional") << "zh-Hant" << QByteArray() << false;
        QTest::newRow("second only") << "en-GB,zh-Hans" << QByteArray() << false;
        QTest::newRow("other case") << "zh-hans" << QByteArray() << false;
        QTest::newRow("system's") << "" << QByteArray("zh_CN:en") << true;
        QTest::newRow("configured first") << "en" << QByteArray("zh_CN") << false;
    }
    void visitOpensTheShopOnlyForSimplifiedChineseFirst()
    {
        QFETCH(QString, languages);
        QFETCH(QByteArray, system);
        QFETCH(bool, chinese);
        m_world->services().configuration.set(Configuration::Languages, languages);
        qputenv("LANGUAGE", system);
        press(present(), "visitButton");
        qunsetenv("LANGUAGE");
        QCOMPARE(m_world->urlOpener.opened,
                 QList<QUrl>{QUrl(chinese ? u"https://shop.example.org/"_s
                                          : u"https://www.example.org/"_s)});
    }

    // the title and the mail name the running program and its version
    void titleAndContactMailCarryTheVersion()
    {
        InfoViewController *screen = present();
        QCOMPARE(screen->findChild<QLabel *>(u"titleLabel"_s)->text(), u"Trekmime Beta 9.8.7"_s);
        press(screen, "contactButton");
        const QUrl mail = m_world->urlOpener.opened.value(0);
        QCOMPARE(mail.toString(QUrl::RemoveQuery), u"mailto:help@example.org"_s);
        const QString body = QUrlQuery(mail).queryItemValue(u"body"_s, QUrl::FullyDecoded);
        QVERIFY2(body.contains(u"9.8.7"_s), qPrintable(body));
        // mail links break lines with CR LF
        const QByteArray encoded = mail.toEncoded();
        QVERIFY2(encoded.contains("body=%0D%0A%0D%0A%0D%0A") && !encoded.contains("%0A%0A"),
                 encoded.constData());
    }

    void whiteListPresentsTheWhitelistAndBackDismisses()
    {
        m_registry.addShown({u"org.gnome.Maps"_s});
        QPointer<InfoViewController> screen = present();
        QAccessibleInterface *button = QAccessible::queryAccessibleInterface(
            screen->findChild<QAbstractButton *>(u"wihteListButton"_s));
        QCOMPARE(button->text(QAccessible::Name), u"White List"_s);
        button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(presentedViewController(screen));
        auto *whitelist = qobject_cast<WhitelistViewController *>(presentedViewController(screen));
        QCOMPARE(whitelist->numberOfRows(), 1);
        QTest::keyClick(whitelist, Qt::Key_Escape);
        QVERIFY(!presentedViewController(screen));
        press(screen, "backButton");
        QTRY_VERIFY(screen.isNull());
    }

    void theShellPresentsANewScreenEachTime()
    {
        installAccessibilityFactories();
        AppDelegate delegate(m_world->services());
        QVERIFY(delegate.didFinishLaunching());
        QVERIFY(QTest::qWaitForWindowActive(delegate.window()));
        QWidget *root = delegate.window()->rootViewController();
        delegate.showInfoView(root, ModalTransition::CrossDissolve);
        QPointer<InfoViewController> first =
            qobject_cast<InfoViewController *>(presentedViewController(root));
        // the screen under it is out of the screen reader's way; the keyboard is on the new one
        QAccessibleInterface *window = QAccessible::queryAccessibleInterface(delegate.window());
        QCOMPARE(window->childCount() == 1 ? window->child(0)->object() : nullptr, first.data());
        QCOMPARE(QApplication::focusWidget()->objectName(), u"wihteListButton"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QTRY_VERIFY(first.isNull());
        QVERIFY(root->isVisible());
        delegate.showInfoView(root, ModalTransition::FlipHorizontal);
        QVERIFY(qobject_cast<InfoViewController *>(presentedViewController(root)));
    }
};

TREKMIME_TEST(InfoViewControllerTest)
#include "InfoViewControllerTest.moc"

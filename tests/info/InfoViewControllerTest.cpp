#include "TestMain.h"
#include "TestServices.h"

#include "app/ModalPresentation.h"
#include "apps/WhitelistViewController.h"
#include "fakes/FakeApplicationRegistry.h"
#include "info/InfoViewController.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QTest>
#include <QUrlQuery>

// The information screen: its title, its links and the way to the whitelist.
class InfoViewControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TestServices> m_world;
    FakeApplicationRegistry m_registry;
    QWidget *m_window = nullptr;

    InfoViewController *present()
    {
        const Services &services = m_world->services();
        auto *screen = new InfoViewController(
            services, [&services] { return new WhitelistViewController(services); });
        presentViewController(m_window, screen, ModalTransition::FlipHorizontal);
        return screen;
    }
    void press(QWidget *screen, const char *button)
    {
        auto *found = screen->findChild<QAbstractButton *>(QLatin1String(button));
        QVERIFY(found);
        QTest::mouseClick(found, Qt::LeftButton);
    }

private slots:
    void init()
    {
        setModalAnimationsEnabled(false);
        m_world = std::make_unique<TestServices>();
        m_world->services().applications = &m_registry;
        m_world->services().configuration.set(Configuration::SupportMail,
                                              QStringLiteral("help@example.org"));
        m_world->services().configuration.set(Configuration::ShopUrl,
                                              QStringLiteral("https://shop.example.org/"));
        m_world->services().configuration.set(Configuration::WebsiteUrl,
                                              QStringLiteral("https://www.example.org/"));
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

    void titleIsTheRunningProgramsNameAndVersion()
    {
        const QString name = QGuiApplication::applicationDisplayName();
        const QString version = QCoreApplication::applicationVersion();
        QGuiApplication::setApplicationDisplayName(QStringLiteral("Trekmime Beta"));
        QCoreApplication::setApplicationVersion(QStringLiteral("9.8.7"));
        InfoViewController *screen = present();
        QGuiApplication::setApplicationDisplayName(name);
        QCoreApplication::setApplicationVersion(version);
        QCOMPARE(screen->findChild<QLabel *>(QStringLiteral("titleLabel"))->text(),
                 QStringLiteral("Trekmime Beta 9.8.7"));
    }

    void visitOpensTheShopOnlyForSimplifiedChineseFirst_data()
    {
        QTest::addColumn<QString>("languages");
        QTest::addColumn<bool>("chinese");
        QTest::newRow("zh-Hans") << QStringLiteral("zh-Hans,en") << true;
        QTest::newRow("with a region") << QStringLiteral("zh-Hans-CN") << false;
        QTest::newRow("traditional") << QStringLiteral("zh-Hant") << false;
        QTest::newRow("second only") << QStringLiteral("en-GB,zh-Hans") << false;
        QTest::newRow("other case") << QStringLiteral("zh-hans") << false;
    }
    void visitOpensTheShopOnlyForSimplifiedChineseFirst()
    {
        QFETCH(QString, languages);
        QFETCH(bool, chinese);
        QVERIFY(
            m_world->services().configuration.set(Configuration::Languages, languages).isEmpty());
        InfoViewController *screen = present();
        QCOMPARE(screen->isChinese(), chinese);
        press(screen, "visitButton");
        QCOMPARE(m_world->urlOpener.opened,
                 QList<QUrl>{QUrl(chinese ? QStringLiteral("https://shop.example.org/")
                                          : QStringLiteral("https://www.example.org/"))});
    }

    void contactOpensAMailWithABody()
    {
        InfoViewController *screen = present();
        press(screen, "contactButton");
        QCOMPARE(m_world->urlOpener.opened.size(), 1);
        const QUrl mail = m_world->urlOpener.opened.constFirst();
        QCOMPARE(mail.scheme(), QStringLiteral("mailto"));
        QCOMPARE(mail.path(), QStringLiteral("help@example.org"));
        const QString body =
            QUrlQuery(mail).queryItemValue(QStringLiteral("body"), QUrl::FullyDecoded);
        QVERIFY2(body.contains(QCoreApplication::applicationVersion()), qPrintable(body));
    }

    void whiteListPresentsTheWhitelistAndBackDismisses()
    {
        m_registry.addShown({QStringLiteral("org.gnome.Maps")});
        QPointer<InfoViewController> screen = present();
        QAccessibleInterface *button = QAccessible::queryAccessibleInterface(
            screen->findChild<QAbstractButton *>(QStringLiteral("wihteListButton")));
        QCOMPARE(button->text(QAccessible::Name), QStringLiteral("White List"));
        button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(presentedViewController(screen));
        auto *whitelist = qobject_cast<WhitelistViewController *>(presentedViewController(screen));
        QVERIFY(whitelist);
        QCOMPARE(whitelist->numberOfRows(), 1);

        press(whitelist, "backButton");
        QVERIFY(!presentedViewController(screen));
        press(screen, "backButton");
        QVERIFY(!presentedViewController(m_window));
        QTRY_VERIFY(screen.isNull());
    }
};

TREKMIME_TEST(InfoViewControllerTest)
#include "InfoViewControllerTest.moc"

#include "TestMain.h"
#include "TestServices.h"

#include "app/BaseViewController.h"
#include "app/ModalPresentation.h"
#include "info/InfoViewController.h"
#include "shell/AppDelegate.h"
#include "shell/AppWindow.h"

#include <QPointer>
#include <QTest>

// The shell's way to the information screen, as the main screens' buttons
// ask for it.
class ShellInfoViewTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { setModalAnimationsEnabled(true); }

    void eachRequestPresentsANewInformationScreen()
    {
        setModalAnimationsEnabled(false);
        TestServices world;
        AppDelegate delegate(world.services());
        QVERIFY(delegate.didFinishLaunching());
        QWidget *root = delegate.window()->rootViewController();

        delegate.showInfoView(root, ModalTransition::CrossDissolve);
        QPointer<InfoViewController> first =
            qobject_cast<InfoViewController *>(presentedViewController(root));
        QVERIFY(first);
        QCOMPARE(first->geometry(), delegate.window()->rect());
        dismissViewController(first);
        QTRY_VERIFY(first.isNull());

        delegate.showInfoView(root, ModalTransition::FlipHorizontal);
        QVERIFY(qobject_cast<InfoViewController *>(presentedViewController(root)));
    }
};

TREKMIME_TEST(ShellInfoViewTest)
#include "ShellInfoViewTest.moc"

#include "RouteTestWorld.h"
#include "TestMain.h"

#include "app/ActivityIndicatorView.h"
#include "shell/ScreenNeeds.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>

class SelectAddressViewControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<RouteTestWorld> m_world;
    QPointer<SelectAddressViewController> m_picker;
    int m_calls = 0;
    double m_latitude = -1, m_longitude = -1;
    QString m_address;

    SelectAddressViewController &open()
    {
        m_calls = 0;
        m_picker =
            new SelectAddressViewController(ScreenNeeds::addressPicker(m_world->services()),
                                            [this](double lat, double lng, const QString &address) {
                                                ++m_calls, m_latitude = lat, m_longitude = lng,
                                                           m_address = address;
                                            });
        m_picker->setAnimationDuration(0);
        m_picker->resize(390, 844);
        m_picker->loadViewIfNeeded();
        m_picker->show();
        return *m_picker;
    }

private slots:
    void init() { m_world = std::make_unique<RouteTestWorld>(); }
    void cleanup()
    {
        delete m_picker.data();
        m_world.reset();
    }

    void loadingThenSettled()
    {
        SelectAddressViewController &picker = open();
        auto *spinner = picker.findChild<ActivityIndicatorView *>(QStringLiteral("spinner"));
        m_world->settlePicker(picker, QStringLiteral("Queen's Road Central"));
        QVERIFY(spinner->isVisible());
        picker.okButtonClicked(); // refused until the lookup answers
        QVERIFY(m_world->hintShown(&picker, QStringLiteral("Address is loading, please wait")));
        QCOMPARE(m_calls, 0);
        QTRY_VERIFY(!spinner->isVisible());
        picker.okButtonClicked();
        picker.cancelButtonClicked(); // at most one answer
        QCOMPARE(m_calls, 1);
        QCOMPARE(m_latitude, picker.mapView()->centerCoordinate().latitude);
        QCOMPARE(m_address, QStringLiteral("Queen's Road Central"));
    }

    void answers_data()
    {
        QTest::addColumn<QString>("found"); // before the answer
        QTest::addColumn<int>("answer");    // 0 empty text, 1 reverse failure, 2 forward failure
        QTest::addColumn<QString>("handed");
        QTest::newRow("empty text") << QString() << 0 << QStringLiteral("Unknow");
        QTest::newRow("reverse failure forgets")
            << QStringLiteral("Pier 7") << 1 << QStringLiteral("Unknow");
        QTest::newRow("forward failure keeps")
            << QStringLiteral("Pier 7") << 2 << QStringLiteral("Pier 7");
    }
    void answers()
    {
        QFETCH(QString, found);
        QFETCH(int, answer);
        QFETCH(QString, handed);
        SelectAddressViewController &picker = open();
        if (!found.isNull())
            picker.reverseGeocoderSuccess(found);
        if (answer == 0)
            picker.reverseGeocoderSuccess(QString());
        else if (answer == 1)
            picker.reverseGeocoderFailed(QStringLiteral("offline"));
        else
            picker.geocoderFailed(QStringLiteral("offline"));
        QCOMPARE(picker.findChild<QLabel *>(QStringLiteral("addressLabel"))->text(),
                 QStringLiteral("Unknow"));
        picker.okButtonClicked();
        QCOMPARE(m_address, handed);
    }

    void cancelHandsBackZeros()
    {
        SelectAddressViewController &picker = open();
        picker.reverseGeocoderSuccess(QStringLiteral("Pier 7"));
        QTest::keyClick(&picker, Qt::Key_Escape);
        QVERIFY(m_calls == 1 && m_latitude == 0.0 && m_address.isNull());
    }

    void search()
    {
        SelectAddressViewController &picker = open();
        auto *field = picker.findChild<QLineEdit *>(QStringLiteral("searchField"));
        field->setText(QStringLiteral(" \n\t "));
        picker.searchButtonClicked();
        QVERIFY(m_world->geocoder.forwardRequests().isEmpty());

        m_world->geocoder.setCoordinate(QStringLiteral("Pier 7"), {22.287, 114.161});
        field->setText(QStringLiteral("  Pier 7\n"));
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(m_world->geocoder.forwardRequests(), QStringList{QStringLiteral("Pier 7")});
        QTRY_COMPARE(picker.latitude(), 22.287);
        QTRY_VERIFY(!m_world->geocoder.reverseRequests().isEmpty());

        field->setText(QStringLiteral("Atlantis"));
        picker.searchButtonClicked();
        QTRY_COMPARE(m_world->alerts.messages(), QStringList{QStringLiteral("Search Failed")});
    }

    void closedWhileLookingUp()
    {
        m_world->settlePicker(open(), QStringLiteral("Queen's Road Central"));
        m_world->geocoder.setCoordinate(QStringLiteral("Pier 7"), {22.287, 114.161});
        m_picker->findChild<QLineEdit *>(QStringLiteral("searchField"))
            ->setText(QStringLiteral("Pier 7"));
        m_picker->searchButtonClicked();
        delete m_picker.data();
        QTest::qWait(20);
        QCOMPARE(m_calls, 0);
    }
};

TREKMIME_TEST(SelectAddressViewControllerTest)
#include "SelectAddressViewControllerTest.moc"

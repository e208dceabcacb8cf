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
        auto *spinner = picker.findChild<ActivityIndicatorView *>(u"spinner"_s);
        m_world->settlePicker(picker, u"Queen's Road Central"_s);
        QVERIFY(spinner->isVisible());
        picker.okButtonClicked(); // refused until the lookup answers
        QVERIFY(m_world->hintShown(&picker, u"Address is loading, please wait"_s));
        QCOMPARE(m_calls, 0);
        QTRY_VERIFY(!spinner->isVisible());
        picker.okButtonClicked();
        picker.cancelButtonClicked(); // at most one answer
        QCOMPARE(m_calls, 1);
        QCOMPARE(m_latitude, picker.mapView()->centerCoordinate().latitude);
        QCOMPARE(m_address, u"Queen's Road Central"_s);
    }

    void answers_data()
    {
        QTest::addColumn<QString>("found"); // before the answer
        QTest::addColumn<int>("answer");    // 0 empty text, 1 reverse failure, 2 forward failure
        QTest::addColumn<QString>("handed");
        QTest::newRow("empty text") << QString() << 0 << u"Unknow"_s;
        QTest::newRow("reverse failure forgets") << u"Pier 7"_s << 1 << u"Unknow"_s;
        QTest::newRow("forward failure keeps") << u"Pier 7"_s << 2 << u"Pier 7"_s;
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
            picker.reverseGeocoderFailed(u"offline"_s);
        else
            picker.geocoderFailed(u"offline"_s);
        QCOMPARE(picker.findChild<QLabel *>(u"addressLabel"_s)->text(), u"Unknow"_s);
        picker.okButtonClicked();
        QCOMPARE(m_address, handed);
    }

    void cancelHandsBackZeros()
    {
        SelectAddressViewController &picker = open();
        picker.reverseGeocoderSuccess(u"Pier 7"_s);
        QTest::keyClick(&picker, Qt::Key_Escape);
        QVERIFY(m_calls == 1 && m_latitude == 0.0 && m_address.isNull());
    }

    void search()
    {
        SelectAddressViewController &picker = open();
        auto *field = picker.findChild<QLineEdit *>(u"searchField"_s);
        field->setText(u" \n\t "_s);
        picker.searchButtonClicked();
        QVERIFY(m_world->geocoder.forwardRequests().isEmpty());

        m_world->geocoder.setCoordinate(u"Pier 7"_s, {22.287, 114.161});
        field->setText(u"  Pier 7\n"_s);
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(m_world->geocoder.forwardRequests(), QStringList{u"Pier 7"_s});
        QTRY_COMPARE(picker.latitude(), 22.287);
        QTRY_VERIFY(!m_world->geocoder.reverseRequests().isEmpty());

        field->setText(u"Atlantis"_s);
        picker.searchButtonClicked();
        QTRY_COMPARE(m_world->alerts.messages(), QStringList{u"Search Failed"_s});
    }

    void closedWhileLookingUp()
    {
        m_world->settlePicker(open(), u"Queen's Road Central"_s);
        m_world->geocoder.setCoordinate(u"Pier 7"_s, {22.287, 114.161});
        m_picker->findChild<QLineEdit *>(u"searchField"_s)->setText(u"Pier 7"_s);
        m_picker->searchButtonClicked();
        delete m_picker.data();
        QTest::qWait(20);
        QCOMPARE(m_calls, 0);
    }
};

TREKMIME_TEST(SelectAddressViewControllerTest)
#include "SelectAddressViewControllerTest.moc"

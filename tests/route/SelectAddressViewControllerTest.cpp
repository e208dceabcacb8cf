#include "RouteTestWorld.h"
#include "TestMain.h"

#include "app/ActivityIndicatorView.h"
#include "app/ProgressHUD.h"
#include "route/SelectAddressViewController.h"
#include "shell/ScreenNeeds.h"
#include "ui/MapView.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTest>

#include <algorithm>

#include <memory>

namespace {
struct Result
{
    int calls = 0;
    double latitude = -1;
    double longitude = -1;
    QString address;
};
} // namespace

class SelectAddressViewControllerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<RouteTestWorld> m_world;
    QPointer<SelectAddressViewController> m_picker;
    Result m_result;

    SelectAddressViewController &open()
    {
        m_result = {};
        m_picker =
            new SelectAddressViewController(ScreenNeeds::addressPicker(m_world->services()),
                                            [this](double lat, double lng, const QString &address) {
                                                m_result = {m_result.calls + 1, lat, lng, address};
                                            });
        m_picker->setAnimationDuration(0);
        m_picker->resize(390, 844);
        m_picker->loadViewIfNeeded();
        m_picker->show();
        return *m_picker;
    }
    QLabel *addressLabel() { return m_picker->findChild<QLabel *>(QStringLiteral("addressLabel")); }
    void settleAt(const QString &line)
    {
        MapView *map = m_picker->mapView();
        if (!line.isNull())
            m_world->geocoder.setAddress(map->centerCoordinate(), line);
        m_picker->regionWillChangeAnimated(map, false);
        m_picker->regionDidChangeAnimated(map, false);
    }
    bool hintShown(const QString &text)
    {
        const auto huds = m_picker->findChildren<ProgressHUD *>();
        return std::any_of(huds.begin(), huds.end(),
                           [&](ProgressHUD *hud) { return hud->labelText() == text; });
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
        settleAt(QStringLiteral("Queen's Road Central"));
        QVERIFY(spinner->isVisible());
        picker.okButtonClicked(); // refused until the lookup answers
        QVERIFY(hintShown(QStringLiteral("Address is loading, please wait")));
        QCOMPARE(m_result.calls, 0);
        QTRY_VERIFY(!spinner->isVisible());
        const Coordinate centre = picker.mapView()->centerCoordinate();
        picker.okButtonClicked();
        picker.cancelButtonClicked(); // at most one answer
        QCOMPARE(m_result.calls, 1);
        QCOMPARE(m_result.latitude, centre.latitude);
        QCOMPARE(m_result.address, QStringLiteral("Queen's Road Central"));
    }

    void answers_data()
    {
        QTest::addColumn<QString>("found"); // the address before the last answer
        QTest::addColumn<int>("answer");    // 0 empty text, 1 reverse failure, 2 forward failure
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("handed");
        QTest::newRow("empty text")
            << QString() << 0 << QStringLiteral("Unknow") << QStringLiteral("Unknow");
        QTest::newRow("reverse failure forgets")
            << QStringLiteral("Pier 7") << 1 << QStringLiteral("Unknow")
            << QStringLiteral("Unknow");
        QTest::newRow("forward failure keeps")
            << QStringLiteral("Pier 7") << 2 << QStringLiteral("Unknow")
            << QStringLiteral("Pier 7");
    }
    void answers()
    {
        QFETCH(QString, found);
        QFETCH(int, answer);
        QFETCH(QString, label);
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
        QCOMPARE(addressLabel()->text(), label);
        picker.okButtonClicked();
        QCOMPARE(m_result.address, handed);
    }

    void cancelHandsBackZeros()
    {
        SelectAddressViewController &picker = open();
        picker.reverseGeocoderSuccess(QStringLiteral("Pier 7"));
        QTest::keyClick(&picker, Qt::Key_Escape);
        QCOMPARE(m_result.calls, 1);
        QCOMPARE(m_result.latitude, 0.0);
        QVERIFY(m_result.address.isNull());
    }

    void search()
    {
        SelectAddressViewController &picker = open();
        auto *field = picker.findChild<QLineEdit *>(QStringLiteral("searchField"));
        field->setText(QStringLiteral(" \n\t "));
        picker.searchButtonClicked();
        QVERIFY(m_world->geocoder.forwardRequests().isEmpty());

        const Coordinate pier{22.2870, 114.1610};
        m_world->geocoder.setCoordinate(QStringLiteral("Pier 7"), pier);
        field->setText(QStringLiteral("  Pier 7\n"));
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(m_world->geocoder.forwardRequests(), QStringList{QStringLiteral("Pier 7")});
        QTRY_COMPARE(picker.latitude(), pier.latitude);
        QTRY_VERIFY(!m_world->geocoder.reverseRequests().isEmpty());

        field->setText(QStringLiteral("Atlantis"));
        picker.searchButtonClicked();
        QTRY_COMPARE(m_world->alerts.messages(), QStringList{QStringLiteral("Search Failed")});
    }

    void closedWhileLookingUp()
    {
        open();
        settleAt(QStringLiteral("Queen's Road Central"));
        m_world->geocoder.setCoordinate(QStringLiteral("Pier 7"), {22.287, 114.161});
        m_picker->findChild<QLineEdit *>(QStringLiteral("searchField"))
            ->setText(QStringLiteral("Pier 7"));
        m_picker->searchButtonClicked();
        delete m_picker.data();
        QTest::qWait(20);
        QCOMPARE(m_result.calls, 0);
    }
};

TREKMIME_TEST(SelectAddressViewControllerTest)
#include "SelectAddressViewControllerTest.moc"

// The camera page's own rules: its apply order with the undo block, one edit
// pushed alone, and one powerwall call for three keys.
#include "categories/lmCameraPreferencesGUI.h"
#include "lmHostSettings.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QtTest>

#include <functional>

class tst_Camera : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void defaultsArePushedInApplyOrderWithUndoBlocked()
    {
        lmCameraPreferencesGUII camera;
        camera.setDefault(lmPreferences::getData(), false);
        camera.apply();
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmOSGWidget::setFov(-1, 45) [undo blocked]",
                                         "lmOSGWidget::setGlobalEyeSeparation(63)",
                                         "lmOSGWidget::setGlobalZeroParallaxDistance(1500)",
                                         "lmOSGWidget::setPowerwallWindow(-1, 1600, 1200, 1000)",
                                     }));
    }

    void oneEditIsStoredAndPushedAlone_data()
    {
        QTest::addColumn<int>("edit");
        QTest::addColumn<QString>("key");
        QTest::addColumn<float>("stored");
        QTest::addColumn<QString>("call");
        QTest::newRow("fov blocks undo") << 0 << "Camera fov" << 60.5f
                                         << "lmOSGWidget::setFov(-1, 60.5) [undo blocked]";
        QTest::newRow("typed zero parallax")
            << 1 << "Stereo zero plane parallaxe" << 15005.0f << "lmOSGWidget::setGlobalZeroParallaxDistance(15005)";
        QTest::newRow("cleared eye separation")
            << 2 << "Stereo eye separation" << 0.0f << "lmOSGWidget::setGlobalEyeSeparation(0)";
        // One powerwall value pushes all three.
        QTest::newRow("powerwall height")
            << 3 << "Powerwall height" << 1080.0f << "lmOSGWidget::setPowerwallWindow(-1, 1600, 1080, 1000)";
        QTest::newRow("non-numeric distance")
            << 4 << "Powerwall distance" << 0.0f << "lmOSGWidget::setPowerwallWindow(-1, 1600, 1200, 0)";
    }

    void oneEditIsStoredAndPushedAlone()
    {
        QFETCH(int, edit);
        QFETCH(QString, key);
        QFETCH(float, stored);
        QFETCH(QString, call);
        lmCameraPreferencesGUII camera;
        startPage(camera);
        lmCameraPreferencesGUIW *page = camera.page();
        const std::function<void()> edits[] = {
            [page] { page->_fov->setValue(60.5); },
            [page] { QTest::keyClicks(page->_zpp, "5"); },
            [page] { page->_es->clear(); },
            [page] { page->_pwHeight->setText("1080"); },
            [page] { page->_pwDist->setText("abc"); },
        };
        edits[edit]();
        QCOMPARE(acceptLog(camera), QStringList(call));
        QCOMPARE(lmStored<float>(key.toLatin1().constData()), stored);
    }

    void oneMistypedPowerwallKeySuppressesTheCall_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("width") << "Powerwall width";
        QTest::newRow("height") << "Powerwall height";
        QTest::newRow("distance") << "Powerwall distance";
    }

    void oneMistypedPowerwallKeySuppressesTheCall()
    {
        QFETCH(QString, key);
        lmCameraPreferencesGUII camera;
        startPage(camera);
        setStored(key.toStdString(), 1200.0); // double, not float
        setStored("Camera fov", int(70));
        lmPreferences::getData().remove("Stereo zero plane parallaxe");
        QCOMPARE(applyLog(camera), QStringList("lmOSGWidget::setGlobalEyeSeparation(63)"));
    }

    void restrictedEditionShowsNoPageButStillApplies()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        lmCameraPreferencesGUII camera;
        QVERIFY(lmPreferencesHost::pages().empty());
        QCOMPARE(lmPreferencesHost::categories().size(), std::size_t(1));
        camera.setDefault(lmPreferences::getData(), false);
        camera.apply();
        QCOMPARE(lmCallLog::size(), 4);
    }
};

QTEST_MAIN(tst_Camera)
#include "tst_camera.moc"

// The camera page driven as the host and a user drive it: defaults, page,
// store with unchanged marks, apply and the host calls it makes.
#include "categories/lmCameraPreferencesGUI.h"
#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmMessageHelpers.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QtTest>

namespace {

const std::vector<std::pair<const char *, float>> kDefaults = {
    {"Camera fov", 45.0f},          {"Stereo eye separation", 63.0f}, {"Stereo zero plane parallaxe", 1500.0f},
    {"Powerwall width", 1600.0f},   {"Powerwall height", 1200.0f},    {"Powerwall distance", 1000.0f},
};

float storedFloat(const char *key)
{
    float value = -1.0f;
    getFromMessage(lmPreferences::getData(), key, value);
    return value;
}

// What the host does when the dialog is accepted.
void accept(lmCameraPreferencesGUII &camera)
{
    lmPreferencesHost::resetUnchanged();
    camera.storeGUI();
    camera.apply();
}

} // namespace

class tst_Camera : public QObject
{
    Q_OBJECT

private:
    // A started host: defaults written, initial apply done, page filled.
    void start(lmCameraPreferencesGUII &camera)
    {
        camera.setDefault(lmPreferences::getData(), false);
        camera.apply();
        camera.updateGUI();
        lmCallLog::clear();
    }

private slots:
    void init() { lmResetHost(); }

    void defaultsAreExactFloatsAndFillThePage()
    {
        lmCameraPreferencesGUII camera;
        camera.setDefault(lmPreferences::getData(), true);
        for (const auto &entry : kDefaults) {
            const boost::any &value = lmPreferences::getData().get(entry.first);
            QVERIFY2(value.type() == typeid(float), entry.first);
            QCOMPARE(boost::any_cast<float>(value), entry.second);
        }
        QCOMPARE(lmPreferences::getData().size(), kDefaults.size());

        camera.updateGUI();
        lmCameraPreferencesGUIW *page = camera.page();
        QCOMPARE(page->_fov->value(), 45.0);
        QCOMPARE(page->_es->text(), QStringLiteral("63"));
        QCOMPARE(page->_zpp->text(), QStringLiteral("1500"));
        QCOMPARE(page->_pwWidth->text(), QStringLiteral("1600"));
        QCOMPARE(page->_pwHeight->text(), QStringLiteral("1200"));
        QCOMPARE(page->_pwDist->text(), QStringLiteral("1000"));
        QCOMPARE(page->_fov->minimum(), 1.0);
        QCOMPARE(page->_fov->maximum(), 100.0);
        QCOMPARE(page->_fov->smallStep(), 1.0);
        QCOMPARE(page->_fov->largeStep(), 10.0);
        QVERIFY(page->_es->validator());
    }

    void initialApplyPushesEveryValue()
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

    void valuesLoadedBeforeDefaultsWin()
    {
        lmPreferences::getData().set("Camera fov", boost::any(30.0f), true);
        lmCameraPreferencesGUII camera;
        camera.setDefault(lmPreferences::getData(), false);
        QCOMPARE(storedFloat("Camera fov"), 30.0f);
        QCOMPARE(storedFloat("Powerwall width"), 1600.0f);
        camera.setDefault(lmPreferences::getData(), true);
        QCOMPARE(storedFloat("Camera fov"), 45.0f);
    }

    void untouchedPageAppliesNothing()
    {
        lmCameraPreferencesGUII camera;
        start(camera);
        accept(camera);
        QCOMPARE(lmCallLog::lines(), QStringList());
        std::vector<std::string> keys;
        for (const auto &entry : kDefaults)
            keys.push_back(entry.first);
        std::sort(keys.begin(), keys.end());
        QCOMPARE(lmPreferencesHost::unchangedKeys(lmPreferencesHost::categories().front()), keys);
    }

    void changedFovIsTheOnlyPushAndBlocksUndo()
    {
        lmCameraPreferencesGUII camera;
        start(camera);
        camera.page()->_fov->setValue(60.5);
        accept(camera);
        QCOMPARE(storedFloat("Camera fov"), 60.5f);
        QCOMPARE(lmCallLog::lines(), QStringList({"lmOSGWidget::setFov(-1, 60.5) [undo blocked]"}));
    }

    void typedStereoValuesArePushedSeparately()
    {
        lmCameraPreferencesGUII camera;
        start(camera);
        QTest::keyClicks(camera.page()->_zpp, "5");
        accept(camera);
        QCOMPARE(storedFloat("Stereo zero plane parallaxe"), 15005.0f);
        QCOMPARE(lmCallLog::lines(), QStringList({"lmOSGWidget::setGlobalZeroParallaxDistance(15005)"}));
    }

    void onePowerwallValuePushesAllThree()
    {
        lmCameraPreferencesGUII camera;
        start(camera);
        camera.page()->_pwHeight->setText("1080");
        accept(camera);
        QCOMPARE(lmCallLog::lines(), QStringList({"lmOSGWidget::setPowerwallWindow(-1, 1600, 1080, 1000)"}));
    }

    void clearedOrNonNumericTextStoresZero()
    {
        lmCameraPreferencesGUII camera;
        start(camera);
        camera.page()->_es->clear();
        camera.page()->_pwDist->setText("abc");
        accept(camera);
        QCOMPARE(storedFloat("Stereo eye separation"), 0.0f);
        QCOMPARE(storedFloat("Powerwall distance"), 0.0f);
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmOSGWidget::setGlobalEyeSeparation(0)",
                                         "lmOSGWidget::setPowerwallWindow(-1, 1600, 1200, 0)",
                                     }));
    }

    void wrongTypedKeysChangeNoControlAndCallNoSetter()
    {
        lmCameraPreferencesGUII camera;
        start(camera);
        lmMessage &store = lmPreferences::getData();
        store.set("Camera fov", boost::any(int(70)), true);
        store.set("Powerwall height", boost::any(1200.0), true); // double, not float
        camera.page()->_fov->setValue(33.0);

        lmStderrCapture capture;
        camera.updateGUI();
        camera.apply(); // every key counts as changed
        const QString printed = capture.text();

        QCOMPARE(camera.page()->_fov->value(), 33.0);
        QCOMPARE(printed.count(QLatin1String("getFromMessage : Attribute 'Camera fov' has wrong type")), 2);
        QCOMPARE(printed.count(QLatin1String("getFromMessage : Attribute 'Powerwall height' has wrong type")), 2);
        // One failed powerwall read suppresses the whole powerwall call.
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmOSGWidget::setGlobalEyeSeparation(63)",
                                         "lmOSGWidget::setGlobalZeroParallaxDistance(1500)",
                                     }));
        QVERIFY(store.get("Camera fov").type() == typeid(int));
    }

    void missingKeysAreSkippedSilently()
    {
        lmCameraPreferencesGUII camera;
        start(camera);
        lmPreferences::getData().remove("Powerwall width");
        lmPreferences::getData().remove("Camera fov");
        lmStderrCapture capture;
        camera.updateGUI();
        camera.apply();
        QCOMPARE(capture.text(), QString());
        QCOMPARE(camera.page()->_pwWidth->text(), QStringLiteral("1600"));
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmOSGWidget::setGlobalEyeSeparation(63)",
                                         "lmOSGWidget::setGlobalZeroParallaxDistance(1500)",
                                     }));
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

    void pageIsTopLevelAndLeavesNothingBehind()
    {
        {
            lmCameraPreferencesGUII camera;
            camera.setDefault(lmPreferences::getData(), false);
            const auto pages = lmPreferencesHost::pages();
            QCOMPARE(pages.size(), std::size_t(1));
            QCOMPARE(pages[0].group, QStringLiteral("Camera"));
            QVERIFY(pages[0].page.isEmpty());
            QCOMPARE(pages[0].widget, static_cast<QWidget *>(camera.page()));
            QCOMPARE(pages[0].widget->objectName(), QStringLiteral("lmCameraPreferencesGUI"));
        }
        QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
        QVERIFY(lmPreferencesHost::pages().empty());
        QVERIFY(lmPreferencesHost::categories().empty());
    }
};

QTEST_MAIN(tst_Camera)
#include "tst_camera.moc"

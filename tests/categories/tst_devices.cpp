// The devices page: edition defaults, every key pushed on every apply (no
// change tracking), the forced modes of the restricted edition and the form's
// enabling rules.
#include "categories/lmDevicesPreferencesGUI.h"
#include "lmHostSettings.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QtTest>

namespace {

// The apply of the professional defaults.
const QStringList kDefaultApply = {
    "lmSpacemouse::terminate()",
    "lmOSGWidget::setSpacemouseTwoAxis(false)",
    "lmOSGWidget::setSpacemouseHelicopter(false)",
    "lmOSGWidget::setSpacemouseUseFixedHeight(false)",
    "lmOSGWidget::setSpacemouseFixedHeight(0)",
    "lmOSGWidget::setSpacemouseViewMode(0)",
    "lmOSGWidget::setSpacemousePivotMode(0)",
    "lmController::setJoystickNavigation(0, false)",
};

} // namespace

class tst_Devices : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void defaultsFollowTheEditionEachTime()
    {
        // The same object asked again after the edition changed.
        lmDevicesPreferencesGUII devices;
        devices.setDefault(lmPreferences::getData(), true);
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        devices.setDefault(lmPreferences::getData(), true);
        QCOMPARE(lmStored<bool>("Devices search spacemouse"), true);
        QCOMPARE(lmStored<bool>("Devices spacemouse two axis"), true);
        QCOMPARE(lmStored<bool>("Devices spacemouse helicopter"), true);
        QCOMPARE(lmStored<bool>("Devices spacemouse fixed height"), false);
    }

    void everyApplyPushesEveryKeyAgain()
    {
        lmDevicesPreferencesGUII devices;
        devices.setDefault(lmPreferences::getData(), false);
        devices.apply();
        QCOMPARE(lmCallLog::lines(), kDefaultApply);

        // An accept without edits still stops the driver and pushes it all.
        devices.updateGUI();
        QCOMPARE(acceptLog(devices), kDefaultApply);
        QVERIFY(unchangedKeys().empty());
    }

    void editedPageIsStoredAndPushedInApplyOrder()
    {
        lmDevicesPreferencesGUII devices;
        startPage(devices);
        lmDevicesPreferencesGUIW *page = devices.page();
        page->_search_spacemouse->setChecked(true);
        page->_viewMode->setCurrentIndex(1);
        page->_rotationPivot->setCurrentIndex(3);
        page->_helicopterMode->setChecked(true);
        page->_useFixedHeight->setChecked(true);
        page->_height->setValue(1.75);
        page->_joystick->setChecked(true);
        page->_joystick_id->setValue(2);
        acceptPage(devices);

        QCOMPARE(lmStored<bool>("Devices search spacemouse"), true);
        QCOMPARE(lmStored<int>("Devices spacemouse rotation pivot"), 3);
        QCOMPARE(lmStored<float>("Devices spacemouse height"), 1.75f);
        QCOMPARE(lmStored<int>("Devices joystick id"), 2);
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmSpacemouse::init()",
                                         "lmOSGWidget::setSpacemouseTwoAxis(false)",
                                         "lmOSGWidget::setSpacemouseHelicopter(true)",
                                         "lmOSGWidget::setSpacemouseUseFixedHeight(true)",
                                         "lmOSGWidget::setSpacemouseFixedHeight(1.75)",
                                         "lmOSGWidget::setSpacemouseViewMode(1)",
                                         "lmOSGWidget::setSpacemousePivotMode(3)",
                                         "lmController::setJoystickNavigation(2, true)",
                                     }));

        // The driver is started again on the next apply, and stopped once unchecked.
        QCOMPARE(applyLog(devices).first(), QStringLiteral("lmSpacemouse::init()"));
        page->_search_spacemouse->setChecked(false);
        QCOMPARE(acceptLog(devices).first(), QStringLiteral("lmSpacemouse::terminate()"));
    }

    void restrictedEditionForcesTheSimpleModes()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        lmDevicesPreferencesGUII devices;
        startPage(devices);
        QVERIFY(devices.page()->_twoAxisMode->isChecked());

        // Whatever the store holds, even a mistyped key, both modes go on.
        setStored("Devices spacemouse two axis", false);
        setStored("Devices spacemouse helicopter", 0);
        lmStderrCapture capture;
        devices.apply();
        QCOMPARE(capture.text(), QString());
        QCOMPARE(lmCallLog::lines().mid(0, 3), QStringList({
                                                   "lmSpacemouse::init()",
                                                   "lmOSGWidget::setSpacemouseTwoAxis(true)",
                                                   "lmOSGWidget::setSpacemouseHelicopter(true)",
                                               }));

        // Unchecked boxes still store true for the three forced keys.
        devices.page()->_search_spacemouse->setChecked(false);
        devices.page()->_twoAxisMode->setChecked(false);
        devices.page()->_helicopterMode->setChecked(false);
        devices.page()->_useFixedHeight->setChecked(false);
        devices.storeGUI();
        QCOMPARE(lmStored<bool>("Devices search spacemouse"), true);
        QCOMPARE(lmStored<bool>("Devices spacemouse two axis"), true);
        QCOMPARE(lmStored<bool>("Devices spacemouse helicopter"), true);
        QCOMPARE(lmStored<bool>("Devices spacemouse fixed height"), false);
    }

    void checkBoxesEnableTheControlsTheyGovern()
    {
        lmDevicesPreferencesGUII devices;
        startPage(devices);
        lmDevicesPreferencesGUIW *page = devices.page();
        QVERIFY(!page->_search_spacemouse_frame->isEnabled());
        QVERIFY(!page->_joystick_frame->isEnabled());
        QVERIFY(!page->_height->isEnabled());

        page->_search_spacemouse->setChecked(true);
        page->_useFixedHeight->setChecked(true);
        page->_joystick->setChecked(true);
        QVERIFY(page->_search_spacemouse_frame->isEnabled());
        QVERIFY(page->_height->isEnabled());
        QVERIFY(page->_joystick_frame->isEnabled());

        page->_useFixedHeight->setChecked(false);
        QVERIFY(!page->_height->isEnabled());
        page->_search_spacemouse->setChecked(false);
        QVERIFY(!page->_search_spacemouse_frame->isEnabled());
    }

    void mistypedKeysAreSkippedAndTheJoystickFallsBackToIdZero()
    {
        lmDevicesPreferencesGUII devices;
        startPage(devices);
        setStored("Devices spacemouse height", 7.0); // double, not float
        setStored("Devices joystick id", 1u);
        setStored("Devices search spacemouse", std::string("true"));
        QCOMPARE(applyLog(devices), QStringList({
                                        "lmOSGWidget::setSpacemouseTwoAxis(false)",
                                        "lmOSGWidget::setSpacemouseHelicopter(false)",
                                        "lmOSGWidget::setSpacemouseUseFixedHeight(false)",
                                        "lmOSGWidget::setSpacemouseViewMode(0)",
                                        "lmOSGWidget::setSpacemousePivotMode(0)",
                                        "lmController::setJoystickNavigation(0, false)",
                                    }));

        // Without the flag there is no joystick call at all.
        lmPreferences::getData().remove("Devices joystick");
        QVERIFY(!applyLog(devices).join('\n').contains("setJoystickNavigation"));
    }
};

QTEST_MAIN(tst_Devices)
#include "tst_devices.moc"

// The devices page: edition defaults, every key pushed on every apply (no
// change tracking), the forced modes of the restricted edition and the form's
// enabling rules.
#include "categories/lmDevicesPreferencesGUI.h"
#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmMessageHelpers.h"
#include "lmPreferencesHost.h"
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

private:
    void start(lmDevicesPreferencesGUII &devices)
    {
        devices.setDefault(lmPreferences::getData(), false);
        devices.apply();
        devices.updateGUI();
        lmCallLog::clear();
    }

    void accept(lmDevicesPreferencesGUII &devices)
    {
        lmPreferencesHost::resetUnchanged();
        devices.storeGUI();
        devices.apply();
    }

private slots:
    void init() { lmResetHost(); }

    void defaultsFollowTheEditionEachTime()
    {
        lmDevicesPreferencesGUII devices;
        devices.setDefault(lmPreferences::getData(), true);
        QCOMPARE(lmPreferences::getData().size(), std::size_t(9));
        QCOMPARE(lmStored<bool>("Devices search spacemouse"), false);
        QCOMPARE(lmStored<int>("Devices spacemouse view"), 0);
        QCOMPARE(lmStored<int>("Devices spacemouse rotation pivot"), 0);
        QCOMPARE(lmStored<bool>("Devices spacemouse two axis"), false);
        QCOMPARE(lmStored<bool>("Devices spacemouse helicopter"), false);
        QCOMPARE(lmStored<bool>("Devices spacemouse fixed height"), false);
        QCOMPARE(lmStored<float>("Devices spacemouse height"), 0.0f);
        QCOMPARE(lmStored<bool>("Devices joystick"), false);
        QCOMPARE(lmStored<int>("Devices joystick id"), 0);

        // The same object asked again after the edition changed.
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
        lmCallLog::clear();
        accept(devices);
        QCOMPARE(lmCallLog::lines(), kDefaultApply);
        QVERIFY(lmPreferencesHost::unchangedKeys(lmPreferencesHost::categories().front()).empty());
    }

    void editedPageIsStoredAndPushedInApplyOrder()
    {
        lmDevicesPreferencesGUII devices;
        start(devices);
        lmDevicesPreferencesGUIW *page = devices.page();
        page->_search_spacemouse->setChecked(true);
        page->_viewMode->setCurrentIndex(1);
        page->_rotationPivot->setCurrentIndex(3);
        page->_helicopterMode->setChecked(true);
        page->_useFixedHeight->setChecked(true);
        page->_height->setValue(1.75);
        page->_joystick->setChecked(true);
        page->_joystick_id->setValue(2);
        accept(devices);

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
        lmCallLog::clear();
        devices.apply();
        QCOMPARE(lmCallLog::lines().first(), QStringLiteral("lmSpacemouse::init()"));
        page->_search_spacemouse->setChecked(false);
        lmCallLog::clear();
        accept(devices);
        QCOMPARE(lmCallLog::lines().first(), QStringLiteral("lmSpacemouse::terminate()"));
    }

    void restrictedEditionForcesTheSimpleModes()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        lmDevicesPreferencesGUII devices;
        start(devices);
        QVERIFY(devices.page()->_twoAxisMode->isChecked());

        // Whatever the store holds, even a mistyped key, both modes go on.
        lmMessage &store = lmPreferences::getData();
        store.set("Devices spacemouse two axis", boost::any(false), true);
        store.set("Devices spacemouse helicopter", boost::any(0), true);
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

    void pageFollowsTheStoreAndEnablesDependentControls()
    {
        lmDevicesPreferencesGUII devices;
        start(devices);
        lmDevicesPreferencesGUIW *page = devices.page();
        QVERIFY(!page->_search_spacemouse_frame->isEnabled());
        QVERIFY(!page->_joystick_frame->isEnabled());
        QVERIFY(!page->_height->isEnabled());

        lmMessage &store = lmPreferences::getData();
        store.set("Devices search spacemouse", boost::any(true), true);
        store.set("Devices spacemouse fixed height", boost::any(true), true);
        store.set("Devices spacemouse height", boost::any(-12.5f), true);
        store.set("Devices spacemouse rotation pivot", boost::any(2), true);
        store.set("Devices joystick", boost::any(true), true);
        store.set("Devices joystick id", boost::any(3), true);
        devices.updateGUI();
        QVERIFY(page->_search_spacemouse_frame->isEnabled());
        QVERIFY(page->_height->isEnabled());
        QVERIFY(page->_joystick_frame->isEnabled());
        QCOMPARE(page->_height->value(), -12.5);
        QCOMPARE(page->_rotationPivot->currentText(), QStringLiteral("Focus Distance"));
        QCOMPARE(page->_joystick_id->value(), 3);

        page->_useFixedHeight->setChecked(false);
        QVERIFY(!page->_height->isEnabled());
        page->_search_spacemouse->setChecked(false);
        QVERIFY(!page->_search_spacemouse_frame->isEnabled());
    }

    void wrongTypedKeysAreSkippedAndTheRestIsPushed()
    {
        lmDevicesPreferencesGUII devices;
        start(devices);
        devices.page()->_height->setValue(4.0);
        lmMessage &store = lmPreferences::getData();
        store.set("Devices spacemouse height", boost::any(7.0), true); // double, not float
        store.set("Devices joystick id", boost::any(1u), true);
        store.set("Devices search spacemouse", boost::any(std::string("true")), true);

        lmStderrCapture capture;
        devices.updateGUI();
        devices.apply();
        const QString printed = capture.text();
        QCOMPARE(printed.count("getFromMessage : Attribute 'Devices spacemouse height' has wrong type"), 2);
        QCOMPARE(printed.count("getFromMessage : Attribute 'Devices joystick id' has wrong type"), 2);
        QCOMPARE(printed.count("getFromMessage : Attribute 'Devices search spacemouse' has wrong type"), 2);
        QCOMPARE(devices.page()->_height->value(), 4.0);
        // No driver call, no height, and the joystick falls back to id 0.
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmOSGWidget::setSpacemouseTwoAxis(false)",
                                         "lmOSGWidget::setSpacemouseHelicopter(false)",
                                         "lmOSGWidget::setSpacemouseUseFixedHeight(false)",
                                         "lmOSGWidget::setSpacemouseViewMode(0)",
                                         "lmOSGWidget::setSpacemousePivotMode(0)",
                                         "lmController::setJoystickNavigation(0, false)",
                                     }));

        // Without the flag there is no joystick call at all; storeGUI repairs the types.
        store.remove("Devices joystick");
        lmCallLog::clear();
        devices.apply();
        QVERIFY(!lmCallLog::lines().join('\n').contains("setJoystickNavigation"));
        devices.storeGUI();
        QCOMPARE(lmStored<float>("Devices spacemouse height"), 4.0f);
        QCOMPARE(lmStored<bool>("Devices joystick"), false);
    }

    void pageSitsUnderDevicesAndLeavesNothingBehind()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        {
            lmDevicesPreferencesGUII devices;
            devices.setDefault(lmPreferences::getData(), false);
            const auto pages = lmPreferencesHost::pages();
            QCOMPARE(pages.size(), std::size_t(1));
            QCOMPARE(pages[0].group, QStringLiteral("Devices"));
            QCOMPARE(pages[0].page, QStringLiteral("Devices"));
            QCOMPARE(pages[0].widget->objectName(), QStringLiteral("lmDevicesPreferencesGUI"));
            QCOMPARE(pages[0].widget->windowTitle(), QStringLiteral("Form1"));
        }
        QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
        QVERIFY(lmPreferencesHost::pages().empty());
    }
};

QTEST_MAIN(tst_Devices)
#include "tst_devices.moc"

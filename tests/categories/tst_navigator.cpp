// The navigator page driven as the host and a user drive it: defaults, the
// apply that re-pushes everything but the mode, the enabling rules and the
// interaction presets.
#include "categories/lmNavigatorPreferencesGUI.h"
#include "lmHostSettings.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QtTest>

namespace {

// What an apply of the default values pushes after the mode, in order.
QStringList defaultPushes()
{
    return {
        "lmOSGWidget::setNavAutoCenter(false)",
        "lmOSGWidget::setInteractionMode(0)",
        "lmOSGWidget::setNavInvertDollyAxis(false)",
        "lmOSGWidget::setNavInvertWheelDolly(false)",
        "lmOSGWidget::setNavUsePivotBasedPanning(false)",
        "lmOSGWidget::setNavPanningSpeed(1)",
        "lmOSGWidget::setNavSpeedMode(1)",
        "lmOSGWidget::setNavDollySpeed(1)",
        "lmOSGWidget::setNavDollyAxis(0)",
        "lmOSGWidget::setNavDollyToPivot(false)",
        "lmOSGWidget::setAnimateNavCam(true)",
        "lmOSGWidget::setAnimateNavCamDuration(20)",
        "lmOSGWidget::setNavOrbitMode(false)",
        "lmOSGWidget::setNavOrbitDetectionArea(40)",
        "lmOSGWidget::setNavOrbitDetectionTime(100)",
    };
}

// The default pushes with the given calls changed.
QStringList pushesWith(const QStringList &replacements)
{
    return withCalls(defaultPushes(), replacements);
}

} // namespace

class tst_Navigator : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void defaultsArePushedInApplyOrder()
    {
        lmNavigatorPreferencesGUII navigator;
        navigator.setDefault(lmPreferences::getData(), true);
        navigator.apply();
        QCOMPARE(lmCallLog::lines(), QStringList("lmOSGWidget::setNavMode(-1, 3)") + defaultPushes());
    }

    void acceptRePushesAllButAnUnchangedMode()
    {
        lmNavigatorPreferencesGUII navigator;
        startPage(navigator);
        QCOMPARE(acceptLog(navigator), defaultPushes());
        QCOMPARE(unchangedKeys(), std::vector<std::string>{"Navigator mode"});

        // A new mode goes first; edited values are stored and pushed.
        lmNavigatorPreferencesGUIW *page = navigator.page();
        page->_nav_mode->setCurrentText("Orientation");
        page->_orbit_mode->setChecked(true);
        page->_orbit_detection_area->setValue(12);
        page->_dolly_speed->setValue(2.5);
        page->_navigation_speed_mode->setCurrentIndex(0);
        QCOMPARE(acceptLog(navigator),
                 QStringList("lmOSGWidget::setNavMode(-1, 4)") +
                     pushesWith({"lmOSGWidget::setNavOrbitMode(true)", "lmOSGWidget::setNavOrbitDetectionArea(12)",
                                 "lmOSGWidget::setNavDollySpeed(2.5)", "lmOSGWidget::setNavSpeedMode(0)"}));
        QCOMPARE(lmStored<int>("Navigator mode"), 4);
        QCOMPARE(lmStored<float>("Navigator dolly speed"), 2.5f);
    }

    void analysisModeForcesBothDollyInversions()
    {
        lmHostSettings::setAnalysisMode(true);
        lmNavigatorPreferencesGUII navigator;
        startPage(navigator);
        QCOMPARE(acceptLog(navigator),
                 pushesWith({"lmOSGWidget::setNavInvertDollyAxis(true)", "lmOSGWidget::setNavInvertWheelDolly(true)"}));
        QCOMPARE(lmStored<bool>("Navigator invert zoom"), false);
    }

    void essentialsOffersTwoModesAndHidesAutoCenter()
    {
        lmHostSettings::setEdition(lmHostSettings::Essentials);
        lmNavigatorPreferencesGUII navigator;
        lmNavigatorPreferencesGUIW *page = navigator.page();
        QCOMPARE(page->_nav_mode->count(), 2);
        QCOMPARE(page->_nav_mode->itemData(1).toInt(), 3);
        QVERIFY(page->_auto_center->isHidden());

        // A mode stored by a full edition finds no item; storing it writes 0.
        setStored("Navigator mode", 1);
        startPage(navigator);
        QCOMPARE(page->_nav_mode->currentIndex(), -1);
        acceptPage(navigator);
        QCOMPARE(lmStored<int>("Navigator mode"), 0);
        QCOMPARE(lmCallLog::lines().first(), QStringLiteral("lmOSGWidget::setNavMode(-1, 0)"));
    }

    void enablingRulesFollowTheControls()
    {
        lmNavigatorPreferencesGUII navigator;
        startPage(navigator);
        lmNavigatorPreferencesGUIW *page = navigator.page();
        // From the start: orbit off, limited speed without pivot panning.
        QVERIFY(page->_animate_camera_duration->isEnabled());
        QVERIFY(!page->_orbit_detection_area->isEnabled());
        QVERIFY(!page->_orbit_detection_time_label->isEnabled());
        QVERIFY(!page->_panning_speed->isEnabled());
        QVERIFY(page->_pivot_based_panning->isEnabled());

        page->_animate_camera->setChecked(false);
        QVERIFY(!page->_animate_camera_duration->isEnabled());
        QVERIFY(!page->_animate_camera_duration_label->isEnabled());
        page->_orbit_mode->setChecked(true);
        QVERIFY(page->_orbit_detection_area->isEnabled());
        QVERIFY(page->_orbit_detection_time->isEnabled());
        QVERIFY(page->_orbit_detection_area_label->isEnabled());

        page->_pivot_based_panning->setChecked(true);
        QVERIFY(page->_panning_speed->isEnabled());
        QVERIFY(page->_panning_speed_label->isEnabled());
        page->_pivot_based_panning->setChecked(false);
        QVERIFY(!page->_panning_speed->isEnabled());

        page->_navigation_speed_mode->setCurrentIndex(2); // Linear
        QVERIFY(page->_panning_speed->isEnabled());
        QVERIFY(!page->_pivot_based_panning->isEnabled());
        page->_navigation_speed_mode->setCurrentIndex(0);
        QVERIFY(!page->_panning_speed->isEnabled());
        QVERIFY(page->_pivot_based_panning->isEnabled());
    }

    void interactionPresets_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QStringList>("pushes");
        QTest::addColumn<bool>("pivotEnabled");
        QTest::addColumn<bool>("panningSpeedEnabled");
        QTest::newRow("Ondra") << "Ondra"
                               << QStringList{"lmOSGWidget::setInteractionMode(1)",
                                              "lmOSGWidget::setNavInvertDollyAxis(true)",
                                              "lmOSGWidget::setNavInvertWheelDolly(true)",
                                              "lmOSGWidget::setNavSpeedMode(2)",
                                              "lmOSGWidget::setNavDollyAxis(2)",
                                              "lmOSGWidget::setNavDollyToPivot(true)"}
                               << false << true;
        QTest::newRow("Kova") << "Kova"
                              << QStringList{"lmOSGWidget::setInteractionMode(2)",
                                             "lmOSGWidget::setNavInvertWheelDolly(true)",
                                             "lmOSGWidget::setNavUsePivotBasedPanning(true)",
                                             "lmOSGWidget::setNavDollyAxis(2)"}
                              << true << true;
    }

    void interactionPresets()
    {
        QFETCH(QString, mode);
        QFETCH(QStringList, pushes);
        QFETCH(bool, pivotEnabled);
        QFETCH(bool, panningSpeedEnabled);
        lmNavigatorPreferencesGUII navigator;
        startPage(navigator);
        lmNavigatorPreferencesGUIW *page = navigator.page();
        page->_dolly_speed->setValue(3.0); // not part of any preset

        page->_interaction_mode->setCurrentText(mode);
        QCOMPARE(page->_pivot_based_panning->isEnabled(), pivotEnabled);
        QCOMPARE(page->_panning_speed->isEnabled(), panningSpeedEnabled);
        // The preset changes the page only.
        QCOMPARE(lmCallLog::size(), 0);
        QCOMPARE(lmStored<int>("Interaction mode"), 0);

        QCOMPARE(acceptLog(navigator), pushesWith(pushes << "lmOSGWidget::setNavDollySpeed(3)"));

        // Back to LUMO restores its conventions on every preset control.
        page->_interaction_mode->setCurrentText("LUMO");
        QCOMPARE(acceptLog(navigator), pushesWith({"lmOSGWidget::setNavDollySpeed(3)"}));
        QVERIFY(page->_pivot_based_panning->isEnabled());
        QVERIFY(!page->_panning_speed->isEnabled());
    }

    void loadingAStoredModeKeepsTheStoredDetails()
    {
        lmNavigatorPreferencesGUII navigator;
        startPage(navigator);
        setStored("Interaction mode", 1);
        setStored("Navigator speed mode", 0);
        lmPreferences::getData().remove("Navigator invert zoom");
        navigator.updateGUI();
        lmNavigatorPreferencesGUIW *page = navigator.page();
        QCOMPARE(page->_interaction_mode->currentText(), QStringLiteral("Ondra"));
        QCOMPARE(page->_navigation_speed_mode->currentIndex(), 0);
        // Not even a control without a stored value takes the preset.
        QVERIFY(!page->_invert_dolly->isChecked());

        // An unknown mode clears the combo and leaves the controls alone.
        setStored("Interaction mode", 7);
        navigator.updateGUI();
        QCOMPARE(page->_interaction_mode->currentIndex(), -1);
        QCOMPARE(page->_navigation_speed_mode->currentIndex(), 0);
    }

    void wrongTypedKeysAreSkipped()
    {
        lmNavigatorPreferencesGUII navigator;
        startPage(navigator);
        setStored("Navigator mode", 4.0f);
        setStored("Navigator panning speed", 2.0); // double, not float
        setStored("Interaction mode", true);

        navigator.updateGUI();
        lmPreferencesHost::resetUnchanged();
        navigator.apply();
        QStringList expected = defaultPushes();
        expected.removeAll("lmOSGWidget::setNavPanningSpeed(1)");
        expected.removeAll("lmOSGWidget::setInteractionMode(0)");
        QCOMPARE(lmCallLog::lines(), expected);
    }
};

QTEST_MAIN(tst_Navigator)
#include "tst_navigator.moc"

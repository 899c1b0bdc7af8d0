// The navigator page driven as the host and a user drive it: defaults, the
// apply that re-pushes everything but the mode, the enabling rules and the
// interaction presets.
#include "categories/lmNavigatorPreferencesGUI.h"
#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmMessageHelpers.h"
#include "lmPreferencesHost.h"
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

// defaultPushes() with the lines of the given operations replaced.
QStringList pushesWith(const QStringList &replacements)
{
    QStringList lines = defaultPushes();
    for (const QString &replacement : replacements) {
        const QString operation = replacement.left(replacement.indexOf('(') + 1);
        for (QString &line : lines)
            if (line.startsWith(operation))
                line = replacement;
    }
    return lines;
}

void accept(lmNavigatorPreferencesGUII &navigator)
{
    lmPreferencesHost::resetUnchanged();
    navigator.storeGUI();
    navigator.apply();
}

void start(lmNavigatorPreferencesGUII &navigator)
{
    navigator.setDefault(lmPreferences::getData(), false);
    navigator.apply();
    navigator.updateGUI();
    lmCallLog::clear();
}

} // namespace

class tst_Navigator : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void defaultsFillThePageAndAreAllPushedOnce()
    {
        lmNavigatorPreferencesGUII navigator;
        navigator.setDefault(lmPreferences::getData(), true);
        const lmMessage &store = lmPreferences::getData();
        QCOMPARE(store.size(), std::size_t(16));
        QVERIFY(store.get("Interaction mode").type() == typeid(int));
        QVERIFY(store.get("Navigator animate camera duration").type() == typeid(float));
        QVERIFY(store.get("Navigator orbit detection time").type() == typeid(int));
        QCOMPARE(lmStored<int>("Navigator mode"), 3);

        navigator.apply();
        QCOMPARE(lmCallLog::lines(), QStringList("lmOSGWidget::setNavMode(-1, 3)") + defaultPushes());

        navigator.updateGUI();
        lmNavigatorPreferencesGUIW *page = navigator.page();
        QCOMPARE(page->_nav_mode->currentText(), QStringLiteral("TwoAxis"));
        QCOMPARE(page->_nav_mode->count(), 4);
        QCOMPARE(page->_interaction_mode->currentText(), QStringLiteral("LUMO"));
        QCOMPARE(page->_navigation_speed_mode->currentText(), QStringLiteral("Limited"));
        QCOMPARE(page->_dolly_axis->currentText(), QStringLiteral("Vertical Only"));
        QCOMPARE(page->_animate_camera_duration->value(), 20.0);
        QCOMPARE(page->_orbit_detection_area->value(), 40);
        QCOMPARE(page->_orbit_detection_time->maximum(), 99999);
        QCOMPARE(page->_panning_speed->maximum(), 1000.0);
        QCOMPARE(page->_dolly_speed->decimals(), 2);
        QCOMPARE(page->_animate_camera_duration->minimum(), 0.0);
        QVERIFY(!page->_auto_center->isHidden());
    }

    void acceptRePushesAllButAnUnchangedMode()
    {
        lmNavigatorPreferencesGUII navigator;
        start(navigator);
        accept(navigator);
        QCOMPARE(lmCallLog::lines(), defaultPushes());
        QCOMPARE(lmPreferencesHost::unchangedKeys(lmPreferencesHost::categories().front()),
                 std::vector<std::string>{"Navigator mode"});

        // A new mode goes first; edited values are stored and pushed.
        lmNavigatorPreferencesGUIW *page = navigator.page();
        page->_nav_mode->setCurrentText("Orientation");
        page->_orbit_mode->setChecked(true);
        page->_orbit_detection_area->setValue(12);
        page->_dolly_speed->setValue(2.5);
        page->_navigation_speed_mode->setCurrentIndex(0);
        lmCallLog::clear();
        accept(navigator);
        QCOMPARE(lmStored<int>("Navigator mode"), 4);
        QCOMPARE(lmStored<float>("Navigator dolly speed"), 2.5f);
        QCOMPARE(lmCallLog::lines(), QStringList("lmOSGWidget::setNavMode(-1, 4)")
                                         + pushesWith({"lmOSGWidget::setNavOrbitMode(true)",
                                                       "lmOSGWidget::setNavOrbitDetectionArea(12)",
                                                       "lmOSGWidget::setNavDollySpeed(2.5)",
                                                       "lmOSGWidget::setNavSpeedMode(0)"}));
    }

    void analysisModeForcesBothDollyInversions()
    {
        lmHostSettings::setAnalysisMode(true);
        lmNavigatorPreferencesGUII navigator;
        start(navigator);
        accept(navigator);
        QCOMPARE(lmStored<bool>("Navigator invert zoom"), false);
        QCOMPARE(lmCallLog::lines(), pushesWith({"lmOSGWidget::setNavInvertDollyAxis(true)",
                                                 "lmOSGWidget::setNavInvertWheelDolly(true)"}));
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
        lmPreferences::getData().set("Navigator mode", 1, true);
        start(navigator);
        QCOMPARE(page->_nav_mode->currentIndex(), -1);
        accept(navigator);
        QCOMPARE(lmStored<int>("Navigator mode"), 0);
        QCOMPARE(lmCallLog::lines().first(), QStringLiteral("lmOSGWidget::setNavMode(-1, 0)"));
    }

    void enablingRulesFollowTheControls()
    {
        lmNavigatorPreferencesGUII navigator;
        start(navigator);
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
        start(navigator);
        lmNavigatorPreferencesGUIW *page = navigator.page();
        page->_dolly_speed->setValue(3.0); // not part of any preset

        page->_interaction_mode->setCurrentText(mode);
        QCOMPARE(page->_pivot_based_panning->isEnabled(), pivotEnabled);
        QCOMPARE(page->_panning_speed->isEnabled(), panningSpeedEnabled);
        // The preset changes the page only.
        QCOMPARE(lmCallLog::size(), 0);
        QCOMPARE(lmStored<int>("Interaction mode"), 0);

        accept(navigator);
        QCOMPARE(lmCallLog::lines(), pushesWith(pushes << "lmOSGWidget::setNavDollySpeed(3)"));

        // Back to LUMO restores its conventions on every preset control.
        page->_interaction_mode->setCurrentText("LUMO");
        lmCallLog::clear();
        accept(navigator);
        QCOMPARE(lmCallLog::lines(), pushesWith({"lmOSGWidget::setNavDollySpeed(3)"}));
        QVERIFY(page->_pivot_based_panning->isEnabled());
        QVERIFY(!page->_panning_speed->isEnabled());
    }

    void loadingAStoredModeKeepsTheStoredDetails()
    {
        lmNavigatorPreferencesGUII navigator;
        start(navigator);
        lmMessage &store = lmPreferences::getData();
        store.set("Interaction mode", 1, true);
        store.set("Navigator speed mode", 0, true);
        store.remove("Navigator invert zoom");
        navigator.updateGUI();
        lmNavigatorPreferencesGUIW *page = navigator.page();
        QCOMPARE(page->_interaction_mode->currentText(), QStringLiteral("Ondra"));
        QCOMPARE(page->_navigation_speed_mode->currentIndex(), 0);
        // Not even a control without a stored value takes the preset.
        QVERIFY(!page->_invert_dolly->isChecked());

        // An unknown mode clears the combo and leaves the controls alone.
        store.set("Interaction mode", 7, true);
        navigator.updateGUI();
        QCOMPARE(page->_interaction_mode->currentIndex(), -1);
        QCOMPARE(page->_navigation_speed_mode->currentIndex(), 0);
    }

    void wrongTypedKeysAreSkipped()
    {
        lmNavigatorPreferencesGUII navigator;
        start(navigator);
        lmMessage &store = lmPreferences::getData();
        store.set("Navigator mode", 4.0f, true);
        store.set("Navigator panning speed", 2.0, true); // double, not float
        store.set("Interaction mode", true, true);
        navigator.page()->_panning_speed->setValue(7.0);

        lmStderrCapture capture;
        navigator.updateGUI();
        lmPreferencesHost::resetUnchanged();
        navigator.apply();
        const QString printed = capture.text();
        QCOMPARE(printed.count("getFromMessage : Attribute 'Navigator mode' has wrong type"), 2);
        QCOMPARE(printed.count("getFromMessage : Attribute 'Navigator panning speed' has wrong type"), 2);
        QCOMPARE(printed.count("getFromMessage : Attribute 'Interaction mode' has wrong type"), 2);
        QCOMPARE(navigator.page()->_panning_speed->value(), 7.0);
        QStringList expected = defaultPushes();
        expected.removeAll("lmOSGWidget::setNavPanningSpeed(1)");
        expected.removeAll("lmOSGWidget::setInteractionMode(0)");
        QCOMPARE(lmCallLog::lines(), expected);
    }
};

QTEST_MAIN(tst_Navigator)
#include "tst_navigator.moc"

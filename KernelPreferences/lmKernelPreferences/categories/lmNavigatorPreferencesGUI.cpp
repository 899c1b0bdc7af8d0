#include "lmNavigatorPreferencesGUI.h"

#include "lmController.h"
#include "lmNavigator.h"
#include "lmOSGWidget.h"

#include <QSignalBlocker>

namespace {

const lmTypedKey<int> kMode{"Navigator mode", int(lmNavigator::TwoAxis)};
const lmTypedKey<bool> kAutoCenter{"Navigator auto center", false};
const lmTypedKey<bool> kInvertZoom{"Navigator invert zoom", false};
const lmTypedKey<bool> kInvertWheelZoom{"Navigator invert wheel zoom", false};
const lmTypedKey<bool> kAnimateCamera{"Navigator animate camera", true};
const lmTypedKey<float> kAnimateCameraDuration{"Navigator animate camera duration", 20.0f};
const lmTypedKey<bool> kPivotBasedPanning{"Navigator pivot based panning", false};
const lmTypedKey<float> kPanningSpeed{"Navigator panning speed", 1.0f};
const lmTypedKey<int> kSpeedMode{"Navigator speed mode", 1};
const lmTypedKey<float> kDollySpeed{"Navigator dolly speed", 1.0f};
const lmTypedKey<int> kDollyAxis{"Navigator dolly axis", 0};
const lmTypedKey<bool> kDollyToPivot{"Navigator dolly to pivot", false};
const lmTypedKey<bool> kOrbitMode{"Navigator orbit mode", false};
const lmTypedKey<int> kOrbitDetectionArea{"Navigator orbit detection area", 40};
const lmTypedKey<int> kOrbitDetectionTime{"Navigator orbit detection time", 100};
// Written without the area prefix; the persisted name stays as it is.
const lmTypedKey<int> kInteractionMode{"Interaction mode", int(lmNavigator::LumoInteraction)};

const lmKeyTable kKeys{
    kMode,         kAutoCenter,       kInvertZoom, kInvertWheelZoom, kAnimateCamera, kAnimateCameraDuration,
    kPivotBasedPanning, kPanningSpeed, kSpeedMode, kDollySpeed,      kDollyAxis,     kDollyToPivot,
    kOrbitMode,    kOrbitDetectionArea, kOrbitDetectionTime, kInteractionMode,
};

// Indices of the speed-mode and dolly-axis combos, which are stored as such.
enum SpeedModeIndex { Unconstrained = 0, Limited = 1, Linear = 2 };
enum DollyAxisIndex { VerticalOnly = 0, HorizontalOnly = 1, HorizontalAndVertical = 2 };

// Mouse conventions of the interaction presets, indexed like the combo.
struct InteractionPreset
{
    bool invertDolly;
    bool invertWheelDolly;
    int speedMode;
    bool pivotBasedPanning;
    int dollyAxis;
    bool dollyToPivot;
};

const InteractionPreset kPresets[] = {
    {false, false, Limited, false, VerticalOnly, false},         // LUMO
    {true, true, Linear, false, HorizontalAndVertical, true},    // Ondra
    {false, true, Limited, true, HorizontalAndVertical, false},  // Kova
};

} // namespace

lmNavigatorPreferencesGUII::lmNavigatorPreferencesGUII()
    : QObject(nullptr), lmPreferencesPage(this, tr("Navigator"), QString(), kKeys)
{
    page()->_nav_mode->addItem(tr("Trackball"), int(lmNavigator::Trackball));
    page()->_nav_mode->addItem(tr("TwoAxis"), int(lmNavigator::TwoAxis));
    if (!lmController::isEssentialsEdition()) {
        page()->_nav_mode->addItem(tr("Fly"), int(lmNavigator::Fly));
        page()->_nav_mode->addItem(tr("Orientation"), int(lmNavigator::Orientation));
    }
    page()->_nav_mode->setCurrentIndex(0);

    // Names of other tools: not translated.
    page()->_interaction_mode->addItem(QStringLiteral("LUMO"), int(lmNavigator::LumoInteraction));
    page()->_interaction_mode->addItem(QStringLiteral("Ondra"), int(lmNavigator::OndraInteraction));
    page()->_interaction_mode->addItem(QStringLiteral("Kova"), int(lmNavigator::KovaInteraction));
    page()->_interaction_mode->setCurrentIndex(0);

    page()->_orbit_detection_area->setRange(0, 99999);
    page()->_orbit_detection_time->setRange(0, 99999);
    for (QLMWheelPrec *wheel : {page()->_dolly_speed, page()->_panning_speed}) {
        wheel->setRange(0.0, 1000.0);
        wheel->setDecimals(2);
    }
    page()->_animate_camera_duration->setRange(0.0, 10000.0);
    page()->_animate_camera_duration->setDecimals(2);

    if (lmController::isEssentialsEdition())
        page()->_auto_center->hide();

    connect(page()->_animate_camera, &QCheckBox::toggled, this,
            &lmNavigatorPreferencesGUII::toggledAnimateCameraChange);
    connect(page()->_interaction_mode, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &lmNavigatorPreferencesGUII::changedInteractionMode);
    connect(page()->_pivot_based_panning, &QCheckBox::toggled, this,
            &lmNavigatorPreferencesGUII::toggledPivotBasedPanning);
    connect(page()->_navigation_speed_mode, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &lmNavigatorPreferencesGUII::changedNavigationSpeedMode);
    connect(page()->_orbit_mode, &QCheckBox::toggled, this, &lmNavigatorPreferencesGUII::toggledOrbitMode);

    // A mode this edition does not offer shows no item and stores 0.
    bindings.bindShown(
        kMode, page()->_nav_mode, [](QComboBox *combo, int mode) { lmSelectData(combo, mode, lmIfNoItem::Clear); },
        [](const QComboBox *combo) { return combo->currentData().toInt(); });
    // The rest is re-pushed on every apply, so it is never marked unchanged.
    bindings.writeFromHere(lmPageBindings::Plain);
    bindings.bind(
        kInteractionMode, page()->_interaction_mode,
        [](QComboBox *combo, int mode) {
            // Showing the stored mode must not overwrite the stored details
            // with the mode's preset.
            const QSignalBlocker blocker(combo);
            lmSelectData(combo, mode, lmIfNoItem::Clear);
        },
        [](const QComboBox *combo) { return combo->currentData().toInt(); });
    bindings.bind(kAutoCenter, page()->_auto_center);
    bindings.bind(kInvertZoom, page()->_invert_dolly);
    bindings.bind(kInvertWheelZoom, page()->_invert_wheel_dolly);
    bindings.bind(kAnimateCamera, page()->_animate_camera);
    bindings.bind(kAnimateCameraDuration, page()->_animate_camera_duration);
    bindings.bind(kPivotBasedPanning, page()->_pivot_based_panning);
    bindings.bind(kPanningSpeed, page()->_panning_speed);
    bindings.bind(kSpeedMode, page()->_navigation_speed_mode, lmIfNoItem::Clear);
    bindings.bind(kDollySpeed, page()->_dolly_speed);
    bindings.bind(kDollyAxis, page()->_dolly_axis, lmIfNoItem::Clear);
    bindings.bind(kDollyToPivot, page()->_dolly_to_pivot);
    bindings.bind(kOrbitMode, page()->_orbit_mode);
    bindings.bind(kOrbitDetectionArea, page()->_orbit_detection_area);
    bindings.bind(kOrbitDetectionTime, page()->_orbit_detection_time);

    // The enabling rules hold from the start, not only after the first toggle.
    toggledAnimateCameraChange(page()->_animate_camera->isChecked());
    toggledOrbitMode(page()->_orbit_mode->isChecked());
    updatePanningControls();

    addPreferencesGUI(page());
}

void lmNavigatorPreferencesGUII::apply()
{
    const lmMessage &store = getData();

    // Only the navigation mode is change-tracked; everything else is pushed
    // on every apply.
    int mode = 0;
    if (isChanged(kMode) && kMode.read(store, mode))
        lmOSGWidget::setNavMode(-1, static_cast<lmNavigator::Mode>(mode));

    bool flag = false;
    float number = 0.0f;
    int value = 0;
    if (kAutoCenter.read(store, flag))
        lmOSGWidget::setNavAutoCenter(flag);
    if (kInteractionMode.read(store, value))
        lmOSGWidget::setInteractionMode(static_cast<lmNavigator::InteractionMode>(value));
    // The analysis mode always navigates with inverted dolly.
    if (kInvertZoom.read(store, flag))
        lmOSGWidget::setNavInvertDollyAxis(flag || lmController::getAnalysisMode());
    if (kInvertWheelZoom.read(store, flag))
        lmOSGWidget::setNavInvertWheelDolly(flag || lmController::getAnalysisMode());
    if (kPivotBasedPanning.read(store, flag))
        lmOSGWidget::setNavUsePivotBasedPanning(flag);
    if (kPanningSpeed.read(store, number))
        lmOSGWidget::setNavPanningSpeed(number);
    if (kSpeedMode.read(store, value))
        lmOSGWidget::setNavSpeedMode(value);
    if (kDollySpeed.read(store, number))
        lmOSGWidget::setNavDollySpeed(number);
    if (kDollyAxis.read(store, value))
        lmOSGWidget::setNavDollyAxis(value);
    if (kDollyToPivot.read(store, flag))
        lmOSGWidget::setNavDollyToPivot(flag);
    if (kAnimateCamera.read(store, flag))
        lmOSGWidget::setAnimateNavCam(flag);
    if (kAnimateCameraDuration.read(store, number))
        lmOSGWidget::setAnimateNavCamDuration(number);
    if (kOrbitMode.read(store, flag))
        lmOSGWidget::setNavOrbitMode(flag);
    if (kOrbitDetectionArea.read(store, value))
        lmOSGWidget::setNavOrbitDetectionArea(value);
    if (kOrbitDetectionTime.read(store, value))
        lmOSGWidget::setNavOrbitDetectionTime(value);
}

void lmNavigatorPreferencesGUII::updateGUI()
{
    loadBound();
}

void lmNavigatorPreferencesGUII::storeGUI()
{
    storeBound();
}

void lmNavigatorPreferencesGUII::toggledAnimateCameraChange(bool on)
{
    page()->_animate_camera_duration->setEnabled(on);
    page()->_animate_camera_duration_label->setEnabled(on);
}

void lmNavigatorPreferencesGUII::changedInteractionMode(int mode)
{
    if (mode < 0 || mode >= int(sizeof(kPresets) / sizeof(kPresets[0])))
        return;
    const InteractionPreset &preset = kPresets[mode];
    page()->_invert_dolly->setChecked(preset.invertDolly);
    page()->_invert_wheel_dolly->setChecked(preset.invertWheelDolly);
    page()->_navigation_speed_mode->setCurrentIndex(preset.speedMode);
    page()->_pivot_based_panning->setChecked(preset.pivotBasedPanning);
    page()->_dolly_axis->setCurrentIndex(preset.dollyAxis);
    page()->_dolly_to_pivot->setChecked(preset.dollyToPivot);
    updatePanningControls();
}

void lmNavigatorPreferencesGUII::toggledPivotBasedPanning(bool)
{
    updatePanningControls();
}

void lmNavigatorPreferencesGUII::changedNavigationSpeedMode(int)
{
    updatePanningControls();
}

void lmNavigatorPreferencesGUII::toggledOrbitMode(bool on)
{
    page()->_orbit_detection_area->setEnabled(on);
    page()->_orbit_detection_area_label->setEnabled(on);
    page()->_orbit_detection_time->setEnabled(on);
    page()->_orbit_detection_time_label->setEnabled(on);
}

// The panning speed only takes effect with pivot-based panning or the linear
// speed mode, and the linear speed mode overrides pivot-based panning.
void lmNavigatorPreferencesGUII::updatePanningControls()
{
    const bool linear = page()->_navigation_speed_mode->currentIndex() == Linear;
    const bool panningSpeed = linear || page()->_pivot_based_panning->isChecked();
    page()->_panning_speed->setEnabled(panningSpeed);
    page()->_panning_speed_label->setEnabled(panningSpeed);
    page()->_pivot_based_panning->setEnabled(!linear);
}

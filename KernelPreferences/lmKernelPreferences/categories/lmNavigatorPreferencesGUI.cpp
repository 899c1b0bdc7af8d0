#include "lmNavigatorPreferencesGUI.h"

#include "lmController.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "lmNavigator.h"
#include "lmOSGWidget.h"

#include <QSignalBlocker>

namespace {

const char *const kMode = "Navigator mode";
const char *const kAutoCenter = "Navigator auto center";
const char *const kInvertZoom = "Navigator invert zoom";
const char *const kInvertWheelZoom = "Navigator invert wheel zoom";
const char *const kAnimateCamera = "Navigator animate camera";
const char *const kAnimateCameraDuration = "Navigator animate camera duration";
const char *const kPivotBasedPanning = "Navigator pivot based panning";
const char *const kPanningSpeed = "Navigator panning speed";
const char *const kSpeedMode = "Navigator speed mode";
const char *const kDollySpeed = "Navigator dolly speed";
const char *const kDollyAxis = "Navigator dolly axis";
const char *const kDollyToPivot = "Navigator dolly to pivot";
const char *const kOrbitMode = "Navigator orbit mode";
const char *const kOrbitDetectionArea = "Navigator orbit detection area";
const char *const kOrbitDetectionTime = "Navigator orbit detection time";
// Written without the area prefix; the persisted name stays as it is.
const char *const kInteractionMode = "Interaction mode";

const lmKeyTable kKeys{
    lmKey<int>(kMode, int(lmNavigator::TwoAxis)),
    lmKey<bool>(kAutoCenter, false),
    lmKey<bool>(kInvertZoom, false),
    lmKey<bool>(kInvertWheelZoom, false),
    lmKey<bool>(kAnimateCamera, true),
    lmKey<float>(kAnimateCameraDuration, 20.0f),
    lmKey<bool>(kPivotBasedPanning, false),
    lmKey<float>(kPanningSpeed, 1.0f),
    lmKey<int>(kSpeedMode, 1),
    lmKey<float>(kDollySpeed, 1.0f),
    lmKey<int>(kDollyAxis, 0),
    lmKey<bool>(kDollyToPivot, false),
    lmKey<bool>(kOrbitMode, false),
    lmKey<int>(kOrbitDetectionArea, 40),
    lmKey<int>(kOrbitDetectionTime, 100),
    lmKey<int>(kInteractionMode, int(lmNavigator::LumoInteraction)),
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

void setComboByData(QComboBox *combo, int value)
{
    combo->setCurrentIndex(combo->findData(value));
}

} // namespace

lmNavigatorPreferencesGUII::lmNavigatorPreferencesGUII()
    : QObject(nullptr), lmPreferences(tr("Navigator"), QString()), m_page(new lmNavigatorPreferencesGUIW)
{
    m_page->_nav_mode->addItem(tr("Trackball"), int(lmNavigator::Trackball));
    m_page->_nav_mode->addItem(tr("TwoAxis"), int(lmNavigator::TwoAxis));
    if (!lmController::isEssentialsEdition()) {
        m_page->_nav_mode->addItem(tr("Fly"), int(lmNavigator::Fly));
        m_page->_nav_mode->addItem(tr("Orientation"), int(lmNavigator::Orientation));
    }
    m_page->_nav_mode->setCurrentIndex(0);

    // Names of other tools: not translated.
    m_page->_interaction_mode->addItem(QStringLiteral("LUMO"), int(lmNavigator::LumoInteraction));
    m_page->_interaction_mode->addItem(QStringLiteral("Ondra"), int(lmNavigator::OndraInteraction));
    m_page->_interaction_mode->addItem(QStringLiteral("Kova"), int(lmNavigator::KovaInteraction));
    m_page->_interaction_mode->setCurrentIndex(0);

    m_page->_orbit_detection_area->setRange(0, 99999);
    m_page->_orbit_detection_time->setRange(0, 99999);
    for (QLMWheelPrec *wheel : {m_page->_dolly_speed, m_page->_panning_speed}) {
        wheel->setRange(0.0, 1000.0);
        wheel->setDecimals(2);
    }
    m_page->_animate_camera_duration->setRange(0.0, 10000.0);
    m_page->_animate_camera_duration->setDecimals(2);

    if (lmController::isEssentialsEdition())
        m_page->_auto_center->hide();

    connect(m_page->_animate_camera, &QCheckBox::toggled, this,
            &lmNavigatorPreferencesGUII::toggledAnimateCameraChange);
    connect(m_page->_interaction_mode, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &lmNavigatorPreferencesGUII::changedInteractionMode);
    connect(m_page->_pivot_based_panning, &QCheckBox::toggled, this,
            &lmNavigatorPreferencesGUII::toggledPivotBasedPanning);
    connect(m_page->_navigation_speed_mode, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &lmNavigatorPreferencesGUII::changedNavigationSpeedMode);
    connect(m_page->_orbit_mode, &QCheckBox::toggled, this, &lmNavigatorPreferencesGUII::toggledOrbitMode);

    // The enabling rules hold from the start, not only after the first toggle.
    toggledAnimateCameraChange(m_page->_animate_camera->isChecked());
    toggledOrbitMode(m_page->_orbit_mode->isChecked());
    updatePanningControls();

    addPreferencesGUI(m_page);
}

lmNavigatorPreferencesGUII::~lmNavigatorPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmNavigatorPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmNavigatorPreferencesGUII::apply()
{
    const lmMessage &store = getData();

    // Only the navigation mode is change-tracked; everything else is pushed
    // on every apply.
    int mode = 0;
    if (isChanged(kMode) && getFromMessage(store, kMode, mode))
        lmOSGWidget::setNavMode(-1, static_cast<lmNavigator::Mode>(mode));

    bool flag = false;
    float number = 0.0f;
    int value = 0;
    if (getFromMessage(store, kAutoCenter, flag))
        lmOSGWidget::setNavAutoCenter(flag);
    if (getFromMessage(store, kInteractionMode, value))
        lmOSGWidget::setInteractionMode(static_cast<lmNavigator::InteractionMode>(value));
    // The analysis mode always navigates with inverted dolly.
    if (getFromMessage(store, kInvertZoom, flag))
        lmOSGWidget::setNavInvertDollyAxis(flag || lmController::getAnalysisMode());
    if (getFromMessage(store, kInvertWheelZoom, flag))
        lmOSGWidget::setNavInvertWheelDolly(flag || lmController::getAnalysisMode());
    if (getFromMessage(store, kPivotBasedPanning, flag))
        lmOSGWidget::setNavUsePivotBasedPanning(flag);
    if (getFromMessage(store, kPanningSpeed, number))
        lmOSGWidget::setNavPanningSpeed(number);
    if (getFromMessage(store, kSpeedMode, value))
        lmOSGWidget::setNavSpeedMode(value);
    if (getFromMessage(store, kDollySpeed, number))
        lmOSGWidget::setNavDollySpeed(number);
    if (getFromMessage(store, kDollyAxis, value))
        lmOSGWidget::setNavDollyAxis(value);
    if (getFromMessage(store, kDollyToPivot, flag))
        lmOSGWidget::setNavDollyToPivot(flag);
    if (getFromMessage(store, kAnimateCamera, flag))
        lmOSGWidget::setAnimateNavCam(flag);
    if (getFromMessage(store, kAnimateCameraDuration, number))
        lmOSGWidget::setAnimateNavCamDuration(number);
    if (getFromMessage(store, kOrbitMode, flag))
        lmOSGWidget::setNavOrbitMode(flag);
    if (getFromMessage(store, kOrbitDetectionArea, value))
        lmOSGWidget::setNavOrbitDetectionArea(value);
    if (getFromMessage(store, kOrbitDetectionTime, value))
        lmOSGWidget::setNavOrbitDetectionTime(value);
}

void lmNavigatorPreferencesGUII::updateGUI()
{
    const lmMessage &store = getData();
    bool flag = false;
    float number = 0.0f;
    int value = 0;
    m_loaded.clear();

    if (getFromMessage(store, kMode, value))
        setComboByData(m_page->_nav_mode, value);
    if (getFromMessage(store, kInteractionMode, value)) {
        // Showing the stored mode must not overwrite the stored details with
        // the mode's preset.
        const QSignalBlocker blocker(m_page->_interaction_mode);
        setComboByData(m_page->_interaction_mode, value);
    }
    if (getFromMessage(store, kAutoCenter, flag))
        m_page->_auto_center->setChecked(flag);
    if (getFromMessage(store, kInvertZoom, flag))
        m_page->_invert_dolly->setChecked(flag);
    if (getFromMessage(store, kInvertWheelZoom, flag))
        m_page->_invert_wheel_dolly->setChecked(flag);
    if (getFromMessage(store, kAnimateCamera, flag))
        m_page->_animate_camera->setChecked(flag);
    if (getFromMessage(store, kAnimateCameraDuration, number)) {
        m_page->_animate_camera_duration->setValue(number);
        m_loaded.loaded(kAnimateCameraDuration, m_page->_animate_camera_duration, number);
    }
    if (getFromMessage(store, kPivotBasedPanning, flag))
        m_page->_pivot_based_panning->setChecked(flag);
    if (getFromMessage(store, kPanningSpeed, number))
        m_page->_panning_speed->setValue(number);
    if (getFromMessage(store, kSpeedMode, value)) {
        m_page->_navigation_speed_mode->setCurrentIndex(value);
        m_loaded.loaded(kSpeedMode, m_page->_navigation_speed_mode, value);
    }
    if (getFromMessage(store, kDollySpeed, number))
        m_page->_dolly_speed->setValue(number);
    if (getFromMessage(store, kDollyAxis, value)) {
        m_page->_dolly_axis->setCurrentIndex(value);
        m_loaded.loaded(kDollyAxis, m_page->_dolly_axis, value);
    }
    if (getFromMessage(store, kDollyToPivot, flag))
        m_page->_dolly_to_pivot->setChecked(flag);
    if (getFromMessage(store, kOrbitMode, flag))
        m_page->_orbit_mode->setChecked(flag);
    if (getFromMessage(store, kOrbitDetectionArea, value))
        m_page->_orbit_detection_area->setValue(value);
    if (getFromMessage(store, kOrbitDetectionTime, value))
        m_page->_orbit_detection_time->setValue(value);
}

void lmNavigatorPreferencesGUII::storeGUI()
{
    lmMessage &store = getData();

    // An item-less selection reads as 0.
    const int mode = m_page->_nav_mode->currentData().toInt();
    if (!setToMessage(store, kMode, mode, true))
        addUnchanged(kMode);

    // The rest is re-pushed on every apply, so it is never marked unchanged.
    auto set = [&store](const char *key, const boost::any &value) { store.set(key, value, true); };
    set(kInteractionMode, m_page->_interaction_mode->currentData().toInt());
    set(kAutoCenter, m_page->_auto_center->isChecked());
    set(kInvertZoom, m_page->_invert_dolly->isChecked());
    set(kInvertWheelZoom, m_page->_invert_wheel_dolly->isChecked());
    set(kAnimateCamera, m_page->_animate_camera->isChecked());
    set(kAnimateCameraDuration, m_loaded.value(kAnimateCameraDuration, m_page->_animate_camera_duration,
                                               float(m_page->_animate_camera_duration->value())));
    set(kPivotBasedPanning, m_page->_pivot_based_panning->isChecked());
    set(kPanningSpeed, float(m_page->_panning_speed->value()));
    set(kSpeedMode, m_loaded.value(kSpeedMode, m_page->_navigation_speed_mode,
                                   m_page->_navigation_speed_mode->currentIndex()));
    set(kDollySpeed, float(m_page->_dolly_speed->value()));
    set(kDollyAxis, m_loaded.value(kDollyAxis, m_page->_dolly_axis, m_page->_dolly_axis->currentIndex()));
    set(kDollyToPivot, m_page->_dolly_to_pivot->isChecked());
    set(kOrbitMode, m_page->_orbit_mode->isChecked());
    set(kOrbitDetectionArea, m_page->_orbit_detection_area->value());
    set(kOrbitDetectionTime, m_page->_orbit_detection_time->value());
}

void lmNavigatorPreferencesGUII::toggledAnimateCameraChange(bool on)
{
    m_page->_animate_camera_duration->setEnabled(on);
    m_page->_animate_camera_duration_label->setEnabled(on);
}

void lmNavigatorPreferencesGUII::changedInteractionMode(int mode)
{
    if (mode < 0 || mode >= int(sizeof(kPresets) / sizeof(kPresets[0])))
        return;
    const InteractionPreset &preset = kPresets[mode];
    m_page->_invert_dolly->setChecked(preset.invertDolly);
    m_page->_invert_wheel_dolly->setChecked(preset.invertWheelDolly);
    m_page->_navigation_speed_mode->setCurrentIndex(preset.speedMode);
    m_page->_pivot_based_panning->setChecked(preset.pivotBasedPanning);
    m_page->_dolly_axis->setCurrentIndex(preset.dollyAxis);
    m_page->_dolly_to_pivot->setChecked(preset.dollyToPivot);
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
    m_page->_orbit_detection_area->setEnabled(on);
    m_page->_orbit_detection_area_label->setEnabled(on);
    m_page->_orbit_detection_time->setEnabled(on);
    m_page->_orbit_detection_time_label->setEnabled(on);
}

// The panning speed only takes effect with pivot-based panning or the linear
// speed mode, and the linear speed mode overrides pivot-based panning.
void lmNavigatorPreferencesGUII::updatePanningControls()
{
    const bool linear = m_page->_navigation_speed_mode->currentIndex() == Linear;
    const bool panningSpeed = linear || m_page->_pivot_based_panning->isChecked();
    m_page->_panning_speed->setEnabled(panningSpeed);
    m_page->_panning_speed_label->setEnabled(panningSpeed);
    m_page->_pivot_based_panning->setEnabled(!linear);
}

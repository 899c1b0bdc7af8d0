#include "lmVirtualRealityPreferencesGUI.h"

#include "lmHMDService.h"
#include "lmImmersiveInteractionService.h"
#include "lmKernelServiceFactory.h"
#include "lmOSGWidget.h"
#include "lmPreferencesService.h"
#include "lmStarVRHandler.h"

#include <QSignalBlocker>

#include <cstring>
#include <initializer_list>
#include <type_traits>
#include <variant>

namespace {

const char *const kGroundMode = "VR Teleport Ground Mode";
const char *const kTeleportRange = "VR Teleport Range";
const char *const kVisualiseHands = "VR Visualise Hands";
const char *const kCollisionObjects = "VR Auto Create Collision Objects";
const char *const kTooltipsOnStart = "VR Show Tooltips on start";
const char *const kStarVRFoveated = "StarVR Foveated Rendering Enabled";
const char *const kStarVRFovFactor = "StarVR Foveated FOV Factor";
const char *const kStarVRFoveatedScale = "StarVR Foveated Resolution Scale";
const char *const kStarVRNonFoveatedScale = "StarVR Non-Foveated Resolution Scale";
const char *const kStarVRFrontScale = "StarVR Front View Resolution Scale";
const char *const kStarVRSideScale = "StarVR Side View Resolution Scale";
const char *const kStarVRSingleTexture = "StarVR Single Texture Per Eye";
const char *const kEyeTracking = "HMD Eye Tracking";
const char *const kFoveatedRendering = "HMD Foveated Rendering";
const char *const kFovealRegionSize = "HMD Foveal Region Size";
const char *const kQualityPreset = "HMD Foveated Quality Preset";
const char *const kInnerQuality = "HMD Foveated Custom Quality Inner";
const char *const kMiddleQuality = "HMD Foveated Custom Quality Middle";
const char *const kPeripheryQuality = "HMD Foveated Custom Quality Periphery";

struct lmVRKey
{
    const char *key;
    std::variant<int, float, bool> defaultValue;
};

// In the order the defaults are written.
const lmVRKey kKeys[] = {
    {kGroundMode, 1},
    {kTeleportRange, 15000.0f},
    {kVisualiseHands, 1},
    {kCollisionObjects, true},
    {kTooltipsOnStart, true},
    {kStarVRFoveated, false},
    {kStarVRFovFactor, 0.35f},
    {kStarVRFoveatedScale, 0.6f},
    {kStarVRNonFoveatedScale, 0.4f},
    {kStarVRFrontScale, 1.0f},
    {kStarVRSideScale, 1.0f},
    {kStarVRSingleTexture, false},
    {kEyeTracking, false},
    {kFoveatedRendering, false},
    {kFovealRegionSize, 0.3f},
    {kQualityPreset, 0},
    {kInnerQuality, int(lmRenderTypes::TwoSamples)},
    {kMiddleQuality, int(lmRenderTypes::OneSamplePer4Pixels)},
    {kPeripheryQuality, int(lmRenderTypes::OneSamplePer16Pixels)},
};

const char *const kInteractionKeys[] = {kGroundMode, kTeleportRange, kVisualiseHands, kCollisionObjects,
                                        kTooltipsOnStart};
const char *const kHMDKeys[] = {kEyeTracking, kFoveatedRendering, kFovealRegionSize, kQualityPreset};
const char *const kRingKeys[] = {kInnerQuality, kMiddleQuality, kPeripheryQuality};
const char *const kStarVRKeys[] = {kStarVRFoveated,         kStarVRFovFactor,  kStarVRFoveatedScale,
                                   kStarVRNonFoveatedScale, kStarVRFrontScale, kStarVRSideScale,
                                   kStarVRSingleTexture};

// Item data of the "Shading Quality" combo.
const int kCustomPreset = 3;

template <class T>
T defaultOf(const char *key)
{
    for (const lmVRKey &row : kKeys)
        if (std::strcmp(row.key, key) == 0)
            return std::get<T>(row.defaultValue);
    return T();
}

// Typed reads fall back to the key's default.
int readInt(const lmPreferencesService &prefs, const char *key)
{
    return prefs.getInt(key, defaultOf<int>(key));
}

float readFloat(const lmPreferencesService &prefs, const char *key)
{
    return prefs.getFloat(key, defaultOf<float>(key));
}

bool readBool(const lmPreferencesService &prefs, const char *key)
{
    return prefs.getBool(key, defaultOf<bool>(key));
}

lmRenderTypes::ShadingQuality readRing(const lmPreferencesService &prefs, const char *key)
{
    return static_cast<lmRenderTypes::ShadingQuality>(readInt(prefs, key));
}

lmRenderTypes::ShadingQuality ringOf(const QComboBox *combo)
{
    return static_cast<lmRenderTypes::ShadingQuality>(combo->currentData().toInt());
}

lmKernelServiceFactory &services()
{
    return lmKernelServiceFactory::the();
}

// Index combos ignore indices they do not hold; data combos ignore values
// none of their items carries. Either way the combo keeps its selection.
void setIndex(QComboBox *combo, int index)
{
    const QSignalBlocker blocker(combo);
    if (index >= 0 && index < combo->count())
        combo->setCurrentIndex(index);
}

void setData(QComboBox *combo, int data)
{
    const QSignalBlocker blocker(combo);
    const int index = combo->findData(data);
    if (index >= 0)
        combo->setCurrentIndex(index);
}

void setChecked(QAbstractButton *button, bool checked)
{
    const QSignalBlocker blocker(button);
    button->setChecked(checked);
}

template <class Widget>
void setValue(Widget *widget, double value)
{
    const QSignalBlocker blocker(widget);
    widget->setValue(value);
}

void setUpSlider(QLMSlider *slider, double minimum, double maximum)
{
    slider->setRange(minimum, maximum);
    slider->setSteps(0.01, 0.1);
    slider->setDecimals(2);
}

} // namespace

lmVirtualRealityPreferencesGUII::lmVirtualRealityPreferencesGUII() : lmPreferencesCategory(tr("Virtual Reality"))
{
    setupUi(this);

    _teleportRange->setRange(0.0, 1.0e6);
    _teleportRange->setDecimals(1);
    _teleportRange->setSingleStep(100.0);
    setUpSlider(_starVRFovFactor, 0.1, 1.0);
    for (QLMSlider *scale : {_starVRFoveatedResolutionScale, _starVRNonFoveatedResolutionScale,
                             _starVRFrontViewResolutionScale, _starVRSideViewResolutionScale})
        setUpSlider(scale, 0.1, 2.0);
    setUpSlider(_fovealRegionSize, 0.05, 1.0);

    _shadingQuality->addItem(tr("Highest Performance"), 0);
    _shadingQuality->addItem(tr("Balanced"), 1);
    _shadingQuality->addItem(tr("Highest Quality"), 2);
    _shadingQuality->addItem(tr("Custom"), kCustomPreset);
    for (QComboBox *ring : {_innerQuality, _middleQuality, _peripheryQuality}) {
        ring->addItem(tr("1 Sample"), int(lmRenderTypes::OneSample));
        ring->addItem(tr("1 Sample per 4 pixel"), int(lmRenderTypes::OneSamplePer4Pixels));
        ring->addItem(tr("1 Sample per 16 pixel"), int(lmRenderTypes::OneSamplePer16Pixels));
        ring->addItem(tr("2 Samples"), int(lmRenderTypes::TwoSamples));
        ring->addItem(tr("4 Samples"), int(lmRenderTypes::FourSamples));
        ring->addItem(tr("8 Samples"), int(lmRenderTypes::EightSamples));
    }
    // Shown once the page knows the store and the driver.
    _shadingQualityWarning->hide();
    _shadingRateImageNote->hide();
    toggledNativeFoveatedRendering(_starVRFoveatedRendering->isChecked());

    registerCategory();

    connect(_shadingQuality, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &lmVirtualRealityPreferencesGUII::indexChangedShadingQuality);
    for (QComboBox *ring : {_innerQuality, _middleQuality, _peripheryQuality})
        connect(ring, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &lmVirtualRealityPreferencesGUII::indexChangedCustomQuality);
    connect(_starVRFoveatedRendering, &QCheckBox::toggled, this,
            &lmVirtualRealityPreferencesGUII::toggledNativeFoveatedRendering);
}

lmVirtualRealityPreferencesGUII::~lmVirtualRealityPreferencesGUII()
{
    if (lmPreferencesService *prefs = services().getService<lmPreferencesService>())
        for (const lmVRKey &row : kKeys)
            prefs->remove(row.key);
}

void lmVirtualRealityPreferencesGUII::setDefault(bool overwrite)
{
    lmPreferencesService *prefs = services().getService<lmPreferencesService>();
    if (!prefs)
        return;
    for (const lmVRKey &row : kKeys) {
        const QString key = row.key;
        std::visit(
            [&](auto value) {
                using T = decltype(value);
                if constexpr (std::is_same<T, int>::value)
                    prefs->setInt(key, value, overwrite);
                else if constexpr (std::is_same<T, float>::value)
                    prefs->setFloat(key, value, overwrite);
                else
                    prefs->setBool(key, value, overwrite);
            },
            row.defaultValue);
    }
}

void lmVirtualRealityPreferencesGUII::apply()
{
    lmPreferencesService *prefs = services().getService<lmPreferencesService>();
    if (!prefs)
        return;
    const auto anyChanged = [this](const auto &keys) {
        for (const char *key : keys)
            if (isChanged(key))
                return true;
        return false;
    };

    // What the next headset session starts with.
    if (anyChanged(kInteractionKeys)) {
        if (lmImmersiveInteractionService *interaction = services().getService<lmImmersiveInteractionService>()) {
            if (isChanged(kGroundMode))
                interaction->setTeleportGroundMode(readInt(*prefs, kGroundMode));
            if (isChanged(kTeleportRange))
                interaction->setTeleportRange(readFloat(*prefs, kTeleportRange));
            if (isChanged(kVisualiseHands))
                interaction->setDefaultControllerVisualization(readInt(*prefs, kVisualiseHands));
            if (isChanged(kCollisionObjects))
                interaction->setAutoCreateCollisionObjects(readBool(*prefs, kCollisionObjects));
            if (isChanged(kTooltipsOnStart))
                interaction->setShowTooltipsOnStart(readBool(*prefs, kTooltipsOnStart));
        }
    }

    const bool ringsChanged = anyChanged(kRingKeys);
    const bool starVRChanged = anyChanged(kStarVRKeys);
    const bool starVRPushed = starVRChanged && lmStarVRHandler::getHandler();
    if (!anyChanged(kHMDKeys) && !ringsChanged && !starVRPushed)
        return;
    lmHMDService *hmd = services().getService<lmHMDService>();
    if (!hmd)
        return;

    // A request the headset cannot honour must not persist.
    if (isChanged(kEyeTracking)) {
        const bool eyeTracking = readBool(*prefs, kEyeTracking);
        hmd->setEyeTrackingEnabled(eyeTracking);
        if (eyeTracking && !hmd->isEyeTrackingActive()) {
            prefs->setBool(kEyeTracking, false, true);
            setChecked(_eyeTracking, false);
        }
    }

    if (isChanged(kFoveatedRendering))
        hmd->setFoveatedRenderingEnabled(readBool(*prefs, kFoveatedRendering));
    if (isChanged(kFovealRegionSize))
        hmd->setFovealRegionSize(readFloat(*prefs, kFovealRegionSize));
    if (isChanged(kQualityPreset))
        hmd->setFoveatedQualityPreset(readInt(*prefs, kQualityPreset));

    // The rings travel together.
    if (ringsChanged)
        hmd->setFoveatedCustomQuality(lmdFoveatedQuality(readRing(*prefs, kInnerQuality),
                                                         readRing(*prefs, kMiddleQuality),
                                                         readRing(*prefs, kPeripheryQuality)));

    if (starVRPushed)
        applyStarVR(*prefs, *hmd);
}

void lmVirtualRealityPreferencesGUII::applyStarVR(const lmPreferencesService &prefs, lmHMDService &hmd)
{
    // An active StarVR display only picks the settings up when re-initialised.
    const lmOSGWidget::lmDisplay display = lmOSGWidget::getDisplayType();
    if (display == lmOSGWidget::lmDisplayStarVR)
        lmOSGWidget::setDisplayType(lmOSGWidget::lmDisplayDefault);

    lmdStarVRRenderSettings settings = hmd.getStarVRRenderSettings();
    if (isChanged(kStarVRFoveated))
        settings.setUseNativeFoveatedRendering(readBool(prefs, kStarVRFoveated));
    if (isChanged(kStarVRFovFactor))
        settings.setFoveatedFovFactor(readFloat(prefs, kStarVRFovFactor));
    if (isChanged(kStarVRFoveatedScale))
        settings.setFoveatedResolutionScale(readFloat(prefs, kStarVRFoveatedScale));
    if (isChanged(kStarVRNonFoveatedScale))
        settings.setNonFoveatedResolutionScale(readFloat(prefs, kStarVRNonFoveatedScale));
    if (isChanged(kStarVRFrontScale))
        settings.setFrontViewResolutionScale(readFloat(prefs, kStarVRFrontScale));
    if (isChanged(kStarVRSideScale))
        settings.setSideViewResolutionScale(readFloat(prefs, kStarVRSideScale));
    if (isChanged(kStarVRSingleTexture))
        settings.setUseSingleTexture(readBool(prefs, kStarVRSingleTexture));
    hmd.setStarVRRenderSettings(settings);

    if (lmOSGWidget::getDisplayType() != display)
        lmOSGWidget::setDisplayType(display);
}

void lmVirtualRealityPreferencesGUII::updateGUI()
{
    lmPreferencesService *prefs = services().getService<lmPreferencesService>();
    if (!prefs)
        return;

    m_loaded.clear();
    const auto showIndex = [&](QComboBox *combo, const char *key) {
        const int value = readInt(*prefs, key);
        setIndex(combo, value);
        m_loaded.loaded(key, combo, value);
    };
    const auto showData = [&](QComboBox *combo, const char *key) {
        const int value = readInt(*prefs, key);
        setData(combo, value);
        m_loaded.loaded(key, combo, value);
    };
    const auto showValue = [&](auto *control, const char *key) {
        const float value = readFloat(*prefs, key);
        setValue(control, value);
        m_loaded.loaded(key, control, value);
    };

    showIndex(_groundMode, kGroundMode);
    showValue(_teleportRange, kTeleportRange);
    showIndex(_visualization, kVisualiseHands);
    setChecked(_createCollisionObjects, readBool(*prefs, kCollisionObjects));
    setChecked(_showTooltips, readBool(*prefs, kTooltipsOnStart));
    setChecked(_starVRFoveatedRendering, readBool(*prefs, kStarVRFoveated));
    showValue(_starVRFovFactor, kStarVRFovFactor);
    showValue(_starVRFoveatedResolutionScale, kStarVRFoveatedScale);
    showValue(_starVRNonFoveatedResolutionScale, kStarVRNonFoveatedScale);
    showValue(_starVRFrontViewResolutionScale, kStarVRFrontScale);
    showValue(_starVRSideViewResolutionScale, kStarVRSideScale);
    setChecked(_starVRSingleTexture, readBool(*prefs, kStarVRSingleTexture));
    setChecked(_eyeTracking, readBool(*prefs, kEyeTracking));
    setChecked(_foveatedRendering, readBool(*prefs, kFoveatedRendering));
    showValue(_fovealRegionSize, kFovealRegionSize);
    showData(_shadingQuality, kQualityPreset);
    showData(_innerQuality, kInnerQuality);
    showData(_middleQuality, kMiddleQuality);
    showData(_peripheryQuality, kPeripheryQuality);

    // The page's own reactions were blocked with the signals.
    toggledNativeFoveatedRendering(_starVRFoveatedRendering->isChecked());
    updateShadingQualityWarning();
    if (lmHMDService *hmd = services().getService<lmHMDService>())
        _shadingRateImageNote->setVisible(!hmd->isShadingRateImageSupported());
}

void lmVirtualRealityPreferencesGUII::storeGUI()
{
    lmPreferencesService *prefs = services().getService<lmPreferencesService>();
    if (!prefs)
        return;
    const auto storeInt = [&](const char *key, const QWidget *control, int value) {
        if (!prefs->setInt(key, m_loaded.value(key, control, value), true))
            addUnchanged(key);
    };
    const auto storeFloat = [&](const char *key, const QWidget *control, double value) {
        if (!prefs->setFloat(key, m_loaded.value(key, control, float(value)), true))
            addUnchanged(key);
    };
    const auto storeBool = [&](const char *key, bool value) {
        if (!prefs->setBool(key, value, true))
            addUnchanged(key);
    };

    storeInt(kGroundMode, _groundMode, _groundMode->currentIndex());
    storeFloat(kTeleportRange, _teleportRange, _teleportRange->value());
    storeInt(kVisualiseHands, _visualization, _visualization->currentIndex());
    storeBool(kCollisionObjects, _createCollisionObjects->isChecked());
    storeBool(kTooltipsOnStart, _showTooltips->isChecked());
    storeBool(kStarVRFoveated, _starVRFoveatedRendering->isChecked());
    storeFloat(kStarVRFovFactor, _starVRFovFactor, _starVRFovFactor->value());
    storeFloat(kStarVRFoveatedScale, _starVRFoveatedResolutionScale, _starVRFoveatedResolutionScale->value());
    storeFloat(kStarVRNonFoveatedScale, _starVRNonFoveatedResolutionScale, _starVRNonFoveatedResolutionScale->value());
    storeFloat(kStarVRFrontScale, _starVRFrontViewResolutionScale, _starVRFrontViewResolutionScale->value());
    storeFloat(kStarVRSideScale, _starVRSideViewResolutionScale, _starVRSideViewResolutionScale->value());
    storeBool(kStarVRSingleTexture, _starVRSingleTexture->isChecked());
    storeBool(kEyeTracking, _eyeTracking->isChecked());
    storeBool(kFoveatedRendering, _foveatedRendering->isChecked());
    storeFloat(kFovealRegionSize, _fovealRegionSize, _fovealRegionSize->value());
    storeInt(kQualityPreset, _shadingQuality, _shadingQuality->currentData().toInt());
    storeInt(kInnerQuality, _innerQuality, ringOf(_innerQuality));
    storeInt(kMiddleQuality, _middleQuality, ringOf(_middleQuality));
    storeInt(kPeripheryQuality, _peripheryQuality, ringOf(_peripheryQuality));
}

void lmVirtualRealityPreferencesGUII::indexChangedShadingQuality(int)
{
    updateShadingQualityWarning();
}

void lmVirtualRealityPreferencesGUII::indexChangedCustomQuality(int)
{
    updateShadingQualityWarning();
}

void lmVirtualRealityPreferencesGUII::toggledNativeFoveatedRendering(bool on)
{
    // Only the foveation split depends on native foveated rendering; the view
    // scales and the texture layout apply either way.
    for (QWidget *widget : std::initializer_list<QWidget *>{
             _starVRFovFactor, _starVRFovFactor_label, _starVRFoveatedResolutionScale,
             _starVRFoveatedResolutionScale_label, _starVRNonFoveatedResolutionScale,
             _starVRNonFoveatedResolutionScale_label})
        widget->setEnabled(on);
}

void lmVirtualRealityPreferencesGUII::updateShadingQualityWarning()
{
    const int preset = _shadingQuality->currentData().toInt();
    lmdFoveatedQuality quality;
    if (preset == kCustomPreset) {
        quality = lmdFoveatedQuality(ringOf(_innerQuality), ringOf(_middleQuality), ringOf(_peripheryQuality));
    } else {
        lmHMDService *hmd = services().getService<lmHMDService>();
        if (!hmd) {
            _shadingQualityWarning->hide();
            return;
        }
        quality = hmd->getFoveatedPresetQuality(preset);
    }

    // Advisory only: the multisampling presets are the render options' business.
    const int samples = quality.getMinimumMultisamplingSamples();
    _shadingQualityWarning->setText(tr("Requires RT-AA with %1x Multisampling").arg(samples));
    _shadingQualityWarning->setToolTip(
        tr("The selected shading quality requires Realtime Antialiasing with at least %1 Multisampling samples.\n"
           "Check the number of samples used by the Realtime Antialising levels in \n"
           "Preferences > Render Options > Visualization Advanced > Realtime Antialiasing Presets.")
            .arg(samples));
    _shadingQualityWarning->setVisible(samples >= 2);
}

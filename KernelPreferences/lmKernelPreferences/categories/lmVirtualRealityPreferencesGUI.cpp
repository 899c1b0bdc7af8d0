#include "lmVirtualRealityPreferencesGUI.h"

#include "lmHMDService.h"
#include "lmImmersiveInteractionService.h"
#include "lmKernelServiceFactory.h"
#include "lmOSGWidget.h"
#include "lmPreferencesService.h"
#include "lmStarVRHandler.h"

#include <QSignalBlocker>

#include <initializer_list>

namespace {

const lmTypedKey<int> kGroundMode{"VR Teleport Ground Mode", 1};
const lmTypedKey<float> kTeleportRange{"VR Teleport Range", 15000.0f};
const lmTypedKey<int> kVisualiseHands{"VR Visualise Hands", 1};
const lmTypedKey<bool> kCollisionObjects{"VR Auto Create Collision Objects", true};
const lmTypedKey<bool> kTooltipsOnStart{"VR Show Tooltips on start", true};
const lmTypedKey<bool> kStarVRFoveated{"StarVR Foveated Rendering Enabled", false};
const lmTypedKey<float> kStarVRFovFactor{"StarVR Foveated FOV Factor", 0.35f};
const lmTypedKey<float> kStarVRFoveatedScale{"StarVR Foveated Resolution Scale", 0.6f};
const lmTypedKey<float> kStarVRNonFoveatedScale{"StarVR Non-Foveated Resolution Scale", 0.4f};
const lmTypedKey<float> kStarVRFrontScale{"StarVR Front View Resolution Scale", 1.0f};
const lmTypedKey<float> kStarVRSideScale{"StarVR Side View Resolution Scale", 1.0f};
const lmTypedKey<bool> kStarVRSingleTexture{"StarVR Single Texture Per Eye", false};
const lmTypedKey<bool> kEyeTracking{"HMD Eye Tracking", false};
const lmTypedKey<bool> kFoveatedRendering{"HMD Foveated Rendering", false};
const lmTypedKey<float> kFovealRegionSize{"HMD Foveal Region Size", 0.3f};
const lmTypedKey<int> kQualityPreset{"HMD Foveated Quality Preset", 0};
const lmTypedKey<int> kInnerQuality{"HMD Foveated Custom Quality Inner", int(lmRenderTypes::TwoSamples)};
const lmTypedKey<int> kMiddleQuality{"HMD Foveated Custom Quality Middle", int(lmRenderTypes::OneSamplePer4Pixels)};
const lmTypedKey<int> kPeripheryQuality{"HMD Foveated Custom Quality Periphery",
                                        int(lmRenderTypes::OneSamplePer16Pixels)};

const lmKeyTable kKeys{
    kGroundMode,       kTeleportRange,     kVisualiseHands,   kCollisionObjects,       kTooltipsOnStart,
    kStarVRFoveated,   kStarVRFovFactor,   kStarVRFoveatedScale, kStarVRNonFoveatedScale, kStarVRFrontScale,
    kStarVRSideScale,  kStarVRSingleTexture, kEyeTracking,    kFoveatedRendering,      kFovealRegionSize,
    kQualityPreset,    kInnerQuality,      kMiddleQuality,    kPeripheryQuality,
};

const char *const kInteractionKeys[] = {kGroundMode.name, kTeleportRange.name, kVisualiseHands.name,
                                        kCollisionObjects.name, kTooltipsOnStart.name};
const char *const kHMDKeys[] = {kEyeTracking.name, kFoveatedRendering.name, kFovealRegionSize.name,
                                kQualityPreset.name};
const char *const kRingKeys[] = {kInnerQuality.name, kMiddleQuality.name, kPeripheryQuality.name};
const char *const kStarVRKeys[] = {kStarVRFoveated.name,         kStarVRFovFactor.name,  kStarVRFoveatedScale.name,
                                   kStarVRNonFoveatedScale.name, kStarVRFrontScale.name, kStarVRSideScale.name,
                                   kStarVRSingleTexture.name};

// Item data of the "Shading Quality" combo.
const int kCustomPreset = 3;

lmRenderTypes::ShadingQuality readRing(const lmPreferencesService &prefs, const lmTypedKey<int> &key)
{
    return static_cast<lmRenderTypes::ShadingQuality>(lmServiceValue(prefs, key));
}

lmRenderTypes::ShadingQuality ringOf(const QComboBox *combo)
{
    return static_cast<lmRenderTypes::ShadingQuality>(combo->currentData().toInt());
}

lmKernelServiceFactory &services()
{
    return lmKernelServiceFactory::the();
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

    m_bindings.bind(kGroundMode, _groundMode, lmIfNoItem::Keep);
    m_bindings.bind(kTeleportRange, _teleportRange);
    m_bindings.bind(kVisualiseHands, _visualization, lmIfNoItem::Keep);
    m_bindings.bind(kCollisionObjects, _createCollisionObjects);
    m_bindings.bind(kTooltipsOnStart, _showTooltips);
    m_bindings.bind(kStarVRFoveated, _starVRFoveatedRendering);
    m_bindings.bind(kStarVRFovFactor, _starVRFovFactor);
    m_bindings.bind(kStarVRFoveatedScale, _starVRFoveatedResolutionScale);
    m_bindings.bind(kStarVRNonFoveatedScale, _starVRNonFoveatedResolutionScale);
    m_bindings.bind(kStarVRFrontScale, _starVRFrontViewResolutionScale);
    m_bindings.bind(kStarVRSideScale, _starVRSideViewResolutionScale);
    m_bindings.bind(kStarVRSingleTexture, _starVRSingleTexture);
    m_bindings.bind(kEyeTracking, _eyeTracking);
    m_bindings.bind(kFoveatedRendering, _foveatedRendering);
    m_bindings.bind(kFovealRegionSize, _fovealRegionSize);
    m_bindings.bindData(kQualityPreset, _shadingQuality, lmIfNoItem::Keep);
    m_bindings.bindData(kInnerQuality, _innerQuality, lmIfNoItem::Keep);
    m_bindings.bindData(kMiddleQuality, _middleQuality, lmIfNoItem::Keep);
    m_bindings.bindData(kPeripheryQuality, _peripheryQuality, lmIfNoItem::Keep);

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
        lmServiceRemove(*prefs, kKeys);
}

void lmVirtualRealityPreferencesGUII::setDefault(bool overwrite)
{
    if (lmPreferencesService *prefs = services().getService<lmPreferencesService>())
        lmServiceWriteDefaults(*prefs, kKeys, overwrite);
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
            if (isChanged(kGroundMode.name))
                interaction->setTeleportGroundMode(lmServiceValue(*prefs, kGroundMode));
            if (isChanged(kTeleportRange.name))
                interaction->setTeleportRange(lmServiceValue(*prefs, kTeleportRange));
            if (isChanged(kVisualiseHands.name))
                interaction->setDefaultControllerVisualization(lmServiceValue(*prefs, kVisualiseHands));
            if (isChanged(kCollisionObjects.name))
                interaction->setAutoCreateCollisionObjects(lmServiceValue(*prefs, kCollisionObjects));
            if (isChanged(kTooltipsOnStart.name))
                interaction->setShowTooltipsOnStart(lmServiceValue(*prefs, kTooltipsOnStart));
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
    if (isChanged(kEyeTracking.name)) {
        const bool eyeTracking = lmServiceValue(*prefs, kEyeTracking);
        hmd->setEyeTrackingEnabled(eyeTracking);
        if (eyeTracking && !hmd->isEyeTrackingActive()) {
            prefs->setBool(kEyeTracking.name, false, true);
            const QSignalBlocker blocker(_eyeTracking);
            _eyeTracking->setChecked(false);
        }
    }

    if (isChanged(kFoveatedRendering.name))
        hmd->setFoveatedRenderingEnabled(lmServiceValue(*prefs, kFoveatedRendering));
    if (isChanged(kFovealRegionSize.name))
        hmd->setFovealRegionSize(lmServiceValue(*prefs, kFovealRegionSize));
    if (isChanged(kQualityPreset.name))
        hmd->setFoveatedQualityPreset(lmServiceValue(*prefs, kQualityPreset));

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
    if (isChanged(kStarVRFoveated.name))
        settings.setUseNativeFoveatedRendering(lmServiceValue(prefs, kStarVRFoveated));
    if (isChanged(kStarVRFovFactor.name))
        settings.setFoveatedFovFactor(lmServiceValue(prefs, kStarVRFovFactor));
    if (isChanged(kStarVRFoveatedScale.name))
        settings.setFoveatedResolutionScale(lmServiceValue(prefs, kStarVRFoveatedScale));
    if (isChanged(kStarVRNonFoveatedScale.name))
        settings.setNonFoveatedResolutionScale(lmServiceValue(prefs, kStarVRNonFoveatedScale));
    if (isChanged(kStarVRFrontScale.name))
        settings.setFrontViewResolutionScale(lmServiceValue(prefs, kStarVRFrontScale));
    if (isChanged(kStarVRSideScale.name))
        settings.setSideViewResolutionScale(lmServiceValue(prefs, kStarVRSideScale));
    if (isChanged(kStarVRSingleTexture.name))
        settings.setUseSingleTexture(lmServiceValue(prefs, kStarVRSingleTexture));
    hmd.setStarVRRenderSettings(settings);

    if (lmOSGWidget::getDisplayType() != display)
        lmOSGWidget::setDisplayType(display);
}

void lmVirtualRealityPreferencesGUII::updateGUI()
{
    lmPreferencesService *prefs = services().getService<lmPreferencesService>();
    if (!prefs)
        return;
    m_bindings.load(*prefs, lmServiceBindings::Blocked);

    // The page's own reactions were blocked with the signals.
    toggledNativeFoveatedRendering(_starVRFoveatedRendering->isChecked());
    updateShadingQualityWarning();
    if (lmHMDService *hmd = services().getService<lmHMDService>())
        _shadingRateImageNote->setVisible(!hmd->isShadingRateImageSupported());
}

void lmVirtualRealityPreferencesGUII::storeGUI()
{
    if (lmPreferencesService *prefs = services().getService<lmPreferencesService>())
        m_bindings.store(*prefs, [this](const char *key) { addUnchanged(key); });
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

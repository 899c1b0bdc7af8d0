#include "lmRenderOptionsPreferencesGUI.h"

#include "exCursorProgress.h"
#include "lmController.h"
#include "lmLights.h"
#include "lmOSGWidget.h"
#include "lmPlatform.h"
#include "lmScenegraph.h"

#include <QColorDialog>
#include <QDoubleValidator>
#include <QStringList>
#include <QTableWidgetItem>

#include <algorithm>
#include <array>
#include <sstream>

namespace {

using Colors = std::vector<osg::Color3f>;

const lmTypedKey<bool> kEnableAntialias{"RenderOptions enable antialiase", false};
const lmTypedKey<unsigned int> kPostprocessAntialias{"RenderOptions enable postprocess antialias", 0u};
const lmTypedKey<float> kAntialiasDistance{"RenderOptions antialiase distance", 0.2f};
const lmTypedKey<float> kAntialiasScale{"RenderOptions antialiase scale", 2.0f};
const lmTypedKey<double> kAntialiasTime{"RenderOptions antialiase time", 1.0};
const lmTypedKey<bool> kAntialiasHighQuality{"RenderOptions antialiase high quality", false};
// The default depends on the application; the table computes it.
const lmTypedKey<Colors> kBackgroundColors{"RenderOptions background colors", {}};
const lmTypedKey<std::vector<float>> kBackgroundInts{"RenderOptions background ints", {1.0f, 0.0f}};
const lmTypedKey<bool> kSortTrans{"RenderOptions sort trans", true};
const lmTypedKey<bool> kZWriteTrans{"RenderOptions zwrite trans", false};
const lmTypedKey<bool> kFastFullscreen{"RenderOptions fast fullscreen", true};
const lmTypedKey<int> kHeadlightMode{"RenderOptions headlight mode", 3};
const lmTypedKey<bool> kCoordinateSystem{"RenderOptions coordinate system", false};
const lmTypedKey<bool> kAuxiliaryNodes{"RenderOptions auxiliary nodes", true};
const lmTypedKey<bool> kViewCube{"RenderOptions viewcube", true};
const lmTypedKey<bool> kGlContextSharing{"RenderOptions gl context sharing", true};
const lmTypedKey<bool> kCacheWholeScene{"RenderOptions cache whole scene", false};
const lmTypedKey<float> kHdrReferenceWhite{"RenderOptions HDR Reference White", 250.0f};
const lmTypedKey<bool> kRgb10{"RenderOptions 10bit rgb", false};
const lmTypedKey<bool> kWideGamut{"RenderOptions Wide Gamut", false};
const lmTypedKey<bool> kCorrectTwoSidedLighting{"RenderOptions correct two sided lighting", true};
const lmTypedKey<bool> kSinglePassStereo{"RenderOptions single pass stereo", false};
const lmTypedKey<bool> kOcclusionCulling{"RenderOptions occlusion culling", false};
const lmTypedKey<bool> kPointHeadlight{"RenderOptions use point headlight", false};
const lmTypedKey<bool> kZUp{"RenderOptions z-up", true};
const lmTypedKey<bool> kClippingPlaneAdaption{"RenderOptions clipping plane adaption", false};
const lmTypedKey<bool> kForceGlFinish{"RenderOptions force glFinish", false};
const lmTypedKey<int> kHardwareAntialiasSamples{"RenderOptions hardware antialiasing samples", 0};
const lmTypedKey<bool> kHardwareAntialiasAuto{"RenderOptions hardware antialiasing auto", false};
const lmTypedKey<int> kHardwareAntialiasQuality{"RenderOptions hardware antialiasing quality", 0};
// Realtime antialiasing presets, one entry per level: Low, Medium, High, Ultra.
// Ultra relies on supersampling instead of more multisamples.
const std::array<lmTypedKey<int>, 4> kMultisampleQuality = {{{"RenderOptions multisample quality low", 2},
                                                             {"RenderOptions multisample quality medium", 4},
                                                             {"RenderOptions multisample quality high", 8},
                                                             {"RenderOptions multisample quality ultra", 4}}};
const std::array<lmTypedKey<int>, 4> kVrsQuality = {{{"RenderOptions vrs quality low", 1},
                                                     {"RenderOptions vrs quality medium", 2},
                                                     {"RenderOptions vrs quality high", 3},
                                                     {"RenderOptions vrs quality ultra", 2}}};
const std::array<lmTypedKey<bool>, 4> kUsePixelfilter = {{{"RenderOptions use pixelfilter low", true},
                                                          {"RenderOptions use pixelfilter medium", true},
                                                          {"RenderOptions use pixelfilter high", true},
                                                          {"RenderOptions use pixelfilter ultra", true}}};
const std::array<lmTypedKey<bool>, 4> kSupersampleFactor = {{{"RenderOptions supersample factor low", false},
                                                             {"RenderOptions supersample factor medium", false},
                                                             {"RenderOptions supersample factor high", false},
                                                             {"RenderOptions supersample factor ultra", true}}};
const std::array<lmTypedKey<int>, 4> kRaytracingQuality = {
    {{"RenderOptions raytracing supersampling quality low", 2},
     {"RenderOptions raytracing supersampling quality medium", 4},
     {"RenderOptions raytracing supersampling quality high", 8},
     {"RenderOptions raytracing supersampling quality ultra", 16}}};
const lmTypedKey<bool> kSliEnable{"RenderOptions nvidia sli enable", false};
const lmTypedKey<int> kSliMode{"RenderOptions nvidia sli mode", 1};
const lmTypedKey<bool> kDisableSleep{"RenderOptions disable sleep", false};
const lmTypedKey<bool> kLimitNearFar{"RenderOptions limit near far plane", false};
const lmTypedKey<float> kNearPlane{"RenderOptions near plane", 10.0f};
const lmTypedKey<float> kFarPlane{"RenderOptions far plane", 100000.0f};
const lmTypedKey<bool> kDownscale{"RenderOptions downscale", false};
const lmTypedKey<int> kDownscaleQuality{"RenderOptions downscale quality", 0};
const lmTypedKey<bool> kFixedRes{"RenderOptions fixed res", false};
const lmTypedKey<int> kFixedResX{"RenderOptions fixed resx", 1280};
const lmTypedKey<int> kFixedResY{"RenderOptions fixed resy", 720};
const lmTypedKey<bool> kMaterialPreview{"RenderOptions interactive material preview", true};
const lmTypedKey<int> kCursorSize{"RenderOptions progress cursor size", 32};
const lmTypedKey<bool> kCursorStatic{"RenderOptions progress cursor static", false};
const lmTypedKey<bool> kCursorVisible{"RenderOptions progress cursor visible", true};
const lmTypedKey<bool> kShowCameras{"RenderOptions show cameras", true};
const lmTypedKey<bool> kShowLights{"RenderOptions show lights", true};
const lmTypedKey<bool> kShowJoints{"RenderOptions show joints", false};
const lmTypedKey<std::string> kActiveGpus{"RenderOptions active raytracing GPUs", std::string()};

// Keys of earlier versions: never written, still cleaned up.
const char *const kLocalLights = "RenderOptions local lights";
const char *const kUseBackBuffer = "RenderOptions use back buffer";

Colors defaultBackgroundColors()
{
    if (lmPlatform::getApplicationName() == QLatin1String("lumomed"))
        return {osg::Color3f(0.0f, 0.0f, 0.0f), osg::Color3f(0.0f, 0.0f, 0.0f)};
    // Written as the page shows them, so an untouched page stores them unchanged.
    return {osg::Color3f(0.207843f, 0.207843f, 0.207843f), osg::Color3f(0.749020f, 0.749020f, 0.749020f)};
}

const lmKeyTable kKeys{
    kEnableAntialias,
    kPostprocessAntialias,
    kAntialiasDistance,
    kAntialiasScale,
    kAntialiasTime,
    kAntialiasHighQuality,
    lmKeyComputed<Colors>(kBackgroundColors, defaultBackgroundColors),
    kBackgroundInts,
    kSortTrans,
    kZWriteTrans,
    kFastFullscreen,
    kHeadlightMode,
    kCoordinateSystem,
    kAuxiliaryNodes,
    kViewCube,
    kGlContextSharing,
    kCacheWholeScene,
    kHdrReferenceWhite,
    kRgb10,
    kWideGamut,
    kCorrectTwoSidedLighting,
    kSinglePassStereo,
    kOcclusionCulling,
    kPointHeadlight,
    kZUp,
    kClippingPlaneAdaption,
    kForceGlFinish,
    kHardwareAntialiasSamples,
    kHardwareAntialiasAuto,
    kHardwareAntialiasQuality,
    kMultisampleQuality[0],
    kMultisampleQuality[1],
    kMultisampleQuality[2],
    kMultisampleQuality[3],
    kVrsQuality[0],
    kVrsQuality[1],
    kVrsQuality[2],
    kVrsQuality[3],
    kUsePixelfilter[0],
    kUsePixelfilter[1],
    kUsePixelfilter[2],
    kUsePixelfilter[3],
    kSupersampleFactor[0],
    kSupersampleFactor[1],
    kSupersampleFactor[2],
    kSupersampleFactor[3],
    kRaytracingQuality[0],
    kRaytracingQuality[1],
    kRaytracingQuality[2],
    kRaytracingQuality[3],
    kSliEnable,
    kSliMode,
    kDisableSleep,
    kLimitNearFar,
    kNearPlane,
    kFarPlane,
    kDownscale,
    kDownscaleQuality,
    kFixedRes,
    kFixedResX,
    kFixedResY,
    kMaterialPreview,
    kCursorSize,
    kCursorStatic,
    kCursorVisible,
    kShowCameras,
    kShowLights,
    kShowJoints,
    kActiveGpus,
    lmKeyWithoutDefault<bool>(kLocalLights),
    lmKeyWithoutDefault<bool>(kUseBackBuffer),
};

using SetVrsQuality = void (*)(lmVrsQuality);
using SetAntialiasingQuality = void (*)(int, bool, bool, int);
const std::array<SetVrsQuality, 4> kSetVrsQuality = {
    &lmOSGWidget::setVariableRateShadingQualityLow, &lmOSGWidget::setVariableRateShadingQualityMedium,
    &lmOSGWidget::setVariableRateShadingQualityHigh, &lmOSGWidget::setVariableRateShadingQualityUltra};
const std::array<SetAntialiasingQuality, 4> kSetAntialiasingQuality = {
    &lmOSGWidget::setAntialiasingQualityLow, &lmOSGWidget::setAntialiasingQualityMedium,
    &lmOSGWidget::setAntialiasingQualityHigh, &lmOSGWidget::setAntialiasingQualityUltra};

const unsigned int kAllGpus = 0xFFFFFFFFu;

struct Preset
{
    QComboBox *multisampling;
    QCheckBox *pixelfilter;
    QCheckBox *supersampling;
    QComboBox *raytracing;
    QComboBox *vrs;
};

std::array<Preset, 4> presetsOf(lmRenderOptionsPreferencesGUIW *page)
{
    return {{
        {page->_multisamplingLow, page->_pixelfilterLow, page->_supersamplingLow, page->_raytracingLow, page->_vrsLow},
        {page->_multisamplingMedium, page->_pixelfilterMedium, page->_supersamplingMedium, page->_raytracingMedium,
         page->_vrsMedium},
        {page->_multisamplingHigh, page->_pixelfilterHigh, page->_supersamplingHigh, page->_raytracingHigh,
         page->_vrsHigh},
        {page->_multisamplingUltra, page->_pixelfilterUltra, page->_supersamplingUltra, page->_raytracingUltra,
         page->_vrsUltra},
    }};
}

template <class T>
bool read(const lmTypedKey<T> &key, T &out)
{
    return key.read(lmPreferences::getData(), out);
}

// The stored value, or the fallback when it cannot be read.
template <class T>
T readOr(const lmTypedKey<T> &key, typename lmTypedKey<T>::Value fallback)
{
    read(key, fallback);
    return fallback;
}

QString colorText(float r, float g, float b)
{
    return QString::asprintf("%f %f %f", double(r), double(g), double(b));
}

// "r g b" as the table shows it; missing or unreadable components are 0.
osg::Color3f colorFromText(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    float rgb[3] = {0.0f, 0.0f, 0.0f};
    for (int i = 0; i < 3 && i < parts.size(); ++i)
        rgb[i] = parts[i].toFloat();
    return osg::Color3f(rgb[0], rgb[1], rgb[2]);
}

QString cellText(const QTableWidget *table, int row, int column)
{
    const QTableWidgetItem *item = table->item(row, column);
    return item ? item->text() : QString();
}

void appendBackgroundRow(QTableWidget *table, const QString &color, const QString &position)
{
    const int row = table->rowCount();
    table->insertRow(row);
    table->setItem(row, 0, new QTableWidgetItem(color));
    table->setItem(row, 1, new QTableWidgetItem(position));
}

// Items "1 Sample", "2 Samples", ... up to maxSamples, each carrying its count.
void fillSampleCounts(QComboBox *combo, int maxSamples)
{
    combo->clear();
    for (int samples = 1; samples <= maxSamples; samples *= 2)
        combo->addItem(samples == 1 ? lmRenderOptionsPreferencesGUII::tr("1 Sample")
                                    : lmRenderOptionsPreferencesGUII::tr("%1 Samples").arg(samples),
                       samples);
}

} // namespace

lmRenderOptionsPreferencesGUII::lmRenderOptionsPreferencesGUII()
    : QObject(nullptr), lmPreferencesPage(this, tr("Render Options"), QString(), kKeys)
{
    lmRenderOptionsPreferencesGUIW *p = page();
    const std::array<Preset, 4> presets = presetsOf(p);
    for (const Preset &preset : presets) {
        fillSampleCounts(preset.multisampling, 16);
        fillSampleCounts(preset.raytracing, 64);
        fillSampleCounts(preset.vrs, 8);
    }
    for (QLineEdit *edit : {p->_aaTime, p->_nearPlane, p->_farPlane})
        edit->setValidator(new QDoubleValidator(edit));

    bindings.bind(kEnableAntialias, p->_stillframeAA);
    bindings.bind(
        kPostprocessAntialias, p->_postprocessAA, [](QCheckBox *box, unsigned int on) { box->setChecked(on != 0); },
        [](const QCheckBox *box) { return box->isChecked() ? 1u : 0u; });
    bindings.bind(kAntialiasTime, p->_aaTime);
    bindings.bind(kAntialiasHighQuality, p->_openGLInteractive);
    bindings.bind(kSortTrans, p->_sortTrans);
    bindings.bind(kZWriteTrans, p->_zwriteTrans);
    bindings.bind(kHeadlightMode, p->_headlightMode, lmIfNoItem::Keep);
    bindings.bind(kCoordinateSystem, p->_coordinateSystem);
    bindings.bind(kAuxiliaryNodes, p->_auxiliaryNodes);
    bindings.bind(kViewCube, p->_viewCube);
    bindings.bind(kCacheWholeScene, p->_cacheGeometry);
    bindings.bind(kHdrReferenceWhite, p->_hdrReferenceWhite);
    bindings.bind(kRgb10, p->_rgb10);
    bindings.bind(kWideGamut, p->_wideGamut);
    bindings.bind(kSinglePassStereo, p->_singlePassStereo);
    bindings.bind(kOcclusionCulling, p->_occlusionCulling);
    bindings.bind(kPointHeadlight, p->_pointHeadlight);
    bindings.bind(kZUp, p->_zUp);
    bindings.bind(kForceGlFinish, p->_forceGLFinish);
    bindings.bind(kHardwareAntialiasAuto, p->_aaAuto);
    // A quality beyond the items shows, stores and pushes as the last one.
    bindings.bindShown(
        kHardwareAntialiasQuality, p->_aaQuality,
        [](QComboBox *combo, int quality) { combo->setCurrentIndex(std::max(0, std::min(quality, combo->count() - 1))); },
        [](const QComboBox *combo) { return combo->currentIndex(); });
    for (std::size_t level = 0; level < 4; ++level)
        bindings.bindData(kMultisampleQuality[level], presets[level].multisampling, lmIfNoItem::Keep);
    for (std::size_t level = 0; level < 4; ++level)
        bindings.bind(kVrsQuality[level], presets[level].vrs, lmIfNoItem::Keep);
    for (std::size_t level = 0; level < 4; ++level)
        bindings.bind(kUsePixelfilter[level], presets[level].pixelfilter);
    for (std::size_t level = 0; level < 4; ++level)
        bindings.bind(kSupersampleFactor[level], presets[level].supersampling);
    for (std::size_t level = 0; level < 4; ++level)
        bindings.bindData(kRaytracingQuality[level], presets[level].raytracing, lmIfNoItem::Keep);
    bindings.bind(kSliMode, p->_sliMode, lmIfNoItem::Keep);
    bindings.bind(kDisableSleep, p->_disableSleep);
    bindings.bind(kLimitNearFar, p->_limitNearFar);
    bindings.bind(kNearPlane, p->_nearPlane);
    bindings.bind(kFarPlane, p->_farPlane);
    bindings.bind(kDownscale, p->_downscale);
    bindings.bind(kDownscaleQuality, p->_downscaleQuality, lmIfNoItem::Keep);
    bindings.bind(kFixedRes, p->_fixedRes);
    bindings.bind(kFixedResX, p->_fixedResX);
    bindings.bind(kFixedResY, p->_fixedResY);
    bindings.bind(kMaterialPreview, p->_materialPreview);
    // Shown as a percentage of the wheel's base size; the page never stores
    // a wheel smaller than that.
    bindings.bindShown(
        kCursorSize, p->_progressSize,
        [](QSpinBox *spin, int size) {
            const int baseSize = exCursorProgress::getBaseSize();
            if (baseSize > 0)
                spin->setValue(qRound(double(size) / baseSize * 100.0));
        },
        [](const QSpinBox *spin) { return exCursorProgress::getBaseSize() * std::max(spin->value(), 100) / 100; });
    // The page shows the store, also for the settings the host can switch
    // outside the dialog: the page is filled before the stored values reach
    // the host, and an untouched page must store back what it was given.
    bindings.bind(kCursorStatic, p->_progressStatic);
    bindings.bind(kCursorVisible, p->_progressVisible);
    bindings.bind(kShowCameras, p->_showCameras);
    bindings.bind(kShowLights, p->_showLights);
    bindings.bind(kShowJoints, p->_showJoints);
    bindings.bind(kActiveGpus, p->_activeGpus);

    addPreferencesGUI(p);

    connect(p->_addBackground, &QPushButton::clicked, this, &lmRenderOptionsPreferencesGUII::clickedAdd);
    connect(p->_chooseBackgroundColor, &QPushButton::clicked, this,
            &lmRenderOptionsPreferencesGUII::clickedChooseColor);
    connect(p->_deleteBackground, &QPushButton::clicked, this, &lmRenderOptionsPreferencesGUII::clickedDelete);
}

bool lmRenderOptionsPreferencesGUII::anyChanged(std::initializer_list<const char *> keys) const
{
    return std::any_of(keys.begin(), keys.end(), [this](const char *key) { return isChanged(key); });
}

unsigned int lmRenderOptionsPreferencesGUII::parseGpuMask(const std::string &text)
{
    if (text.empty() || text == "all")
        return kAllGpus;
    // GPUs are numbered from 1; reading stops at the first piece that is no number.
    unsigned int mask = 0;
    std::istringstream in(text);
    int gpu = 0;
    while (in >> gpu) {
        mask |= 1u << ((static_cast<unsigned int>(gpu) - 1u) % 32u);
        char separator = 0;
        if (!(in >> separator) || separator != ',')
            break;
    }
    return mask;
}

void lmRenderOptionsPreferencesGUII::applyHeadlightType()
{
    const bool point = readOr(kPointHeadlight, false);
    if (osg::NodePtr headlight = lmScenegraph::getHeadlight())
        lmLights::changeLightType(headlight, point ? "PointLight" : "DirectionalLight");
}

void lmRenderOptionsPreferencesGUII::applyHeadlightMode()
{
    int mode = 0;
    if (!read(kHeadlightMode, mode))
        return;
    lmScenegraph::setHeadlightMode(mode);
    // "Auto" and "Ignore" leave the headlight switch to the scene.
    if (mode == 1)
        lmOSGWidget::enableHeadlight(1);
    else if (mode == 2)
        lmOSGWidget::enableHeadlight(0);
}

void lmRenderOptionsPreferencesGUII::apply()
{
    // Every setting lands while the renderer is paused; one redraw at the end shows them together.
    const bool renderEnabled = lmOSGWidget::isRenderEnabled();
    lmOSGWidget::enableRender(0);

    if (isChanged(kEnableAntialias)) {
        bool on = false;
        if (lmController::isRestrictedEdition())
            lmOSGWidget::enableAntialiasing(1);
        else if (read(kEnableAntialias, on))
            lmOSGWidget::enableAntialiasing(on ? 1 : 0);
    }

    unsigned int postprocess = 0;
    if (isChanged(kPostprocessAntialias) && read(kPostprocessAntialias, postprocess))
        lmOSGWidget::setPostprocessAntialiasing(postprocess);

    if (anyChanged({kAntialiasDistance, kAntialiasScale, kAntialiasTime})) {
        const float distance = readOr(kAntialiasDistance, 0.2f);
        const float scale = readOr(kAntialiasScale, 1.0f);
        const double time = readOr(kAntialiasTime, 1.0);
        lmOSGWidget::setAntialiasing(distance, scale, time);
    }
    // High-quality antialiasing is a per-session mode; the stored flag is never pushed.
    if (lmOSGWidget::getHighQualityAntialiasing())
        lmOSGWidget::setHighQualityAntialiasing(false);

    if (anyChanged({kBackgroundColors, kBackgroundInts})) {
        const auto colors = readOr(kBackgroundColors, std::vector<osg::Color3f>());
        const auto positions = readOr(kBackgroundInts, std::vector<float>());
        lmOSGWidget::setAllGradientBackgrounds(colors, positions);
    }

    if (isChanged(kSortTrans))
        lmOSGWidget::setSortTrans(readOr(kSortTrans, true) ? 1 : 0);
    if (isChanged(kZWriteTrans))
        lmOSGWidget::setZWriteTrans(readOr(kZWriteTrans, true) ? 1 : 0);

    bool flag = false;
    if (isChanged(kCoordinateSystem) && read(kCoordinateSystem, flag))
        lmOSGWidget::showCoordinateSystem(flag ? 1 : 0);
    if (isChanged(kViewCube) && read(kViewCube, flag))
        lmOSGWidget::showViewCube(flag);
    if (isChanged(kAuxiliaryNodes) && read(kAuxiliaryNodes, flag))
        lmOSGWidget::setAuxiliaryNodesVisibleDuringAntialiasing(flag);

    if (isChanged(kHdrReferenceWhite))
        lmOSGWidget::setHdrReferenceWhite(readOr(kHdrReferenceWhite, 250.0f));
    if (isChanged(kRgb10))
        lmOSGWidget::setRGB10(readOr(kRgb10, false));
    if (isChanged(kWideGamut))
        lmOSGWidget::setRGB16F(readOr(kWideGamut, false));
    if (isChanged(kSinglePassStereo))
        lmOSGWidget::setUseSinglePassStereo(readOr(kSinglePassStereo, false));
    if (isChanged(kOcclusionCulling))
        lmOSGWidget::setOcclusionCulling(readOr(kOcclusionCulling, false) ? 1 : 0);

    if (isChanged(kPointHeadlight))
        applyHeadlightType();
    if (isChanged(kHeadlightMode))
        applyHeadlightMode();

    if (isChanged(kZUp))
        lmOSGWidget::setCameraZUp(readOr(kZUp, false), true);
    lmOSGWidget::showLogo(false);

    if (isChanged(kForceGlFinish))
        lmOSGWidget::setForceGLFinish(readOr(kForceGlFinish, false));
    if (isChanged(kHardwareAntialiasAuto))
        lmOSGWidget::setAutoSuperSampling(readOr(kHardwareAntialiasAuto, false));

    for (std::size_t level = 0; level < 4; ++level)
        if (isChanged(kVrsQuality[level]))
            kSetVrsQuality[level](static_cast<lmVrsQuality>(readOr(kVrsQuality[level], 0)));
    // The four values of a level reach the host together.
    for (std::size_t level = 0; level < 4; ++level) {
        if (!anyChanged({kMultisampleQuality[level], kUsePixelfilter[level], kSupersampleFactor[level],
                         kRaytracingQuality[level]}))
            continue;
        const int multisamples = readOr(kMultisampleQuality[level], 0);
        const bool pixelFilter = readOr(kUsePixelfilter[level], false);
        const bool superSampling = readOr(kSupersampleFactor[level], false);
        const int raytracingSamples = readOr(kRaytracingQuality[level], 0);
        kSetAntialiasingQuality[level](multisamples, pixelFilter, superSampling, raytracingSamples);
    }

    if (isChanged(kHardwareAntialiasQuality)) {
        const int items = page()->_aaQuality->count();
        const int quality = std::max(0, std::min(readOr(kHardwareAntialiasQuality, 0), items - 1));
        if (quality == 0) {
            lmOSGWidget::setSuperSampling(false);
            lmOSGWidget::setSuperSamplingQuality(0);
        } else {
            // "Low" .. "Ultra High" are 2, 4, 8 and 16 samples.
            lmOSGWidget::setSuperSampling(true);
            lmOSGWidget::setSuperSamplingQuality(1u << quality);
        }
    }

    if (isChanged(kSliEnable))
        lmOSGWidget::setSLI(readOr(kSliEnable, false));
    if (isChanged(kSliMode))
        lmOSGWidget::setSLIMode(readOr(kSliMode, 0));
    // The key disables the sleep; the host takes a sleep time.
    if (isChanged(kDisableSleep))
        lmController::setSleepTime(readOr(kDisableSleep, false) ? 0u : 1u);

    if (anyChanged({kLimitNearFar, kNearPlane, kFarPlane})) {
        const bool limit = readOr(kLimitNearFar, false);
        const float nearPlane = readOr(kNearPlane, 0.0f);
        const float farPlane = readOr(kFarPlane, 0.0f);
        lmOSGWidget::setNearFarPlaneLimit(limit, nearPlane, farPlane);
    }

    if (isChanged(kDownscale)) {
        if (lmController::isRestrictedEdition())
            lmOSGWidget::enableRaytracingDownscale(1);
        else
            lmOSGWidget::enableRaytracingDownscale(readOr(kDownscale, false) ? 1 : 0);
    }
    if (isChanged(kDownscaleQuality)) {
        const int quality = readOr(kDownscaleQuality, 0);
        lmOSGWidget::setRaytracingDownscaleFactor(quality == 1 ? 4u : quality == 2 ? 8u : 2u);
    }

    if (anyChanged({kFixedRes, kFixedResX, kFixedResY})) {
        if (readOr(kFixedRes, false)) {
            const int width = readOr(kFixedResX, 1280);
            const int height = readOr(kFixedResY, 720);
            lmOSGWidget::setFixedRenderWindowSize(width, height);
        } else {
            lmOSGWidget::setFixedRenderWindowSize(-1, -1);
        }
    }

    if (isChanged(kMaterialPreview) && read(kMaterialPreview, flag))
        lmOSGWidget::showInteractiveMaterialPreview(flag);
    int cursorSize = 0;
    if (isChanged(kCursorSize) && read(kCursorSize, cursorSize))
        exCursorProgress::setPreferredSize(cursorSize);
    if (isChanged(kCursorStatic) && read(kCursorStatic, flag))
        exCursorProgress::setPreferredPosition(flag ? exCursorProgress::LowerLeftCorner
                                                    : exCursorProgress::AttachedToCursor);
    if (isChanged(kCursorVisible) && read(kCursorVisible, flag))
        exCursorProgress::setPreferredVisibility(flag);
    if (isChanged(kShowCameras) && read(kShowCameras, flag))
        lmOSGWidget::setCamerasVisible(flag);
    if (isChanged(kShowLights) && read(kShowLights, flag))
        lmOSGWidget::setLightsVisible(flag);
    if (isChanged(kShowJoints) && read(kShowJoints, flag))
        lmOSGWidget::setJointsVisible(flag);

    if (isChanged(kActiveGpus))
        lmOSGWidget::setActiveGpuRaytracingMask(parseGpuMask(readOr(kActiveGpus, std::string())));

    lmOSGWidget::enableRender(renderEnabled ? 1 : 0);
    lmOSGWidget::updateAllMGLW();
}

void lmRenderOptionsPreferencesGUII::preferencesNewScene(lmMessage &)
{
    // The scene's headlight starts as the host made it: give it the page's type and mode.
    applyHeadlightType();
    applyHeadlightMode();
}

void lmRenderOptionsPreferencesGUII::updateGUI()
{
    loadBound();
    const lmMessage &store = getData();

    // Shown only: the page never writes the SLI switch.
    bool sli = false;
    if (kSliEnable.read(store, sli))
        page()->_sli->setChecked(sli);

    Colors colors;
    std::vector<float> positions;
    if (kBackgroundColors.read(store, colors) && kBackgroundInts.read(store, positions)) {
        QTableWidget *table = page()->_backgroundTable;
        table->setRowCount(0);
        for (std::size_t i = 0; i < colors.size(); ++i)
            appendBackgroundRow(table, colorText(colors[i].red(), colors[i].green(), colors[i].blue()),
                                lmNumberText(i < positions.size() ? positions[i] : 0.0f));
        table->resizeColumnToContents(0);
    }
}

void lmRenderOptionsPreferencesGUII::storeGUI()
{
    storeBound();

    const QTableWidget *table = page()->_backgroundTable;
    Colors colors;
    std::vector<float> positions;
    for (int row = 0; row < table->rowCount(); ++row) {
        colors.push_back(colorFromText(cellText(table, row, 0)));
        positions.push_back(cellText(table, row, 1).toFloat());
    }
    storeTracked(kBackgroundColors, colors);
    storeTracked(kBackgroundInts, positions);

    // Keys without a control: storing the page leaves them as they are.
    for (const char *key : {kAntialiasDistance.name, kAntialiasScale.name, kFastFullscreen.name,
                            kGlContextSharing.name, kCorrectTwoSidedLighting.name, kClippingPlaneAdaption.name,
                            kHardwareAntialiasSamples.name, kSliEnable.name})
        addUnchanged(key);
}

void lmRenderOptionsPreferencesGUII::clickedAdd()
{
    QTableWidget *table = page()->_backgroundTable;
    appendBackgroundRow(table, QStringLiteral("0.0 0.0 0.0"), QStringLiteral("0"));
    table->setCurrentCell(table->rowCount() - 1, 0);
}

void lmRenderOptionsPreferencesGUII::clickedChooseColor()
{
    QTableWidget *table = page()->_backgroundTable;
    const int row = table->currentRow();
    if (row < 0)
        return;
    const osg::Color3f current = colorFromText(cellText(table, row, 0));
    QColor initial;
    initial.setRgbF(qBound(0.0, double(current.red()), 1.0), qBound(0.0, double(current.green()), 1.0),
                    qBound(0.0, double(current.blue()), 1.0));
    const QColor chosen = QColorDialog::getColor(initial, page(), tr("Choose Color"), QColorDialog::DontUseNativeDialog);
    if (!chosen.isValid())
        return;
    const QString text = colorText(float(chosen.redF()), float(chosen.greenF()), float(chosen.blueF()));
    if (QTableWidgetItem *item = table->item(row, 0))
        item->setText(text);
    else
        table->setItem(row, 0, new QTableWidgetItem(text));
}

void lmRenderOptionsPreferencesGUII::clickedDelete()
{
    QTableWidget *table = page()->_backgroundTable;
    const int row = table->currentRow();
    if (row >= 0)
        table->removeRow(row);
}

#include "lmRenderOptionsPreferencesGUI.h"

#include "exCursorProgress.h"
#include "lmController.h"
#include "lmKeyTable.h"
#include "lmLights.h"
#include "lmMessageHelpers.h"
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

const char *const kEnableAntialias = "RenderOptions enable antialiase";
const char *const kPostprocessAntialias = "RenderOptions enable postprocess antialias";
const char *const kAntialiasDistance = "RenderOptions antialiase distance";
const char *const kAntialiasScale = "RenderOptions antialiase scale";
const char *const kAntialiasTime = "RenderOptions antialiase time";
const char *const kAntialiasHighQuality = "RenderOptions antialiase high quality";
const char *const kBackgroundColors = "RenderOptions background colors";
const char *const kBackgroundInts = "RenderOptions background ints";
const char *const kSortTrans = "RenderOptions sort trans";
const char *const kZWriteTrans = "RenderOptions zwrite trans";
const char *const kFastFullscreen = "RenderOptions fast fullscreen";
const char *const kHeadlightMode = "RenderOptions headlight mode";
const char *const kCoordinateSystem = "RenderOptions coordinate system";
const char *const kAuxiliaryNodes = "RenderOptions auxiliary nodes";
const char *const kViewCube = "RenderOptions viewcube";
const char *const kGlContextSharing = "RenderOptions gl context sharing";
const char *const kCacheWholeScene = "RenderOptions cache whole scene";
const char *const kHdrReferenceWhite = "RenderOptions HDR Reference White";
const char *const kRgb10 = "RenderOptions 10bit rgb";
const char *const kWideGamut = "RenderOptions Wide Gamut";
const char *const kCorrectTwoSidedLighting = "RenderOptions correct two sided lighting";
const char *const kSinglePassStereo = "RenderOptions single pass stereo";
const char *const kOcclusionCulling = "RenderOptions occlusion culling";
const char *const kPointHeadlight = "RenderOptions use point headlight";
const char *const kZUp = "RenderOptions z-up";
const char *const kClippingPlaneAdaption = "RenderOptions clipping plane adaption";
const char *const kForceGlFinish = "RenderOptions force glFinish";
const char *const kHardwareAntialiasSamples = "RenderOptions hardware antialiasing samples";
const char *const kHardwareAntialiasAuto = "RenderOptions hardware antialiasing auto";
const char *const kHardwareAntialiasQuality = "RenderOptions hardware antialiasing quality";
// Realtime antialiasing presets, one entry per level: Low, Medium, High, Ultra.
const std::array<const char *, 4> kMultisampleQuality = {
    "RenderOptions multisample quality low", "RenderOptions multisample quality medium",
    "RenderOptions multisample quality high", "RenderOptions multisample quality ultra"};
const std::array<const char *, 4> kVrsQuality = {"RenderOptions vrs quality low", "RenderOptions vrs quality medium",
                                                 "RenderOptions vrs quality high", "RenderOptions vrs quality ultra"};
const std::array<const char *, 4> kUsePixelfilter = {
    "RenderOptions use pixelfilter low", "RenderOptions use pixelfilter medium", "RenderOptions use pixelfilter high",
    "RenderOptions use pixelfilter ultra"};
const std::array<const char *, 4> kSupersampleFactor = {
    "RenderOptions supersample factor low", "RenderOptions supersample factor medium",
    "RenderOptions supersample factor high", "RenderOptions supersample factor ultra"};
const std::array<const char *, 4> kRaytracingQuality = {
    "RenderOptions raytracing supersampling quality low", "RenderOptions raytracing supersampling quality medium",
    "RenderOptions raytracing supersampling quality high", "RenderOptions raytracing supersampling quality ultra"};
const char *const kSliEnable = "RenderOptions nvidia sli enable";
const char *const kSliMode = "RenderOptions nvidia sli mode";
const char *const kDisableSleep = "RenderOptions disable sleep";
const char *const kLimitNearFar = "RenderOptions limit near far plane";
const char *const kNearPlane = "RenderOptions near plane";
const char *const kFarPlane = "RenderOptions far plane";
const char *const kDownscale = "RenderOptions downscale";
const char *const kDownscaleQuality = "RenderOptions downscale quality";
const char *const kFixedRes = "RenderOptions fixed res";
const char *const kFixedResX = "RenderOptions fixed resx";
const char *const kFixedResY = "RenderOptions fixed resy";
const char *const kMaterialPreview = "RenderOptions interactive material preview";
const char *const kCursorSize = "RenderOptions progress cursor size";
const char *const kCursorStatic = "RenderOptions progress cursor static";
const char *const kCursorVisible = "RenderOptions progress cursor visible";
const char *const kShowCameras = "RenderOptions show cameras";
const char *const kShowLights = "RenderOptions show lights";
const char *const kShowJoints = "RenderOptions show joints";
const char *const kActiveGpus = "RenderOptions active raytracing GPUs";

// Keys of earlier versions: never written, still cleaned up.
const char *const kLocalLights = "RenderOptions local lights";
const char *const kUseBackBuffer = "RenderOptions use back buffer";

std::vector<osg::Color3f> defaultBackgroundColors()
{
    if (lmPlatform::getApplicationName() == QLatin1String("lumomed"))
        return {osg::Color3f(0.0f, 0.0f, 0.0f), osg::Color3f(0.0f, 0.0f, 0.0f)};
    // Written as the page shows them, so an untouched page stores them unchanged.
    return {osg::Color3f(0.207843f, 0.207843f, 0.207843f), osg::Color3f(0.749020f, 0.749020f, 0.749020f)};
}

const lmKeyTable kKeys{
    lmKey<bool>(kEnableAntialias, false),
    lmKey<unsigned int>(kPostprocessAntialias, 0u),
    lmKey<float>(kAntialiasDistance, 0.2f),
    lmKey<float>(kAntialiasScale, 2.0f),
    lmKey<double>(kAntialiasTime, 1.0),
    lmKey<bool>(kAntialiasHighQuality, false),
    lmKeyComputed<std::vector<osg::Color3f>>(kBackgroundColors, defaultBackgroundColors),
    lmKey<std::vector<float>>(kBackgroundInts, {1.0f, 0.0f}),
    lmKey<bool>(kSortTrans, true),
    lmKey<bool>(kZWriteTrans, false),
    lmKey<bool>(kFastFullscreen, true),
    lmKey<int>(kHeadlightMode, 3),
    lmKey<bool>(kCoordinateSystem, false),
    lmKey<bool>(kAuxiliaryNodes, true),
    lmKey<bool>(kViewCube, true),
    lmKey<bool>(kGlContextSharing, true),
    lmKey<bool>(kCacheWholeScene, false),
    lmKey<float>(kHdrReferenceWhite, 250.0f),
    lmKey<bool>(kRgb10, false),
    lmKey<bool>(kWideGamut, false),
    lmKey<bool>(kCorrectTwoSidedLighting, true),
    lmKey<bool>(kSinglePassStereo, false),
    lmKey<bool>(kOcclusionCulling, false),
    lmKey<bool>(kPointHeadlight, false),
    lmKey<bool>(kZUp, true),
    lmKey<bool>(kClippingPlaneAdaption, false),
    lmKey<bool>(kForceGlFinish, false),
    lmKey<int>(kHardwareAntialiasSamples, 0),
    lmKey<bool>(kHardwareAntialiasAuto, false),
    lmKey<int>(kHardwareAntialiasQuality, 0),
    lmKey<int>(kMultisampleQuality[0], 2),
    lmKey<int>(kMultisampleQuality[1], 4),
    lmKey<int>(kMultisampleQuality[2], 8),
    lmKey<int>(kMultisampleQuality[3], 4), // ultra relies on supersampling instead
    lmKey<int>(kVrsQuality[0], 1),
    lmKey<int>(kVrsQuality[1], 2),
    lmKey<int>(kVrsQuality[2], 3),
    lmKey<int>(kVrsQuality[3], 2),
    lmKey<bool>(kUsePixelfilter[0], true),
    lmKey<bool>(kUsePixelfilter[1], true),
    lmKey<bool>(kUsePixelfilter[2], true),
    lmKey<bool>(kUsePixelfilter[3], true),
    lmKey<bool>(kSupersampleFactor[0], false),
    lmKey<bool>(kSupersampleFactor[1], false),
    lmKey<bool>(kSupersampleFactor[2], false),
    lmKey<bool>(kSupersampleFactor[3], true),
    lmKey<int>(kRaytracingQuality[0], 2),
    lmKey<int>(kRaytracingQuality[1], 4),
    lmKey<int>(kRaytracingQuality[2], 8),
    lmKey<int>(kRaytracingQuality[3], 16),
    lmKey<bool>(kSliEnable, false),
    lmKey<int>(kSliMode, 1),
    lmKey<bool>(kDisableSleep, false),
    lmKey<bool>(kLimitNearFar, false),
    lmKey<float>(kNearPlane, 10.0f),
    lmKey<float>(kFarPlane, 100000.0f),
    lmKey<bool>(kDownscale, false),
    lmKey<int>(kDownscaleQuality, 0),
    lmKey<bool>(kFixedRes, false),
    lmKey<int>(kFixedResX, 1280),
    lmKey<int>(kFixedResY, 720),
    lmKey<bool>(kMaterialPreview, true),
    lmKey<int>(kCursorSize, 32),
    lmKey<bool>(kCursorStatic, false),
    lmKey<bool>(kCursorVisible, true),
    lmKey<bool>(kShowCameras, true),
    lmKey<bool>(kShowLights, true),
    lmKey<bool>(kShowJoints, false),
    lmKey<std::string>(kActiveGpus, std::string()),
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
bool read(const char *key, T &out)
{
    return getFromMessage(lmPreferences::getData(), key, out);
}

// The stored value, or the fallback when it cannot be read.
template <class T>
T readOr(const char *key, T fallback)
{
    read(key, fallback);
    return fallback;
}

QString numberText(double value)
{
    return QString::number(value, 'g', 6);
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

// Indices beyond the combo leave it as it is.
void selectIndex(QComboBox *combo, int index)
{
    if (index >= 0 && index < combo->count())
        combo->setCurrentIndex(index);
}

// The combos that store their index, beside "Antialiasing Quality".
std::array<std::pair<const char *, QComboBox *>, 3> indexCombosOf(lmRenderOptionsPreferencesGUIW *page)
{
    return {{{kHeadlightMode, page->_headlightMode},
             {kSliMode, page->_sliMode},
             {kDownscaleQuality, page->_downscaleQuality}}};
}

void selectData(QComboBox *combo, int data)
{
    const int index = combo->findData(data);
    if (index >= 0)
        combo->setCurrentIndex(index);
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
    : QObject(nullptr), lmPreferences(tr("Render Options"), QString()), m_page(new lmRenderOptionsPreferencesGUIW)
{
    for (const Preset &preset : presetsOf(m_page)) {
        fillSampleCounts(preset.multisampling, 16);
        fillSampleCounts(preset.raytracing, 64);
        fillSampleCounts(preset.vrs, 8);
    }
    for (QLineEdit *edit : {m_page->_aaTime, m_page->_nearPlane, m_page->_farPlane})
        edit->setValidator(new QDoubleValidator(edit));

    addPreferencesGUI(m_page);

    connect(m_page->_addBackground, &QPushButton::clicked, this, &lmRenderOptionsPreferencesGUII::clickedAdd);
    connect(m_page->_chooseBackgroundColor, &QPushButton::clicked, this,
            &lmRenderOptionsPreferencesGUII::clickedChooseColor);
    connect(m_page->_deleteBackground, &QPushButton::clicked, this, &lmRenderOptionsPreferencesGUII::clickedDelete);
}

lmRenderOptionsPreferencesGUII::~lmRenderOptionsPreferencesGUII()
{
    lmMessage &store = getData();
    kKeys.removeFrom(store);
    store.remove(kLocalLights);
    store.remove(kUseBackBuffer);
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmRenderOptionsPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
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
        const int items = m_page->_aaQuality->count();
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
    lmRenderOptionsPreferencesGUIW *page = m_page;
    bool flag = false;
    int number = 0;
    float real = 0.0f;
    m_loaded.clear();

    const std::pair<const char *, QCheckBox *> checks[] = {
        {kEnableAntialias, page->_stillframeAA},
        {kAntialiasHighQuality, page->_openGLInteractive},
        {kSortTrans, page->_sortTrans},
        {kZWriteTrans, page->_zwriteTrans},
        {kCoordinateSystem, page->_coordinateSystem},
        {kAuxiliaryNodes, page->_auxiliaryNodes},
        {kViewCube, page->_viewCube},
        {kCacheWholeScene, page->_cacheGeometry},
        {kRgb10, page->_rgb10},
        {kWideGamut, page->_wideGamut},
        {kSinglePassStereo, page->_singlePassStereo},
        {kOcclusionCulling, page->_occlusionCulling},
        {kPointHeadlight, page->_pointHeadlight},
        {kZUp, page->_zUp},
        {kForceGlFinish, page->_forceGLFinish},
        {kHardwareAntialiasAuto, page->_aaAuto},
        {kSliEnable, page->_sli},
        {kDisableSleep, page->_disableSleep},
        {kLimitNearFar, page->_limitNearFar},
        {kDownscale, page->_downscale},
        {kFixedRes, page->_fixedRes},
        {kMaterialPreview, page->_materialPreview},
    };
    for (const auto &check : checks)
        if (read(check.first, flag))
            check.second->setChecked(flag);

    unsigned int postprocess = 0;
    if (read(kPostprocessAntialias, postprocess))
        page->_postprocessAA->setChecked(postprocess != 0);
    double time = 0.0;
    if (read(kAntialiasTime, time))
        page->_aaTime->setText(numberText(time));

    std::vector<osg::Color3f> colors;
    std::vector<float> positions;
    if (read(kBackgroundColors, colors) && read(kBackgroundInts, positions)) {
        page->_backgroundTable->setRowCount(0);
        for (std::size_t i = 0; i < colors.size(); ++i)
            appendBackgroundRow(page->_backgroundTable, colorText(colors[i].red(), colors[i].green(), colors[i].blue()),
                                numberText(i < positions.size() ? positions[i] : 0.0f));
        page->_backgroundTable->resizeColumnToContents(0);
    }

    for (const auto &combo : indexCombosOf(page))
        if (read(combo.first, number)) {
            selectIndex(combo.second, number);
            m_loaded.loaded(combo.first, combo.second, number);
        }
    // A quality beyond the items shows, and pushes, as the last one.
    if (read(kHardwareAntialiasQuality, number))
        page->_aaQuality->setCurrentIndex(std::max(0, std::min(number, page->_aaQuality->count() - 1)));

    if (read(kHdrReferenceWhite, real)) {
        page->_hdrReferenceWhite->setValue(real);
        m_loaded.loaded(kHdrReferenceWhite, page->_hdrReferenceWhite, real);
    }

    const std::array<Preset, 4> presets = presetsOf(page);
    for (std::size_t level = 0; level < 4; ++level) {
        if (read(kMultisampleQuality[level], number)) {
            selectData(presets[level].multisampling, number);
            m_loaded.loaded(kMultisampleQuality[level], presets[level].multisampling, number);
        }
        if (read(kVrsQuality[level], number)) {
            selectIndex(presets[level].vrs, number);
            m_loaded.loaded(kVrsQuality[level], presets[level].vrs, number);
        }
        if (read(kUsePixelfilter[level], flag))
            presets[level].pixelfilter->setChecked(flag);
        if (read(kSupersampleFactor[level], flag))
            presets[level].supersampling->setChecked(flag);
        if (read(kRaytracingQuality[level], number)) {
            selectData(presets[level].raytracing, number);
            m_loaded.loaded(kRaytracingQuality[level], presets[level].raytracing, number);
        }
    }

    if (read(kNearPlane, real))
        page->_nearPlane->setText(numberText(real));
    if (read(kFarPlane, real))
        page->_farPlane->setText(numberText(real));
    if (read(kFixedResX, number)) {
        page->_fixedResX->setValue(number);
        m_loaded.loaded(kFixedResX, page->_fixedResX, number);
    }
    if (read(kFixedResY, number)) {
        page->_fixedResY->setValue(number);
        m_loaded.loaded(kFixedResY, page->_fixedResY, number);
    }

    // The size is shown as a percentage of the wheel's base size.
    const int baseSize = exCursorProgress::getBaseSize();
    if (read(kCursorSize, number) && baseSize > 0)
        page->_progressSize->setValue(qRound(double(number) / baseSize * 100.0));

    // The page shows the store, also for the settings the host can switch
    // outside the dialog: the page is filled before the stored values reach
    // the host, and an untouched page must store back what it was given.
    const std::pair<const char *, QCheckBox *> hostSwitches[] = {
        {kCursorStatic, page->_progressStatic}, {kCursorVisible, page->_progressVisible},
        {kShowCameras, page->_showCameras},     {kShowLights, page->_showLights},
        {kShowJoints, page->_showJoints},
    };
    for (const auto &check : hostSwitches)
        if (read(check.first, flag))
            check.second->setChecked(flag);

    std::string gpus;
    if (read(kActiveGpus, gpus)) {
        page->_activeGpus->setText(QString::fromStdString(gpus));
        m_loaded.loaded(kActiveGpus, page->_activeGpus, gpus);
    }
}

void lmRenderOptionsPreferencesGUII::storeGUI()
{
    lmMessage &store = getData();
    lmRenderOptionsPreferencesGUIW *page = m_page;
    auto put = [this, &store](const char *key, const auto &value) {
        if (!setToMessage(store, key, value, true))
            addUnchanged(key);
    };

    std::vector<osg::Color3f> colors;
    std::vector<float> positions;
    for (int row = 0; row < page->_backgroundTable->rowCount(); ++row) {
        colors.push_back(colorFromText(cellText(page->_backgroundTable, row, 0)));
        positions.push_back(cellText(page->_backgroundTable, row, 1).toFloat());
    }

    // The page never stores a wheel smaller than its base size.
    const int percent = std::max(page->_progressSize->value(), 100);
    const int cursorSize = exCursorProgress::getBaseSize() * percent / 100;

    put(kEnableAntialias, page->_stillframeAA->isChecked());
    put(kPostprocessAntialias, page->_postprocessAA->isChecked() ? 1u : 0u);
    put(kAntialiasTime, page->_aaTime->text().toDouble());
    put(kAntialiasHighQuality, page->_openGLInteractive->isChecked());
    put(kBackgroundColors, colors);
    put(kBackgroundInts, positions);
    put(kSortTrans, page->_sortTrans->isChecked());
    put(kZWriteTrans, page->_zwriteTrans->isChecked());
    put(kHeadlightMode, m_loaded.value(kHeadlightMode, page->_headlightMode, page->_headlightMode->currentIndex()));
    put(kCoordinateSystem, page->_coordinateSystem->isChecked());
    put(kAuxiliaryNodes, page->_auxiliaryNodes->isChecked());
    put(kViewCube, page->_viewCube->isChecked());
    put(kCacheWholeScene, page->_cacheGeometry->isChecked());
    put(kHdrReferenceWhite,
        m_loaded.value(kHdrReferenceWhite, page->_hdrReferenceWhite, float(page->_hdrReferenceWhite->value())));
    put(kRgb10, page->_rgb10->isChecked());
    put(kWideGamut, page->_wideGamut->isChecked());
    put(kSinglePassStereo, page->_singlePassStereo->isChecked());
    put(kOcclusionCulling, page->_occlusionCulling->isChecked());
    put(kPointHeadlight, page->_pointHeadlight->isChecked());
    put(kZUp, page->_zUp->isChecked());
    put(kForceGlFinish, page->_forceGLFinish->isChecked());
    put(kHardwareAntialiasAuto, page->_aaAuto->isChecked());
    put(kHardwareAntialiasQuality, page->_aaQuality->currentIndex());
    const std::array<Preset, 4> presets = presetsOf(page);
    for (std::size_t level = 0; level < 4; ++level)
        put(kMultisampleQuality[level], m_loaded.value(kMultisampleQuality[level], presets[level].multisampling,
                                                       presets[level].multisampling->currentData().toInt()));
    for (std::size_t level = 0; level < 4; ++level)
        put(kVrsQuality[level],
            m_loaded.value(kVrsQuality[level], presets[level].vrs, presets[level].vrs->currentIndex()));
    for (std::size_t level = 0; level < 4; ++level)
        put(kUsePixelfilter[level], presets[level].pixelfilter->isChecked());
    for (std::size_t level = 0; level < 4; ++level)
        put(kSupersampleFactor[level], presets[level].supersampling->isChecked());
    for (std::size_t level = 0; level < 4; ++level)
        put(kRaytracingQuality[level], m_loaded.value(kRaytracingQuality[level], presets[level].raytracing,
                                                      presets[level].raytracing->currentData().toInt()));
    put(kSliMode, m_loaded.value(kSliMode, page->_sliMode, page->_sliMode->currentIndex()));
    put(kDisableSleep, page->_disableSleep->isChecked());
    put(kLimitNearFar, page->_limitNearFar->isChecked());
    put(kNearPlane, page->_nearPlane->text().toFloat());
    put(kFarPlane, page->_farPlane->text().toFloat());
    put(kDownscale, page->_downscale->isChecked());
    put(kDownscaleQuality,
        m_loaded.value(kDownscaleQuality, page->_downscaleQuality, page->_downscaleQuality->currentIndex()));
    put(kFixedRes, page->_fixedRes->isChecked());
    put(kFixedResX, m_loaded.value(kFixedResX, page->_fixedResX, page->_fixedResX->value()));
    put(kFixedResY, m_loaded.value(kFixedResY, page->_fixedResY, page->_fixedResY->value()));
    put(kMaterialPreview, page->_materialPreview->isChecked());
    put(kCursorSize, cursorSize);
    put(kCursorStatic, page->_progressStatic->isChecked());
    put(kCursorVisible, page->_progressVisible->isChecked());
    put(kShowCameras, page->_showCameras->isChecked());
    put(kShowLights, page->_showLights->isChecked());
    put(kShowJoints, page->_showJoints->isChecked());
    put(kActiveGpus, m_loaded.value(kActiveGpus, page->_activeGpus, page->_activeGpus->text().toStdString()));

    // Keys without a control: storing the page leaves them as they are.
    for (const char *key : {kAntialiasDistance, kAntialiasScale, kFastFullscreen, kGlContextSharing,
                            kCorrectTwoSidedLighting, kClippingPlaneAdaption, kHardwareAntialiasSamples, kSliEnable})
        addUnchanged(key);
}

void lmRenderOptionsPreferencesGUII::clickedAdd()
{
    QTableWidget *table = m_page->_backgroundTable;
    appendBackgroundRow(table, QStringLiteral("0.0 0.0 0.0"), QStringLiteral("0"));
    table->setCurrentCell(table->rowCount() - 1, 0);
}

void lmRenderOptionsPreferencesGUII::clickedChooseColor()
{
    QTableWidget *table = m_page->_backgroundTable;
    const int row = table->currentRow();
    if (row < 0)
        return;
    const osg::Color3f current = colorFromText(cellText(table, row, 0));
    QColor initial;
    initial.setRgbF(qBound(0.0, double(current.red()), 1.0), qBound(0.0, double(current.green()), 1.0),
                    qBound(0.0, double(current.blue()), 1.0));
    const QColor chosen = QColorDialog::getColor(initial, m_page, tr("Choose Color"), QColorDialog::DontUseNativeDialog);
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
    QTableWidget *table = m_page->_backgroundTable;
    const int row = table->currentRow();
    if (row >= 0)
        table->removeRow(row);
}

#include "lmKernelServicesHost.h"

#include "lmCallLog.h"
#include "lmHMDService.h"
#include "lmHostSettings.h"
#include "lmImmersiveInteractionService.h"
#include "lmPreferencesService.h"
#include "lmStarVRHandler.h"

#include <cstring>

namespace {

struct HMDState
{
    bool eyeTrackingSupported = true;
    bool eyeTrackingActive = false;
    bool shadingRateImageSupported = true;
    lmdFoveatedQuality customQuality{lmRenderTypes::TwoSamples, lmRenderTypes::OneSamplePer4Pixels,
                                     lmRenderTypes::OneSamplePer16Pixels};
    lmdStarVRRenderSettings starVR;
};

HMDState &hmdState()
{
    static HMDState state;
    return state;
}

bool starVRPresent = true;

// Services live as long as the process: plug-ins may reach them from their
// static destructors.
lmPreferencesService &preferencesService()
{
    static auto *service = new lmPreferencesService;
    return *service;
}

lmHMDService &hmdService()
{
    static auto *service = new lmHMDService;
    return *service;
}

lmImmersiveInteractionService &interactionService()
{
    static auto *service = new lmImmersiveInteractionService;
    return *service;
}

lmKernelService *serviceOf(const char *className)
{
    for (lmKernelService *service : {static_cast<lmKernelService *>(&preferencesService()),
                                     static_cast<lmKernelService *>(&hmdService()),
                                     static_cast<lmKernelService *>(&interactionService())})
        if (std::strcmp(service->metaObject()->className(), className) == 0)
            return service;
    return nullptr;
}

void resetServices()
{
    for (const char *className : {"lmPreferencesService", "lmHMDService", "lmImmersiveInteractionService"})
        lmKernelServicesHost::setServicePresence(className, lmKernelServicesHost::Present);
    hmdState() = HMDState();
    starVRPresent = true;
}

const bool servicesRegistered = (resetServices(), lmHostSettings::addResetHook(resetServices), true);

} // namespace

// Test controls.

void lmKernelServicesHost::setServicePresence(const char *className, Presence presence)
{
    lmKernelServiceFactory &factory = lmKernelServiceFactory::the();
    switch (presence) {
    case Present:
        factory.registerService(className, serviceOf(className));
        break;
    case NullService:
        factory.registerService(className, nullptr);
        break;
    case UnknownClass:
        factory.unregisterService(className);
        break;
    }
}

void lmKernelServicesHost::setStarVRHandlerPresent(bool present)
{
    starVRPresent = present;
}

void lmKernelServicesHost::setEyeTrackingSupported(bool supported)
{
    hmdState().eyeTrackingSupported = supported;
}

void lmKernelServicesHost::setShadingRateImageSupported(bool supported)
{
    hmdState().shadingRateImageSupported = supported;
}

// lmHMDService

lmHMDService::lmHMDService(QObject *parent) : lmKernelService(parent) {}

lmHMDService::~lmHMDService() = default;

void lmHMDService::setEyeTrackingEnabled(bool on)
{
    lmCallLog::record("lmHMDService::setEyeTrackingEnabled", on);
    hmdState().eyeTrackingActive = on && hmdState().eyeTrackingSupported;
}

bool lmHMDService::isEyeTrackingActive() const
{
    return hmdState().eyeTrackingActive;
}

void lmHMDService::setFoveatedRenderingEnabled(bool on)
{
    lmCallLog::record("lmHMDService::setFoveatedRenderingEnabled", on);
}

void lmHMDService::setFovealRegionSize(float size)
{
    lmCallLog::record("lmHMDService::setFovealRegionSize", size);
}

void lmHMDService::setFoveatedQualityPreset(int preset)
{
    lmCallLog::record("lmHMDService::setFoveatedQualityPreset", preset);
}

void lmHMDService::setFoveatedCustomQuality(const lmdFoveatedQuality &quality)
{
    lmCallLog::record("lmHMDService::setFoveatedCustomQuality", quality.inner(), quality.middle(), quality.periphery());
    hmdState().customQuality = quality;
}

lmdFoveatedQuality lmHMDService::getFoveatedPresetQuality(int preset) const
{
    using namespace lmRenderTypes;
    switch (preset) {
    case 0: // highest performance
        return lmdFoveatedQuality(OneSample, OneSamplePer4Pixels, OneSamplePer16Pixels);
    case 1: // balanced
        return lmdFoveatedQuality(OneSample, OneSample, OneSamplePer4Pixels);
    case 2: // highest quality
        return lmdFoveatedQuality(TwoSamples, OneSample, OneSamplePer4Pixels);
    case 3: // custom
        return hmdState().customQuality;
    default:
        return lmdFoveatedQuality();
    }
}

bool lmHMDService::isShadingRateImageSupported() const
{
    return hmdState().shadingRateImageSupported;
}

lmdStarVRRenderSettings lmHMDService::getStarVRRenderSettings() const
{
    return hmdState().starVR;
}

void lmHMDService::setStarVRRenderSettings(const lmdStarVRRenderSettings &settings)
{
    std::string line = "lmHMDService::setStarVRRenderSettings(";
    line += "useNativeFoveatedRendering=" + lmLogText(settings.getUseNativeFoveatedRendering());
    line += ", foveatedFovFactor=" + lmLogText(settings.getFoveatedFovFactor());
    line += ", foveatedResolutionScale=" + lmLogText(settings.getFoveatedResolutionScale());
    line += ", nonFoveatedResolutionScale=" + lmLogText(settings.getNonFoveatedResolutionScale());
    line += ", frontViewResolutionScale=" + lmLogText(settings.getFrontViewResolutionScale());
    line += ", sideViewResolutionScale=" + lmLogText(settings.getSideViewResolutionScale());
    line += ", useSingleTexture=" + lmLogText(settings.getUseSingleTexture());
    line += ')';
    lmCallLog::append(line);
    hmdState().starVR = settings;
}

// lmImmersiveInteractionService

lmImmersiveInteractionService::lmImmersiveInteractionService(QObject *parent) : lmKernelService(parent) {}

lmImmersiveInteractionService::~lmImmersiveInteractionService() = default;

void lmImmersiveInteractionService::setTeleportGroundMode(int mode)
{
    lmCallLog::record("lmImmersiveInteractionService::setTeleportGroundMode", mode);
}

void lmImmersiveInteractionService::setTeleportRange(float range)
{
    lmCallLog::record("lmImmersiveInteractionService::setTeleportRange", range);
}

void lmImmersiveInteractionService::setDefaultControllerVisualization(int visualization)
{
    lmCallLog::record("lmImmersiveInteractionService::setDefaultControllerVisualization", visualization);
}

void lmImmersiveInteractionService::setAutoCreateCollisionObjects(bool on)
{
    lmCallLog::record("lmImmersiveInteractionService::setAutoCreateCollisionObjects", on);
}

void lmImmersiveInteractionService::setShowTooltipsOnStart(bool on)
{
    lmCallLog::record("lmImmersiveInteractionService::setShowTooltipsOnStart", on);
}

// lmStarVRHandler

lmStarVRHandler::lmStarVRHandler() = default;

lmStarVRHandler::~lmStarVRHandler() = default;

lmStarVRHandler *lmStarVRHandler::getHandler()
{
    static auto *handler = new lmStarVRHandler;
    return starVRPresent ? handler : nullptr;
}

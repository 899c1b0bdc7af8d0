#include "lmOSGWidget.h"

#include "lmCallLog.h"
#include "lmHostState.h"
#include "lmRenderHostState.h"

// Camera.

void lmOSGWidget::setFov(int view, float degrees)
{
    lmCallLog::record("lmOSGWidget::setFov", view, degrees);
}

void lmOSGWidget::setGlobalEyeSeparation(float separation)
{
    lmCallLog::record("lmOSGWidget::setGlobalEyeSeparation", separation);
}

void lmOSGWidget::setGlobalZeroParallaxDistance(float distance)
{
    lmCallLog::record("lmOSGWidget::setGlobalZeroParallaxDistance", distance);
}

void lmOSGWidget::setPowerwallWindow(int view, float width, float height, float distance)
{
    lmCallLog::record("lmOSGWidget::setPowerwallWindow", view, width, height, distance);
}

// Devices.

void lmOSGWidget::setSpacemouseViewMode(int mode)
{
    lmCallLog::record("lmOSGWidget::setSpacemouseViewMode", mode);
}

void lmOSGWidget::setSpacemousePivotMode(int mode)
{
    lmCallLog::record("lmOSGWidget::setSpacemousePivotMode", mode);
}

void lmOSGWidget::setSpacemouseTwoAxis(bool on)
{
    lmCallLog::record("lmOSGWidget::setSpacemouseTwoAxis", on);
}

void lmOSGWidget::setSpacemouseHelicopter(bool on)
{
    lmCallLog::record("lmOSGWidget::setSpacemouseHelicopter", on);
}

void lmOSGWidget::setSpacemouseUseFixedHeight(bool on)
{
    lmCallLog::record("lmOSGWidget::setSpacemouseUseFixedHeight", on);
}

void lmOSGWidget::setSpacemouseFixedHeight(float height)
{
    lmCallLog::record("lmOSGWidget::setSpacemouseFixedHeight", height);
}

// Navigator.

void lmOSGWidget::setNavMode(int view, lmNavigator::Mode mode)
{
    lmCallLog::record("lmOSGWidget::setNavMode", view, mode);
}

void lmOSGWidget::setNavAutoCenter(bool on)
{
    lmCallLog::record("lmOSGWidget::setNavAutoCenter", on);
}

void lmOSGWidget::setInteractionMode(lmNavigator::InteractionMode mode)
{
    lmCallLog::record("lmOSGWidget::setInteractionMode", mode);
}

void lmOSGWidget::setNavInvertDollyAxis(bool on)
{
    lmCallLog::record("lmOSGWidget::setNavInvertDollyAxis", on);
}

void lmOSGWidget::setNavInvertWheelDolly(bool on)
{
    lmCallLog::record("lmOSGWidget::setNavInvertWheelDolly", on);
}

void lmOSGWidget::setNavUsePivotBasedPanning(bool on)
{
    lmCallLog::record("lmOSGWidget::setNavUsePivotBasedPanning", on);
}

void lmOSGWidget::setNavPanningSpeed(float speed)
{
    lmCallLog::record("lmOSGWidget::setNavPanningSpeed", speed);
}

void lmOSGWidget::setNavSpeedMode(int mode)
{
    lmCallLog::record("lmOSGWidget::setNavSpeedMode", mode);
}

void lmOSGWidget::setNavDollySpeed(float speed)
{
    lmCallLog::record("lmOSGWidget::setNavDollySpeed", speed);
}

void lmOSGWidget::setNavDollyAxis(int axis)
{
    lmCallLog::record("lmOSGWidget::setNavDollyAxis", axis);
}

void lmOSGWidget::setNavDollyToPivot(bool on)
{
    lmCallLog::record("lmOSGWidget::setNavDollyToPivot", on);
}

void lmOSGWidget::setAnimateNavCam(bool on)
{
    lmCallLog::record("lmOSGWidget::setAnimateNavCam", on);
}

void lmOSGWidget::setAnimateNavCamDuration(float duration)
{
    lmCallLog::record("lmOSGWidget::setAnimateNavCamDuration", duration);
}

void lmOSGWidget::setNavOrbitMode(bool on)
{
    lmCallLog::record("lmOSGWidget::setNavOrbitMode", on);
}

void lmOSGWidget::setNavOrbitDetectionArea(int pixels)
{
    lmCallLog::record("lmOSGWidget::setNavOrbitDetectionArea", pixels);
}

void lmOSGWidget::setNavOrbitDetectionTime(int milliseconds)
{
    lmCallLog::record("lmOSGWidget::setNavOrbitDetectionTime", milliseconds);
}

// Selection.

void lmOSGWidget::setWireframeSelection(bool on)
{
    lmCallLog::record("lmOSGWidget::setWireframeSelection", on);
}

void lmOSGWidget::setWireframeAlwaysInFront(bool on)
{
    lmCallLog::record("lmOSGWidget::setWireframeAlwaysInFront", on);
}

// Render options.

void lmOSGWidget::enableRender(int on)
{
    lmCallLog::record("lmOSGWidget::enableRender", on);
    lmRenderHostState::state().renderEnabled = on != 0;
}

bool lmOSGWidget::isRenderEnabled()
{
    return lmRenderHostState::state().renderEnabled;
}

void lmOSGWidget::updateAllMGLW()
{
    lmCallLog::record("lmOSGWidget::updateAllMGLW");
}

void lmOSGWidget::enableAntialiasing(int on)
{
    lmCallLog::record("lmOSGWidget::enableAntialiasing", on);
}

void lmOSGWidget::setPostprocessAntialiasing(unsigned int mode)
{
    lmCallLog::record("lmOSGWidget::setPostprocessAntialiasing", mode);
}

void lmOSGWidget::setAntialiasing(float distance, float scale, double time)
{
    lmCallLog::record("lmOSGWidget::setAntialiasing", distance, scale, time);
}

void lmOSGWidget::setHighQualityAntialiasing(bool on)
{
    lmCallLog::record("lmOSGWidget::setHighQualityAntialiasing", on);
    lmRenderHostState::state().highQualityAntialiasing = on;
}

bool lmOSGWidget::getHighQualityAntialiasing()
{
    return lmRenderHostState::state().highQualityAntialiasing;
}

void lmOSGWidget::setAllGradientBackgrounds(const std::vector<osg::Color3f> &colors, const std::vector<float> &positions)
{
    lmCallLog::record("lmOSGWidget::setAllGradientBackgrounds", colors, positions);
}

void lmOSGWidget::setSortTrans(int on)
{
    lmCallLog::record("lmOSGWidget::setSortTrans", on);
}

void lmOSGWidget::setZWriteTrans(int on)
{
    lmCallLog::record("lmOSGWidget::setZWriteTrans", on);
}

void lmOSGWidget::showCoordinateSystem(int on)
{
    lmCallLog::record("lmOSGWidget::showCoordinateSystem", on);
}

void lmOSGWidget::showViewCube(bool on)
{
    lmCallLog::record("lmOSGWidget::showViewCube", on);
}

void lmOSGWidget::setAuxiliaryNodesVisibleDuringAntialiasing(bool on)
{
    lmCallLog::record("lmOSGWidget::setAuxiliaryNodesVisibleDuringAntialiasing", on);
}

void lmOSGWidget::setHdrReferenceWhite(float nits)
{
    lmCallLog::record("lmOSGWidget::setHdrReferenceWhite", nits);
}

void lmOSGWidget::setRGB10(bool on)
{
    lmCallLog::record("lmOSGWidget::setRGB10", on);
}

void lmOSGWidget::setRGB16F(bool on)
{
    lmCallLog::record("lmOSGWidget::setRGB16F", on);
}

void lmOSGWidget::setUseSinglePassStereo(bool on)
{
    lmCallLog::record("lmOSGWidget::setUseSinglePassStereo", on);
}

void lmOSGWidget::setOcclusionCulling(int on)
{
    lmCallLog::record("lmOSGWidget::setOcclusionCulling", on);
}

void lmOSGWidget::enableHeadlight(int on)
{
    lmCallLog::record("lmOSGWidget::enableHeadlight", on);
}

void lmOSGWidget::setCameraZUp(bool zUp, bool adaptCamera)
{
    lmCallLog::record("lmOSGWidget::setCameraZUp", zUp, adaptCamera);
}

void lmOSGWidget::showLogo(bool on)
{
    lmCallLog::record("lmOSGWidget::showLogo", on);
}

void lmOSGWidget::setForceGLFinish(bool on)
{
    lmCallLog::record("lmOSGWidget::setForceGLFinish", on);
}

void lmOSGWidget::setAutoSuperSampling(bool on)
{
    lmCallLog::record("lmOSGWidget::setAutoSuperSampling", on);
}

void lmOSGWidget::setVariableRateShadingQualityLow(lmVrsQuality quality)
{
    lmCallLog::record("lmOSGWidget::setVariableRateShadingQualityLow", quality);
}

void lmOSGWidget::setVariableRateShadingQualityMedium(lmVrsQuality quality)
{
    lmCallLog::record("lmOSGWidget::setVariableRateShadingQualityMedium", quality);
}

void lmOSGWidget::setVariableRateShadingQualityHigh(lmVrsQuality quality)
{
    lmCallLog::record("lmOSGWidget::setVariableRateShadingQualityHigh", quality);
}

void lmOSGWidget::setVariableRateShadingQualityUltra(lmVrsQuality quality)
{
    lmCallLog::record("lmOSGWidget::setVariableRateShadingQualityUltra", quality);
}

void lmOSGWidget::setAntialiasingQualityLow(int multisamples, bool pixelFilter, bool superSampling, int raytracingSamples)
{
    lmCallLog::record("lmOSGWidget::setAntialiasingQualityLow", multisamples, pixelFilter, superSampling, raytracingSamples);
}

void lmOSGWidget::setAntialiasingQualityMedium(int multisamples, bool pixelFilter, bool superSampling, int raytracingSamples)
{
    lmCallLog::record("lmOSGWidget::setAntialiasingQualityMedium", multisamples, pixelFilter, superSampling, raytracingSamples);
}

void lmOSGWidget::setAntialiasingQualityHigh(int multisamples, bool pixelFilter, bool superSampling, int raytracingSamples)
{
    lmCallLog::record("lmOSGWidget::setAntialiasingQualityHigh", multisamples, pixelFilter, superSampling, raytracingSamples);
}

void lmOSGWidget::setAntialiasingQualityUltra(int multisamples, bool pixelFilter, bool superSampling, int raytracingSamples)
{
    lmCallLog::record("lmOSGWidget::setAntialiasingQualityUltra", multisamples, pixelFilter, superSampling, raytracingSamples);
}

void lmOSGWidget::setSuperSampling(bool on)
{
    lmCallLog::record("lmOSGWidget::setSuperSampling", on);
}

void lmOSGWidget::setSuperSamplingQuality(unsigned int samples)
{
    lmCallLog::record("lmOSGWidget::setSuperSamplingQuality", samples);
}

void lmOSGWidget::setSLI(bool on)
{
    lmCallLog::record("lmOSGWidget::setSLI", on);
}

void lmOSGWidget::setSLIMode(int mode)
{
    lmCallLog::record("lmOSGWidget::setSLIMode", mode);
}

void lmOSGWidget::setNearFarPlaneLimit(bool limit, float nearPlane, float farPlane)
{
    lmCallLog::record("lmOSGWidget::setNearFarPlaneLimit", limit, nearPlane, farPlane);
}

void lmOSGWidget::enableRaytracingDownscale(int on)
{
    lmCallLog::record("lmOSGWidget::enableRaytracingDownscale", on);
}

void lmOSGWidget::setRaytracingDownscaleFactor(unsigned int factor)
{
    lmCallLog::record("lmOSGWidget::setRaytracingDownscaleFactor", factor);
}

void lmOSGWidget::setFixedRenderWindowSize(int width, int height)
{
    lmCallLog::record("lmOSGWidget::setFixedRenderWindowSize", width, height);
}

void lmOSGWidget::showInteractiveMaterialPreview(bool on)
{
    lmCallLog::record("lmOSGWidget::showInteractiveMaterialPreview", on);
}

void lmOSGWidget::setCamerasVisible(bool visible)
{
    lmCallLog::record("lmOSGWidget::setCamerasVisible", visible);
    lmRenderHostState::state().camerasVisible = visible;
}

bool lmOSGWidget::getCamerasVisible()
{
    return lmRenderHostState::state().camerasVisible;
}

void lmOSGWidget::setLightsVisible(bool visible)
{
    lmCallLog::record("lmOSGWidget::setLightsVisible", visible);
    lmRenderHostState::state().lightsVisible = visible;
}

bool lmOSGWidget::getLightsVisible()
{
    return lmRenderHostState::state().lightsVisible;
}

void lmOSGWidget::setJointsVisible(bool visible)
{
    lmCallLog::record("lmOSGWidget::setJointsVisible", visible);
    lmRenderHostState::state().jointsVisible = visible;
}

bool lmOSGWidget::getJointsVisible()
{
    return lmRenderHostState::state().jointsVisible;
}

void lmOSGWidget::setActiveGpuRaytracingMask(unsigned int mask)
{
    lmCallLog::record("lmOSGWidget::setActiveGpuRaytracingMask", mask);
    lmRenderHostState::state().activeGpuRaytracingMask = mask;
}

unsigned int lmOSGWidget::getActiveGpuRaytracingMask()
{
    return lmRenderHostState::state().activeGpuRaytracingMask;
}

// Virtual reality.

namespace {

struct Display
{
    lmOSGWidget::lmDisplay type = lmOSGWidget::lmDisplayDefault;
};

} // namespace

lmOSGWidget::lmDisplay lmOSGWidget::getDisplayType()
{
    return lmHostState<Display>().type;
}

void lmOSGWidget::setDisplayType(lmDisplay display)
{
    lmCallLog::record("lmOSGWidget::setDisplayType", display);
    lmHostState<Display>().type = display;
}

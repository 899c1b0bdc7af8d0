#pragma once

#include "lmHostApi.h"
#include "lmNavigator.h"
#include "lmVrsQuality.h"
#include "OpenSG/OSGColor.h"

#include <vector>

// Static setters and queries of the host's render view.
class LM_HOST_API lmOSGWidget
{
public:
    // Camera.
    static void setFov(int view, float degrees);
    static void setGlobalEyeSeparation(float separation);
    static void setGlobalZeroParallaxDistance(float distance);
    static void setPowerwallWindow(int view, float width, float height, float distance);

    // Devices.
    static void setSpacemouseViewMode(int mode);
    static void setSpacemousePivotMode(int mode);
    static void setSpacemouseTwoAxis(bool on);
    static void setSpacemouseHelicopter(bool on);
    static void setSpacemouseUseFixedHeight(bool on);
    static void setSpacemouseFixedHeight(float height);

    // Navigator.
    static void setNavMode(int view, lmNavigator::Mode mode);
    static void setNavAutoCenter(bool on);
    static void setInteractionMode(lmNavigator::InteractionMode mode);
    static void setNavInvertDollyAxis(bool on);
    static void setNavInvertWheelDolly(bool on);
    static void setNavUsePivotBasedPanning(bool on);
    static void setNavPanningSpeed(float speed);
    static void setNavSpeedMode(int mode);
    static void setNavDollySpeed(float speed);
    static void setNavDollyAxis(int axis);
    static void setNavDollyToPivot(bool on);
    static void setAnimateNavCam(bool on);
    static void setAnimateNavCamDuration(float duration);
    static void setNavOrbitMode(bool on);
    static void setNavOrbitDetectionArea(int pixels);
    static void setNavOrbitDetectionTime(int milliseconds);

    // Selection.
    static void setWireframeSelection(bool on);
    static void setWireframeAlwaysInFront(bool on);

    // Render options.
    static bool isRenderEnabled();
    static void enableRender(int on);
    // Redraws every render window.
    static void updateAllMGLW();
    static void enableAntialiasing(int on);
    static void setPostprocessAntialiasing(unsigned int mode);
    static void setAntialiasing(float distance, float scale, double time);
    static bool getHighQualityAntialiasing();
    static void setHighQualityAntialiasing(bool on);
    static void setAllGradientBackgrounds(const std::vector<osg::Color3f> &colors, const std::vector<float> &positions);
    static void setSortTrans(int on);
    static void setZWriteTrans(int on);
    static void showCoordinateSystem(int on);
    static void showViewCube(bool on);
    static void setAuxiliaryNodesVisibleDuringAntialiasing(bool on);
    static void setHdrReferenceWhite(float nits);
    static void setRGB10(bool on);
    static void setRGB16F(bool on);
    static void setUseSinglePassStereo(bool on);
    static void setOcclusionCulling(int on);
    static void enableHeadlight(int on);
    static void setCameraZUp(bool zUp, bool adaptCamera);
    static void showLogo(bool on);
    static void setForceGLFinish(bool on);
    static void setAutoSuperSampling(bool on);
    static void setVariableRateShadingQualityLow(lmVrsQuality quality);
    static void setVariableRateShadingQualityMedium(lmVrsQuality quality);
    static void setVariableRateShadingQualityHigh(lmVrsQuality quality);
    static void setVariableRateShadingQualityUltra(lmVrsQuality quality);
    static void setAntialiasingQualityLow(int multisamples, bool pixelFilter, bool superSampling, int raytracingSamples);
    static void setAntialiasingQualityMedium(int multisamples, bool pixelFilter, bool superSampling,
                                             int raytracingSamples);
    static void setAntialiasingQualityHigh(int multisamples, bool pixelFilter, bool superSampling, int raytracingSamples);
    static void setAntialiasingQualityUltra(int multisamples, bool pixelFilter, bool superSampling,
                                            int raytracingSamples);
    static void setSuperSampling(bool on);
    static void setSuperSamplingQuality(unsigned int samples);
    static void setSLI(bool on);
    static void setSLIMode(int mode);
    static void setNearFarPlaneLimit(bool limit, float nearPlane, float farPlane);
    static void enableRaytracingDownscale(int on);
    static void setRaytracingDownscaleFactor(unsigned int factor);
    // (-1, -1) releases the fixed size.
    static void setFixedRenderWindowSize(int width, int height);
    static void showInteractiveMaterialPreview(bool on);
    static void setCamerasVisible(bool visible);
    static bool getCamerasVisible();
    static void setLightsVisible(bool visible);
    static bool getLightsVisible();
    static void setJointsVisible(bool visible);
    static bool getJointsVisible();
    // Bit n set: GPU n + 1 raytraces.
    static void setActiveGpuRaytracingMask(unsigned int mask);
    static unsigned int getActiveGpuRaytracingMask();

    // Virtual reality.
    // Output device of the render view, in the host's numbering of display types.
    enum lmDisplay : int { lmDisplayDefault = 0, lmDisplayStarVR = 6 };
    static lmDisplay getDisplayType();
    static void setDisplayType(lmDisplay display);
};

#pragma once

#include "lmHostApi.h"
#include "lmNavigator.h"

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

    // Virtual reality.
};

#include "lmOSGWidget.h"

#include "lmCallLog.h"

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

// Virtual reality.

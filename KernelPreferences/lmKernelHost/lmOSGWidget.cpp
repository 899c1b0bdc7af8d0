#include "lmOSGWidget.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"

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

// Selection.

// Render options.

// Virtual reality.

namespace {

lmOSGWidget::lmDisplay displayType = lmOSGWidget::lmDisplayDefault;

const bool displayTypeResets = (lmHostSettings::addResetHook([] { displayType = lmOSGWidget::lmDisplayDefault; }), true);

} // namespace

lmOSGWidget::lmDisplay lmOSGWidget::getDisplayType()
{
    return displayType;
}

void lmOSGWidget::setDisplayType(lmDisplay display)
{
    lmCallLog::record("lmOSGWidget::setDisplayType", display);
    displayType = display;
}

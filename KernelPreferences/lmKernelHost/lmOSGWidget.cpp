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

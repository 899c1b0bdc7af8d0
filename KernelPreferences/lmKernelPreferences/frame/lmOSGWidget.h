#pragma once

#include "lmHostApi.h"

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

    // Selection.

    // Render options.

    // Virtual reality.
    // Output device of the render view, in the host's numbering of display types.
    enum lmDisplay : int { lmDisplayDefault = 0, lmDisplayStarVR = 6 };
    static lmDisplay getDisplayType();
    static void setDisplayType(lmDisplay display);
};

#pragma once

#include "lmHostApi.h"

// The progress wheel the host's widget library shows while the render view
// antialiases.
class LM_HOST_API exCursorProgress
{
public:
    enum Position
    {
        AttachedToCursor = 0,
        LowerLeftCorner = 1,
    };

    static void setPreferredSize(int pixels);
    static int getPreferredSize();
    static void setPreferredPosition(Position position);
    static Position getPreferredPosition();
    static void setPreferredVisibility(bool visible);
    static bool getPreferredVisibility();
    // Size of the wheel as drawn at 100 %, in pixels.
    static int getBaseSize();
};

#pragma once

#include "lmHostApi.h"

// The host's 3D space-mouse driver.
class LM_HOST_API lmSpacemouse
{
public:
    // Searches for a space mouse and starts the driver (again).
    static void init();
    static void terminate();
};

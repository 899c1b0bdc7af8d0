#pragma once

#include "lmHostApi.h"

// The host's StarVR display support.
class LM_HOST_API lmStarVRHandler
{
public:
    // Null when the host has no StarVR support.
    static lmStarVRHandler *getHandler();

    lmStarVRHandler();
    virtual ~lmStarVRHandler();
};

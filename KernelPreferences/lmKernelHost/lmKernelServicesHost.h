#pragma once

#include "lmHostApi.h"

// The stand-in host's kernel services (preferences, HMD, immersive
// interaction) and StarVR support, with the controls tests use to take them
// away or to make the headset refuse requests. A host reset restores all of
// them, present and willing.
class LM_HOST_API lmKernelServicesHost
{
public:
    enum Presence {
        Present,      // registered with its service object
        NullService,  // the class is known, its service object is missing
        UnknownClass, // the class is not registered at all
    };

    // className is a service's class name, e.g. "lmHMDService".
    static void setServicePresence(const char *className, Presence presence);
    static void setStarVRHandlerPresent(bool present);
    // false: the headset does not confirm eye-tracking requests.
    static void setEyeTrackingSupported(bool supported);
    static void setShadingRateImageSupported(bool supported);
};

#pragma once

#include "lmHostApi.h"

// Static switches of the host's file I/O.
class LM_HOST_API lmFileIO
{
public:
    // CAD format pages.
    // Chooses the legacy 3dm loader instead of the regular Rhino reader.
    static void setUseLegacyRhinoLoader(bool on);
    static bool getUseLegacyRhinoLoader();
    // Chooses the legacy JT loader instead of the regular JT reader.
    static void setUseLegacyJtLoader(bool on);

    // File I/O, OSB / VPB.
};

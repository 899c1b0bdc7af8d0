#pragma once

#include "lmHostApi.h"

// Static switches of the host's file I/O.
class LM_HOST_API lmFileIO
{
public:
    // CAD format pages.

    // File I/O, OSB / VPB.
};

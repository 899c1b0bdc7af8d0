#pragma once

#include "lmHostApi.h"

// The host's texture search: where textures of loaded files are looked up.
class LM_HOST_API lmTexSearch
{
public:
    // Re-reads the search paths from the preference store.
    static void set();
};

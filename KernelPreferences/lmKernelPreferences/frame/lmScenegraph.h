#pragma once

#include "lmHostApi.h"
#include "OpenSG/OSGColor.h"

// Static entry points of the host's scene graph.
class LM_HOST_API lmScenegraph
{
public:
    // Selection.

    // Render options.
};

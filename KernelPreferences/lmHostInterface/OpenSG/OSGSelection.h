#pragma once

#include "lmHostApi.h"

namespace osg {

// Picking rules of the scene-graph library's selection.
class LM_HOST_API Selection
{
public:
    // Lets picking hit objects whose material is fully transparent.
    static void setForceTransparentObjectSelection(bool force);
};

} // namespace osg

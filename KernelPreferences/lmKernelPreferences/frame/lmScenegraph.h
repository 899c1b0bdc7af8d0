#pragma once

#include "lmHostApi.h"
#include "OpenSG/OSGColor.h"
#include "OpenSG/OSGNode.h"

// Static entry points of the host's scene graph.
class LM_HOST_API lmScenegraph
{
public:
    // Selection.

    // Render options.
    static void setHeadlightMode(int mode);
    // The headlight of the current scene; null while there is none.
    static osg::NodePtr getHeadlight();
};

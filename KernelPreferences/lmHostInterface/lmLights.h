#pragma once

#include "lmHostApi.h"
#include "OpenSG/OSGNode.h"

// Static entry points of the host's light handling.
class LM_HOST_API lmLights
{
public:
    // Render options.
    // Replaces the light core of node by one of typeName ("PointLight",
    // "DirectionalLight"), keeping its other settings.
    static void changeLightType(osg::NodePtr node, const char *typeName);
};

#pragma once

#include "lmHostApi.h"
#include "OpenSG/OSGColor.h"
#include "OpenSG/OSGNode.h"

// Static entry points of the host's scene graph.
class LM_HOST_API lmScenegraph
{
public:
    // Selection.
    static void setMarkerSize(float size);
    static void setLODSelection(bool on);
    static void setAutoScroll(bool on);
    static void setPreselectionEnabled(bool on);
    static void setPreselectionColor(const osg::Color3f &color);
    static void setWireframeOverride(bool on);
    static void setSelectionColor(const osg::Color3f &color);

    // Render options.
    static void setHeadlightMode(int mode);
    // The headlight of the current scene; null while there is none.
    static osg::NodePtr getHeadlight();
};

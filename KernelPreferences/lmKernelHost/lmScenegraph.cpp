#include "lmScenegraph.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmRenderHostState.h"

// Selection.

void lmScenegraph::setMarkerSize(float size)
{
    lmCallLog::record("lmScenegraph::setMarkerSize", size);
}

void lmScenegraph::setLODSelection(bool on)
{
    lmCallLog::record("lmScenegraph::setLODSelection", on);
}

void lmScenegraph::setAutoScroll(bool on)
{
    lmCallLog::record("lmScenegraph::setAutoScroll", on);
}

void lmScenegraph::setPreselectionEnabled(bool on)
{
    lmCallLog::record("lmScenegraph::setPreselectionEnabled", on);
}

void lmScenegraph::setPreselectionColor(const osg::Color3f &color)
{
    lmCallLog::record("lmScenegraph::setPreselectionColor", color);
}

void lmScenegraph::setWireframeOverride(bool on)
{
    lmCallLog::record("lmScenegraph::setWireframeOverride", on);
}

void lmScenegraph::setSelectionColor(const osg::Color3f &color)
{
    lmCallLog::record("lmScenegraph::setSelectionColor", color);
}

// Render options.

void lmScenegraph::setHeadlightMode(int mode)
{
    lmCallLog::record("lmScenegraph::setHeadlightMode", mode);
}

osg::NodePtr lmScenegraph::getHeadlight()
{
    return lmRenderHostState::state().headlight;
}

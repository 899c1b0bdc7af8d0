#include "lmScenegraph.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmRenderHostState.h"

// Selection.

// Render options.

void lmScenegraph::setHeadlightMode(int mode)
{
    lmCallLog::record("lmScenegraph::setHeadlightMode", mode);
}

osg::NodePtr lmScenegraph::getHeadlight()
{
    return lmRenderHostState::state().headlight;
}

#include "lmRenderHostState.h"

#include "lmHostState.h"

lmRenderHostState::State &lmRenderHostState::state()
{
    return lmHostState<State>();
}

osg::NodePtr lmRenderHostState::defaultHeadlight()
{
    static osg::Node headlight("Headlight");
    return &headlight;
}

#include "lmRenderHostState.h"

#include "lmHostSettings.h"

namespace {

// Registered while the library loads, so every reset restores the render view.
const bool registered = [] {
    lmHostSettings::addResetHook([] { lmRenderHostState::state() = lmRenderHostState::State(); });
    return true;
}();

} // namespace

lmRenderHostState::State &lmRenderHostState::state()
{
    static State s;
    return s;
}

osg::NodePtr lmRenderHostState::defaultHeadlight()
{
    static osg::Node headlight("Headlight");
    return &headlight;
}

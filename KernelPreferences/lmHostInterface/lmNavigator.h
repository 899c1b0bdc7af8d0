#pragma once

// Value sets of the host's camera navigator. Stored preference values are
// cast to these, so both have a fixed underlying type.
class lmNavigator
{
public:
    enum Mode : int { Trackball = 0, Fly = 1, TwoAxis = 3, Orientation = 4 };

    // Mouse conventions imitating other modelling tools.
    enum InteractionMode : int { LumoInteraction = 0, OndraInteraction = 1, KovaInteraction = 2 };
};

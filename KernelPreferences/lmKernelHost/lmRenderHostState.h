#pragma once

#include "lmHostApi.h"
#include "exCursorProgress.h"
#include "OpenSG/OSGNode.h"

// Stand-in only: the render-view state that the host's render queries answer
// from. The setters of the host classes update it; tests preset it directly.
// Every host reset brings back a freshly started render view.
class LM_HOST_API lmRenderHostState
{
public:
    struct State
    {
        bool renderEnabled = true;
        bool highQualityAntialiasing = false;
        bool camerasVisible = true;
        bool lightsVisible = true;
        bool jointsVisible = false;
        unsigned int activeGpuRaytracingMask = 0xFFFFFFFFu;
        osg::NodePtr headlight = defaultHeadlight();
        int cursorBaseSize = 32;
        int cursorPreferredSize = 32;
        exCursorProgress::Position cursorPosition = exCursorProgress::AttachedToCursor;
        bool cursorVisible = true;
    };

    static State &state();
    // The headlight node of the scene a started host shows.
    static osg::NodePtr defaultHeadlight();
};

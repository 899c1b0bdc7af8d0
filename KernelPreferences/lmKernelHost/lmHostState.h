#pragma once

#include "lmHostSettings.h"

// State of one part of the stand-in host, made on first use and returned to
// a freshly started host's (T()) by every lmHostSettings::resetHost().
template <class T>
T &lmHostState()
{
    static T &state = []() -> T & {
        static T made;
        lmHostSettings::addResetHook([] { made = T(); });
        return made;
    }();
    return state;
}

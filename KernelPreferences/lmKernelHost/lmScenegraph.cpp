#include "lmScenegraph.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"

// Selection.

// Render options.

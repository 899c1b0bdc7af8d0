#include "lmController.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"

// The edition queries live beside the host settings.

// Main window.

// Devices.

// Navigator.

// Web interface.

// Help and generic commands.

// File I/O.

// Render options.

void lmController::setSleepTime(unsigned int milliseconds)
{
    lmCallLog::record("lmController::setSleepTime", milliseconds);
}

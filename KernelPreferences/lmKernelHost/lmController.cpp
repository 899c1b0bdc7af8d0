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

void lmController::setShowImportOptions(bool on) { lmCallLog::record("lmController::setShowImportOptions", on); }

void lmController::setImportOptionsCenterInOrigin(bool on)
{
    lmCallLog::record("lmController::setImportOptionsCenterInOrigin", on);
}

void lmController::setImportOptionsPutOnGround(bool on)
{
    lmCallLog::record("lmController::setImportOptionsPutOnGround", on);
}

// Render options.

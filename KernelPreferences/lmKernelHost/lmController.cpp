#include "lmController.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"

// The edition queries live beside the host settings.

// Main window.

void lmController::showFPS(bool show)
{
    lmCallLog::record("lmController::showFPS", show);
}

void lmController::setWindowOpacity(double opacity)
{
    lmCallLog::record("lmController::setWindowOpacity", opacity);
}

void lmController::setMainWindowDocking(bool enable)
{
    lmCallLog::record("lmController::setMainWindowDocking", enable);
}

void lmController::showButtonText(bool show)
{
    lmCallLog::record("lmController::showButtonText", show);
}

lmController::ELanguage lmController::getDisplayLanguage()
{
    // lmHostSettings::Language has the same order.
    return static_cast<ELanguage>(lmHostSettings::displayLanguage());
}

// Devices.

// Navigator.

// Web interface.

// Help and generic commands.

// File I/O.

// Render options.

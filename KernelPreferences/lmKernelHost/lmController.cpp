#include "lmController.h"

#include "lmCallLog.h"
#include "lmHostProcess.h"
#include "lmHostSettings.h"
#include "lmMessage.h"
#include "lmMessageHelpers.h"

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

void lmController::setJoystickNavigation(int id, bool enabled)
{
    lmCallLog::record("lmController::setJoystickNavigation", id, enabled);
}

// Navigator.

// Web interface.

void lmController::enableWebInterface(bool enable)
{
    lmCallLog::record("lmController::enableWebInterface", enable);
    if (enable)
        lmHostProcess::startWebInterface();
    else
        lmHostProcess::stopWebInterface();
}

bool lmController::isVServerNode() { return lmHostProcess::isVServerNode(); }
bool lmController::isViewer() { return lmHostProcess::isViewer(); }
int lmController::getWebInterfacePort() { return lmHostProcess::webInterfacePort(); }
QString lmController::getWebInterfacePipe() { return lmHostProcess::webInterfacePipe(); }
lmWebInterface *lmController::getWebInterface() { return lmHostProcess::webInterface(); }

// Help and generic commands.

namespace {

std::string messageText(const lmMessage &message)
{
    std::string text = "{";
    for (const auto &entry : message.values()) {
        if (text.size() > 1)
            text += ", ";
        // A type the store does not allow is "?".
        std::string value = "?";
        lmVisitValue(entry.second, [&value](const auto &held) { value = lmLogText(held); });
        text += entry.first + "=" + value;
    }
    return text + "}";
}

} // namespace

void lmController::call(const char *command, lmMessage &message, int flag)
{
    lmCallLog::append("lmController::call(" + lmLogText(command) + ", " + messageText(message) + ", "
                      + lmLogText(flag) + ")");
}

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

void lmController::setSleepTime(unsigned int milliseconds)
{
    lmCallLog::record("lmController::setSleepTime", milliseconds);
}

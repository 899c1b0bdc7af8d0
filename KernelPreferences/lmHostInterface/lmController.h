#pragma once

#include "lmHostApi.h"

#include <QString>

class lmMessage;
class lmWebInterface;

// Static entry points of the host kernel's controller.
class LM_HOST_API lmController
{
public:
    // Editions and process kind.
    static bool isProfessionalEdition();
    static bool isDesignEdition();
    static bool isEssentialsEdition();
    static bool isRestrictedEdition();
    // True while the host runs in its analysis mode.
    static bool getAnalysisMode();

    // Main window.
    // Languages of the user interface, in the order of the language choice.
    enum ELanguage : int { English = 0, Chinese = 1, Japanese = 2, Korean = 3 };
    static void showFPS(bool show);
    static void setWindowOpacity(double opacity);
    static void setMainWindowDocking(bool enable);
    static void showButtonText(bool show);
    // The language the running user interface shows.
    static ELanguage getDisplayLanguage();

    // Devices.
    static void setJoystickNavigation(int id, bool enabled);

    // Navigator.

    // Web interface.
    static void enableWebInterface(bool enable);
    // A render-cluster server node.
    static bool isVServerNode();
    // A viewer-only process.
    static bool isViewer();
    // The port given on the command line; 0 or less when none.
    static int getWebInterfacePort();
    // The pipe name given on the command line; empty when none.
    static QString getWebInterfacePipe();
    // The running web server, or null.
    static lmWebInterface *getWebInterface();

    // Help and generic commands.
    // Runs a named host command with its arguments in message. The stand-in
    // logs it as: lmController::call("name", {key=value, ...}, flag), with the
    // keys in store order and each value in call-log text.
    static void call(const char *command, lmMessage &message, int flag);

    // File I/O.
    // Whether the import dialog opens before a file is imported.
    static void setShowImportOptions(bool on);
    static void setImportOptionsCenterInOrigin(bool on);
    static void setImportOptionsPutOnGround(bool on);

    // Render options.
    // Milliseconds the main thread sleeps between frames.
    static void setSleepTime(unsigned int milliseconds);
};

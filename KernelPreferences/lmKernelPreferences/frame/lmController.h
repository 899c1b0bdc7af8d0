#pragma once

#include "lmHostApi.h"

#include <QString>

class lmMessage;

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

    // Navigator.

    // Web interface.

    // Help and generic commands.

    // File I/O.

    // Render options.
};

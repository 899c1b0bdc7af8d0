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

    // Devices.

    // Navigator.

    // Web interface.

    // Help and generic commands.

    // File I/O.
    // Whether the import dialog opens before a file is imported.
    static void setShowImportOptions(bool on);
    static void setImportOptionsCenterInOrigin(bool on);
    static void setImportOptionsPutOnGround(bool on);

    // Render options.
};

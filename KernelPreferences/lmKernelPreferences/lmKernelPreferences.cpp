#include "lmKernelPreferences.h"

#include "lmController.h"

#include "categories/lmCameraPreferencesGUI.h"
#include "fileio/lmFileIOPreferencesGUI.h"
#include "fileio/lmKovaPreferencesGUI.h"
#include "fileio/lmOsbPreferencesGUI.h"
#include "fileio/lmTesselationPreferencesGUI.h"
#include "fileio/lmWrlPreferencesGUI.h"

namespace {

// Each category is a function-local static: built once, on the first call,
// and destroyed at unload in the reverse order of creation.
template <class Category>
void create()
{
    static Category category;
    (void)category;
}

} // namespace

void initPreferencesPlugin()
{
    // Rows 1 to 18: the CAD format pages.

    create<lmCameraPreferencesGUII>(); // 19
    // 20 devices
    create<lmFileIOPreferencesGUII>(); // 21
    // 22 main window
    // 23 selection
    create<lmKovaPreferencesGUII>(); // 24
    // 25 navigator
    create<lmOsbPreferencesGUII>(); // 26
    // 27 render options

    // Row 28 is skipped in a restricted edition; its guard stays unset, so a
    // later call may still build it.
    if (!lmController::isRestrictedEdition()) {
        create<lmTesselationPreferencesGUII>(); // 28
    }

    // 29 web interface
    create<lmWrlPreferencesGUII>(); // 30
    // 31 help
    // 32 virtual reality
}

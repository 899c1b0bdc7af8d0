#include "lmKernelPreferences.h"

#include "lmController.h"

#include "categories/lmCameraPreferencesGUI.h"
#include "categories/lmMainWindowPreferencesGUI.h"
#include "categories/lmMarkerPreferencesGUI.h"
#include "categories/lmNavigatorPreferencesGUI.h"

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
    // 21 file I/O
    create<lmMainWindowPreferencesGUII>(); // 22
    create<lmMarkerPreferencesGUII>(); // 23
    // 24 Kova
    create<lmNavigatorPreferencesGUII>(); // 25
    // 26 OSB / VPB
    // 27 render options

    // Row 28 is skipped in a restricted edition; its guard stays unset, so a
    // later call may still build it.
    if (!lmController::isRestrictedEdition()) {
        // 28 tessellation
    }

    // 29 web interface
    // 30 WRL
    // 31 help
    // 32 virtual reality
}

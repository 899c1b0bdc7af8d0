#include "lmKernelPreferences.h"

#include "lmController.h"

#include "categories/lmCameraPreferencesGUI.h"
#include "categories/lmDevicesPreferencesGUI.h"
#include "categories/lmHelpPreferencesGUI.h"
#include "categories/lmWebInterfacePreferencesGUI.h"
#include "categories/lmVirtualRealityPreferencesGUI.h"
#include "categories/lmRenderOptionsPreferencesGUI.h"

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
    create<lmDevicesPreferencesGUII>(); // 20
    // 21 file I/O
    // 22 main window
    // 23 selection
    // 24 Kova
    // 25 navigator
    // 26 OSB / VPB
    create<lmRenderOptionsPreferencesGUII>(); // 27

    // Row 28 is skipped in a restricted edition; its guard stays unset, so a
    // later call may still build it.
    if (!lmController::isRestrictedEdition()) {
        // 28 tessellation
    }

    create<lmWebInterfacePreferencesGUII>(); // 29
    // 30 WRL
    create<lmHelpPreferencesGUII>(); // 31
    create<lmVirtualRealityPreferencesGUII>(); // 32
}

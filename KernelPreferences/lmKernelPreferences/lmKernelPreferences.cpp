#include "lmKernelPreferences.h"

#include "lmController.h"

#include "categories/lmCameraPreferencesGUI.h"
#include "fileio/lmCatiaV4FilePreferencesGUI.h"
#include "fileio/lmCatiaV5FilePreferencesGUI.h"
#include "fileio/lmWireFilePreferencesGUI.h"
#include "fileio/lmIgesFilePreferencesGUI.h"
#include "fileio/lmNXFilePreferencesGUI.h"
#include "fileio/lmStepFilePreferencesGUI.h"
#include "fileio/lmDraftexFilePreferencesGUI.h"
#include "fileio/lmFabricorFilePreferencesGUI.h"
#include "fileio/lmSolidWorksFilePreferencesGUI.h"
#include "fileio/lmSolidEdgeFilePreferencesGUI.h"
#include "fileio/lmStlFilePreferencesGUI.h"
#include "fileio/lmProEngineerFilePreferencesGUI.h"
#include "fileio/lmJtFilePreferencesGUI.h"
#include "fileio/lmRhinoFilePreferencesGUI.h"
#include "fileio/lmGenericCADFilePreferencesGUI.h"
#include "fileio/lmKBXFilePreferencesGUI.h"
#include "fileio/lmDGNFilePreferencesGUI.h"
#include "fileio/lmPLMXMLPreferencesGUI.h"

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
    create<lmCatiaV4FilePreferencesGUII>(); // 1
    create<lmCatiaV5FilePreferencesGUII>(); // 2
    create<lmWireFilePreferencesGUII>(); // 3
    create<lmIgesFilePreferencesGUII>(); // 4
    create<lmNXFilePreferencesGUII>(); // 5
    create<lmStepFilePreferencesGUII>(); // 6
    create<lmDraftexFilePreferencesGUII>(); // 7
    create<lmFabricorFilePreferencesGUII>(); // 8
    create<lmSolidWorksFilePreferencesGUII>(); // 9
    create<lmSolidEdgeFilePreferencesGUII>(); // 10
    create<lmStlFilePreferencesGUII>(); // 11
    create<lmProEngineerFilePreferencesGUII>(); // 12
    create<lmJtFilePreferencesGUII>(); // 13
    create<lmRhinoFilePreferencesGUII>(); // 14
    create<lmGenericCADFilePreferencesGUII>(); // 15
    create<lmKBXFilePreferencesGUII>(); // 16
    create<lmDGNFilePreferencesGUII>(); // 17
    create<lmPLMXMLPreferencesGUII>(); // 18

    create<lmCameraPreferencesGUII>(); // 19
    // 20 devices
    // 21 file I/O
    // 22 main window
    // 23 selection
    // 24 Kova
    // 25 navigator
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

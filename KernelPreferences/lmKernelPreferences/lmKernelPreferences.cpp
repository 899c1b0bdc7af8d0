#include "lmKernelPreferences.h"

#include "lmController.h"

#include "categories/lmCameraPreferencesGUI.h"
#include "categories/lmDevicesPreferencesGUI.h"
#include "categories/lmHelpPreferencesGUI.h"
#include "categories/lmMainWindowPreferencesGUI.h"
#include "categories/lmMarkerPreferencesGUI.h"
#include "categories/lmNavigatorPreferencesGUI.h"
#include "categories/lmRenderOptionsPreferencesGUI.h"
#include "categories/lmVirtualRealityPreferencesGUI.h"
#include "categories/lmWebInterfacePreferencesGUI.h"
#include "fileio/lmCatiaV4FilePreferencesGUI.h"
#include "fileio/lmCatiaV5FilePreferencesGUI.h"
#include "fileio/lmDGNFilePreferencesGUI.h"
#include "fileio/lmDraftexFilePreferencesGUI.h"
#include "fileio/lmFabricorFilePreferencesGUI.h"
#include "fileio/lmFileIOPreferencesGUI.h"
#include "fileio/lmGenericCADFilePreferencesGUI.h"
#include "fileio/lmIgesFilePreferencesGUI.h"
#include "fileio/lmJtFilePreferencesGUI.h"
#include "fileio/lmKBXFilePreferencesGUI.h"
#include "fileio/lmKovaPreferencesGUI.h"
#include "fileio/lmNXFilePreferencesGUI.h"
#include "fileio/lmOsbPreferencesGUI.h"
#include "fileio/lmPLMXMLPreferencesGUI.h"
#include "fileio/lmProEngineerFilePreferencesGUI.h"
#include "fileio/lmRhinoFilePreferencesGUI.h"
#include "fileio/lmSolidEdgeFilePreferencesGUI.h"
#include "fileio/lmSolidWorksFilePreferencesGUI.h"
#include "fileio/lmStepFilePreferencesGUI.h"
#include "fileio/lmStlFilePreferencesGUI.h"
#include "fileio/lmTesselationPreferencesGUI.h"
#include "fileio/lmWireFilePreferencesGUI.h"
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
    create<lmDevicesPreferencesGUII>(); // 20
    create<lmFileIOPreferencesGUII>(); // 21
    create<lmMainWindowPreferencesGUII>(); // 22
    create<lmMarkerPreferencesGUII>(); // 23
    create<lmKovaPreferencesGUII>(); // 24
    create<lmNavigatorPreferencesGUII>(); // 25
    create<lmOsbPreferencesGUII>(); // 26
    create<lmRenderOptionsPreferencesGUII>(); // 27

    // Row 28 is skipped in a restricted edition; its guard stays unset, so a
    // later call may still build it.
    if (!lmController::isRestrictedEdition()) {
        create<lmTesselationPreferencesGUII>(); // 28
    }

    create<lmWebInterfacePreferencesGUII>(); // 29
    create<lmWrlPreferencesGUII>(); // 30
    create<lmHelpPreferencesGUII>(); // 31
    create<lmVirtualRealityPreferencesGUII>(); // 32
}

#pragma once

// Every category of the module, in the order the module creates them, by
// class name and by the name of its page.
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

#include <QObject>

#include <memory>
#include <vector>

struct lmCategoryRow
{
    const char *className;
    const char *page;
    std::unique_ptr<QObject> (*make)();
};

template <class Category>
std::unique_ptr<QObject> lmMakeCategory()
{
    return std::make_unique<Category>();
}

inline const std::vector<lmCategoryRow> &lmCategoryRows()
{
    static const std::vector<lmCategoryRow> rows = {
        {"lmCatiaV4FilePreferencesGUII", "Catia V4", lmMakeCategory<lmCatiaV4FilePreferencesGUII>},
        {"lmCatiaV5FilePreferencesGUII", "Catia V5", lmMakeCategory<lmCatiaV5FilePreferencesGUII>},
        {"lmWireFilePreferencesGUII", "Ondra", lmMakeCategory<lmWireFilePreferencesGUII>},
        {"lmIgesFilePreferencesGUII", "Iges", lmMakeCategory<lmIgesFilePreferencesGUII>},
        {"lmNXFilePreferencesGUII", "NX", lmMakeCategory<lmNXFilePreferencesGUII>},
        {"lmStepFilePreferencesGUII", "Step", lmMakeCategory<lmStepFilePreferencesGUII>},
        {"lmDraftexFilePreferencesGUII", "Draftex", lmMakeCategory<lmDraftexFilePreferencesGUII>},
        {"lmFabricorFilePreferencesGUII", "Fabricor", lmMakeCategory<lmFabricorFilePreferencesGUII>},
        {"lmSolidWorksFilePreferencesGUII", "SolidWorks", lmMakeCategory<lmSolidWorksFilePreferencesGUII>},
        {"lmSolidEdgeFilePreferencesGUII", "SolidEdge", lmMakeCategory<lmSolidEdgeFilePreferencesGUII>},
        {"lmStlFilePreferencesGUII", "STL", lmMakeCategory<lmStlFilePreferencesGUII>},
        {"lmProEngineerFilePreferencesGUII", "ProE / Creo", lmMakeCategory<lmProEngineerFilePreferencesGUII>},
        {"lmJtFilePreferencesGUII", "JT", lmMakeCategory<lmJtFilePreferencesGUII>},
        {"lmRhinoFilePreferencesGUII", "Rhino", lmMakeCategory<lmRhinoFilePreferencesGUII>},
        {"lmGenericCADFilePreferencesGUII", "Base CAD", lmMakeCategory<lmGenericCADFilePreferencesGUII>},
        {"lmKBXFilePreferencesGUII", "KBX", lmMakeCategory<lmKBXFilePreferencesGUII>},
        {"lmDGNFilePreferencesGUII", "DGN", lmMakeCategory<lmDGNFilePreferencesGUII>},
        {"lmPLMXMLPreferencesGUII", "PLM XML", lmMakeCategory<lmPLMXMLPreferencesGUII>},
        {"lmCameraPreferencesGUII", "Camera", lmMakeCategory<lmCameraPreferencesGUII>},
        {"lmDevicesPreferencesGUII", "Devices", lmMakeCategory<lmDevicesPreferencesGUII>},
        {"lmFileIOPreferencesGUII", "FileIO", lmMakeCategory<lmFileIOPreferencesGUII>},
        {"lmMainWindowPreferencesGUII", "MainWindow", lmMakeCategory<lmMainWindowPreferencesGUII>},
        {"lmMarkerPreferencesGUII", "Selection", lmMakeCategory<lmMarkerPreferencesGUII>},
        {"lmKovaPreferencesGUII", "Kova", lmMakeCategory<lmKovaPreferencesGUII>},
        {"lmNavigatorPreferencesGUII", "Navigator", lmMakeCategory<lmNavigatorPreferencesGUII>},
        {"lmOsbPreferencesGUII", "OSB / VPB", lmMakeCategory<lmOsbPreferencesGUII>},
        {"lmRenderOptionsPreferencesGUII", "Render Options", lmMakeCategory<lmRenderOptionsPreferencesGUII>},
        {"lmTesselationPreferencesGUII", "Tesselation", lmMakeCategory<lmTesselationPreferencesGUII>},
        {"lmWebInterfacePreferencesGUII", "WebInterface", lmMakeCategory<lmWebInterfacePreferencesGUII>},
        {"lmWrlPreferencesGUII", "WRL", lmMakeCategory<lmWrlPreferencesGUII>},
        {"lmHelpPreferencesGUII", "Help", lmMakeCategory<lmHelpPreferencesGUII>},
        {"lmVirtualRealityPreferencesGUII", "Virtual Reality", lmMakeCategory<lmVirtualRealityPreferencesGUII>},
    };
    return rows;
}

// The eighteen CAD format pages over their shared base: keys and defaults,
// the record committed on apply, the controls each file type shows, and the
// base rules that are easy to get subtly wrong.
#include "fileio/lmCatiaV4FilePreferencesGUI.h"
#include "fileio/lmCatiaV5FilePreferencesGUI.h"
#include "fileio/lmDGNFilePreferencesGUI.h"
#include "fileio/lmDraftexFilePreferencesGUI.h"
#include "fileio/lmFabricorFilePreferencesGUI.h"
#include "fileio/lmGenericCADFilePreferencesGUI.h"
#include "fileio/lmIgesFilePreferencesGUI.h"
#include "fileio/lmJtFilePreferencesGUI.h"
#include "fileio/lmKBXFilePreferencesGUI.h"
#include "fileio/lmNXFilePreferencesGUI.h"
#include "fileio/lmPLMXMLPreferencesGUI.h"
#include "fileio/lmProEngineerFilePreferencesGUI.h"
#include "fileio/lmRhinoFilePreferencesGUI.h"
#include "fileio/lmSolidEdgeFilePreferencesGUI.h"
#include "fileio/lmSolidWorksFilePreferencesGUI.h"
#include "fileio/lmStepFilePreferencesGUI.h"
#include "fileio/lmStlFilePreferencesGUI.h"
#include "fileio/lmWireFilePreferencesGUI.h"
#include "lmCADFileTypeRegistry.h"
#include "lmFileTypeTestSupport.h"
#include "lmHostSettings.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <functional>
#include <memory>

namespace {

using PagePtr = std::unique_ptr<lmFileTypePreferences>;

struct PageRow
{
    std::function<PagePtr()> make;
    const char *pageName;
    int type;
    const char *prefix;
    QStringList formatDefaults; // the page's own keys, as storeDump() prints them
    QStringList applyLines;     // host calls after the common record
    QStringList shownMore;      // controls shown beyond the usual import controls
    QStringList shownLess;      // usual import controls hidden
};

template <class Page>
std::function<PagePtr()> maker()
{
    return [] { return PagePtr(new Page); };
}

const QStringList kUsualControls = {"importTab",         "_cbImportSurfaces",      "_cbImportMeshes",
                                    "_cbImportCurves",   "_advanced_settings",     "m_tesselationSettings",
                                    "m_invisibleInstancesEnabled", "m_importReferencedFiles", "m_optimizeMaterials"};
const QStringList kOndraSwitches = {"m_emptyLayersEnabled", "m_templateGeometriesEnabled", "m_lightsEnabled",
                                    "m_camerasEnabled", "m_variantsEnabled"};
const QStringList kNoReferences = {"m_invisibleInstancesEnabled", "m_importReferencedFiles", "m_optimizeMaterials"};

// In creation order.
const std::vector<PageRow> &rows()
{
    static const std::vector<PageRow> kRows = {
        {maker<lmCatiaV4FilePreferencesGUII>(), "Catia V4", 15, "Catia V4", {}, {}, {"_file_specific_options"}, {}},
        {maker<lmCatiaV5FilePreferencesGUII>(), "Catia V5", 16, "Catia V5", {}, {},
         {"_file_specific_options", "m_associativeMeshesEnabled", "m_coordSystemsEnabled"}, {}},
        {maker<lmWireFilePreferencesGUII>(), "Ondra", 13, "Ondra", {}, {},
         QStringList{"_file_specific_options"} + kOndraSwitches, kNoReferences},
        {maker<lmIgesFilePreferencesGUII>(), "Iges", 21, "Iges", {}, {}, {}, kNoReferences},
        {maker<lmNXFilePreferencesGUII>(), "NX", 20, "NX", {}, {},
         {"_file_specific_options", "m_associativeMeshesEnabled", "m_emptyLayersEnabled"}, {}},
        {maker<lmStepFilePreferencesGUII>(), "Step", 28, "Step", {}, {},
         {"_file_specific_options", "m_associativeMeshesEnabled"}, {}},
        {maker<lmDraftexFilePreferencesGUII>(), "Draftex", 14, "Draftex", {}, {}, {}, kNoReferences},
        {maker<lmFabricorFilePreferencesGUII>(), "Fabricor", 18, "Fabricor", {}, {}, {"_file_specific_options"}, {}},
        {maker<lmSolidWorksFilePreferencesGUII>(), "SolidWorks", 27, "SolidWorks", {}, {},
         {"_file_specific_options"}, {}},
        {maker<lmSolidEdgeFilePreferencesGUII>(), "SolidEdge", 26, "SolidEdge", {}, {},
         {"_file_specific_options", "m_associativeMeshesEnabled"}, {}},
        {maker<lmStlFilePreferencesGUII>(), "STL", 29, "STL",
         {"STLOptions export = int 0", "STLOptions import source reference behavior = int 1"}, {},
         {"exportTab", "m_exportSTL"}, kUsualControls},
        {maker<lmProEngineerFilePreferencesGUII>(), "ProE / Creo", 23, "ProEngineer", {}, {},
         {"_file_specific_options"}, {}},
        {maker<lmJtFilePreferencesGUII>(), "JT", 19, "JT",
         {"JTOptions ACTIVELAYERFILTER = bool true", "JTOptions LOADBREPS = int 0", "JTOptions USEPLUGIN = bool false"},
         {recordLine("JT"), "lmFileIO::setUseLegacyJtLoader(false)"},
         {"_file_specific_options", "m_meshLODs", "m_jtToolkit", "_legacy_jt_settings"}, {}},
        {maker<lmRhinoFilePreferencesGUII>(), "Rhino", 24, "Rhino",
         {"RhinoOptions USEPLUGIN = bool false", "RhinoOptions import nurbs = bool true"},
         {"lmFileIO::setUseLegacyRhinoLoader(false)", recordLine("Rhino")}, {"_legacy_rhino_settings"}, {}},
        {maker<lmGenericCADFilePreferencesGUII>(), "Base CAD", 30, "BCAD", {}, {}, {}, kNoReferences},
        {maker<lmKBXFilePreferencesGUII>(), "KBX", 3, "KBX",
         {"KbxOptions export vertex colors = bool false", "KbxOptions format = int 0", "KbxOptions version = int 0"},
         {"osg::SceneFileHandler::setOptions(\"kbx\", "
          "\"kbx_version=KBX2016,kbx_format=binary,kbx_export_vertex_colors=false\")"},
         {"exportTab", "m_exportKBX"}, {"_advanced_settings", "m_tesselationSettings"}},
        {maker<lmDGNFilePreferencesGUII>(), "DGN", 17, "DGN", {}, {}, {"_file_specific_options"}, {}},
        {maker<lmPLMXMLPreferencesGUII>(), "PLM XML", 7, "PLMXML", {}, {}, {"_file_specific_options"},
         {"_advanced_settings", "m_tesselationSettings", "m_invisibleInstancesEnabled"}},
    };
    return kRows;
}

// The common keys as storeDump() prints them, without the prefix.
const QStringList kCommonDefaults = {
    "Options chord deviation = double 0.075", "Options create groups for layers = bool true",
    "Options flush transformations = bool false", "Options import associative meshes = bool false",
    "Options import coord systems = bool false", "Options import create as smart = bool false",
    "Options import curves = bool false", "Options import empty layers = bool false",
    "Options import invisible curves = bool false", "Options import invisible instances = bool false",
    "Options import invisible meshes = bool false", "Options import invisible surfaces = bool false",
    "Options import mesh LODs = int 2", "Options import meshes = bool true",
    "Options import optimize materials = bool true", "Options import referenced files = bool true",
    "Options import smart reference behavior = int 2", "Options import surfaces = bool true",
    "Options jt toolkit = int 0", "Options keep surface data = bool true",
    "Options max chord length = double 200", "Options merge geometries = bool true",
    "Options normal tolerance = double 10", "Options remove empty groups = bool true",
    "Options stitching = bool true", "Options stitching tolerance = double 0.1",
    "Options tessellation = bool true", "Options unify surface normals = bool true",
    "Options unshare nodes = bool false",
};
const QStringList kOndraDefaults = {
    "Options import cameras = bool false",
    "Options import lights = bool false",
    "Options import template geometries = bool false",
    "Options import variants = bool false",
};
const QStringList kUnprefixedDefaults = {"BCADOptions use ATF = bool false",
                                         "PLMXML load referenced files = bool true"};

const QStringList kCheckedControls = {
    "importTab", "exportTab", "m_exportSTL", "m_exportKBX", "_legacy_jt_settings", "_legacy_rhino_settings",
    "_general_settings", "_file_specific_options", "_project_settings", "_advanced_settings", "_scene_settings",
    "m_tesselationSettings", "_cbImportSurfaces", "_cbImportMeshes", "_cbImportCurves",
    "m_associativeMeshesEnabled", "m_invisibleInstancesEnabled", "m_importReferencedFiles", "m_optimizeMaterials",
    "m_coordSystemsEnabled", "m_emptyLayersEnabled", "m_templateGeometriesEnabled", "m_lightsEnabled",
    "m_camerasEnabled", "m_variantsEnabled", "m_meshLODs", "m_jtToolkit", "m_importAsSmart", "m_importBehavior",
};

QStringList shownControls(lmFileTypePreferencesGUIW *page)
{
    QStringList names;
    for (const QString &name : kCheckedControls) {
        if (name == "importTab" || name == "exportTab") {
            if (page->m_tabWidget->indexOf(name == "importTab" ? page->m_importTab : page->m_exportTab) >= 0)
                names << name;
            continue;
        }
        QWidget *widget = page->findChild<QWidget *>(name);
        if (!widget)
            qFatal("no control %s", qPrintable(name));
        if (shown(page, widget))
            names << name;
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

class tst_FileTypePages : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void eachPageOverTheSharedBase_data()
    {
        QTest::addColumn<int>("row");
        for (std::size_t i = 0; i < rows().size(); ++i)
            QTest::newRow(rows()[i].pageName) << int(i);
    }

    void eachPageOverTheSharedBase()
    {
        QFETCH(int, row);
        const PageRow &r = rows()[row];
        PagePtr page = r.make();
        QCOMPARE(int(page->fileType()), r.type);
        QCOMPARE(QString::fromStdString(page->typeName()), QString(r.prefix));

        // The defaults carry the prefix; apply commits the record of the type.
        page->setDefault(lmPreferences::getData(), true);
        QStringList defaults = kUnprefixedDefaults + r.formatDefaults;
        for (const QString &line : kCommonDefaults + (r.type == 13 ? kOndraDefaults : QStringList()))
            defaults << r.prefix + line;
        std::sort(defaults.begin(), defaults.end());
        defaults.removeDuplicates();
        QCOMPARE(storeDump(), defaults);
        page->apply();
        QCOMPARE(lmCallLog::lines(), QStringList{recordLine(r.prefix)} + r.applyLines);
        lmImportOptions record("", false, false);
        QVERIFY(lmImportOptions::lastWritten(r.prefix, record));

        // The page shows the controls of its type and stores what it shows.
        page->updateGUI();
        QStringList controls = kUsualControls + r.shownMore;
        for (const QString &name : r.shownLess)
            controls.removeAll(name);
        std::sort(controls.begin(), controls.end());
        QCOMPARE(shownControls(page->page()), controls);
        page->updateGUI(); // a second pass removes nothing more
        QCOMPARE(shownControls(page->page()), controls);
        lmCallLog::clear();
        lmPreferencesHost::resetUnchanged();
        page->storeGUI();
        // Every key is pushed on every apply, so nothing is marked unchanged.
        QVERIFY(unchangedKeys().empty());
        QCOMPARE(lmCallLog::lines(), QStringList());
    }

    void smartReferenceMappingIsLossy()
    {
        // Only the scene formats read the smart-reference keys; no CAD page does.
        lmFileTypePreferences lumo(lmCADFileTypes::LUMO, "LUMO", "FileIO");
        lumo.setDefault(lmPreferences::getData(), false);
        QCOMPARE(lumo.page()->m_tabWidget->indexOf(lumo.page()->m_exportTab), 1);
        const std::pair<int, const char *> cases[] = {{0, "3"}, {1, "3"}, {2, "2"}, {3, "3"}};
        for (const auto &c : cases) {
            setStored("LUMOOptions import smart reference behavior", c.first);
            setStored("LUMOOptions import create as smart", c.first == 3);
            QCOMPARE(applyLog(lumo),
                     QStringList{recordLine("LUMO", {{"smartReferenceBehavior", c.second},
                                                     {"importAsSmartReference", c.first == 3 ? "true" : "false"}})});
            lumo.updateGUI();
            QCOMPARE(lumo.page()->m_importBehavior->currentIndex(), c.first == 2 ? 0 : 1);
            QCOMPARE(lumo.page()->m_importAsSmart->isChecked(), c.first == 3);
        }
        QVERIFY(shown(lumo.page(), lumo.page()->_project_settings));
        QVERIFY(shown(lumo.page(), lumo.page()->m_importBehavior));
        QVERIFY(!shown(lumo.page(), lumo.page()->m_tesselationSettings));

        lumo.page()->m_importBehavior->setCurrentIndex(0);
        lumo.storeGUI();
        QCOMPARE(stored("LUMOOptions import smart reference behavior", -1), 2);
        lumo.page()->m_importBehavior->setCurrentIndex(1);
        lumo.storeGUI();
        QCOMPARE(stored("LUMOOptions import smart reference behavior", -1), 1);

        // A CAD page defaults the keys but never reads them.
        lmStepFilePreferencesGUII step;
        startPage(step);
        setStored("StepOptions import smart reference behavior", 0);
        setStored("StepOptions import create as smart", true);
        step.apply();
        QCOMPARE(lmCallLog::lines(), QStringList{recordLine("Step")});
    }

    void tessellationAndFlushTransformationsNeverReachTheRecord()
    {
        lmStepFilePreferencesGUII step;
        startPage(step);
        setStored("StepOptions tessellation", false);
        step.page()->m_tesselationSettings->flushTransformations()->setChecked(true);
        step.storeGUI();
        QCOMPARE(stored("StepOptions flush transformations", false), true);
        step.apply();
        QCOMPARE(lmCallLog::lines(), QStringList{recordLine("Step")});
        QVERIFY(step.options().flushTransformations);
        QVERIFY(!step.options().tessellation);
    }

    void restrictedEditionNeverKeepsSurfaceData()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        lmCatiaV5FilePreferencesGUII catia;
        startPage(catia);
        catia.apply();
        QCOMPARE(lmCallLog::lines(), QStringList{recordLine("Catia V5", {{"keepSurfaceData", "false"}})});
        QCOMPARE(stored("Catia V5Options keep surface data", false), true);
        catia.updateGUI();
        QVERIFY(catia.page()->m_tesselationSettings->keepSurfaceData()->isChecked());
    }

    void plmXmlKeepsReferencedFilesUnderItsOwnKey()
    {
        lmPLMXMLPreferencesGUII plm;
        startPage(plm);
        setStored("PLMXML load referenced files", false);
        plm.apply();
        QCOMPARE(lmCallLog::lines(), QStringList{recordLine("PLMXML", {{"importReferencedFiles", "false"}})});
        plm.updateGUI();
        QVERIFY(!plm.page()->m_importReferencedFiles->isChecked());

        // The prefixed key is defaulted but plays no part.
        setStored("PLMXMLOptions import referenced files", false);
        plm.page()->m_importReferencedFiles->setChecked(true);
        plm.storeGUI();
        QCOMPARE(stored("PLMXML load referenced files", false), true);
        QCOMPARE(stored("PLMXMLOptions import referenced files", true), false);
        QCOMPARE(applyLog(plm), QStringList{recordLine("PLMXML")});
        QVERIFY(!lmPreferences::getData().contains("undefinedOptions import referenced files"));

        // Any other page reads its prefixed key.
        lmFabricorFilePreferencesGUII fabricor;
        startPage(fabricor);
        setStored("FabricorOptions import referenced files", false);
        fabricor.apply();
        QCOMPARE(lmCallLog::lines(), QStringList{recordLine("Fabricor", {{"importReferencedFiles", "false"}})});
    }

    void geometryCombosHaveThreeStates()
    {
        lmSolidEdgeFilePreferencesGUII page;
        startPage(page);
        const std::pair<const char *, QComboBox *> combos[] = {
            {"surfaces", page.page()->_cbImportSurfaces},
            {"meshes", page.page()->_cbImportMeshes},
            {"curves", page.page()->_cbImportCurves},
        };
        for (const auto &combo : combos) {
            const std::string import = std::string("SolidEdgeOptions import ") + combo.first;
            const std::string invisible = std::string("SolidEdgeOptions import invisible ") + combo.first;
            // Invisible without import imports nothing.
            const std::tuple<bool, bool, int> states[] = {
                {false, false, 0}, {true, false, 1}, {true, true, 2}, {false, true, 0}};
            for (const auto &state : states) {
                setStored(import, std::get<0>(state));
                setStored(invisible, std::get<1>(state));
                page.updateGUI();
                QCOMPARE(combo.second->currentIndex(), std::get<2>(state));
            }
            for (int index = 0; index < 3; ++index) {
                combo.second->setCurrentIndex(index);
                page.storeGUI();
                QCOMPARE(stored(import, index == 0), index > 0);
                QCOMPARE(stored(invisible, index != 2), index > 1);
            }
        }
        page.apply();
        const QString everything = recordLine("SolidEdge", {
            {"importSurfaces", "true"}, {"importInvisibleSurfaces", "true"}, {"importMeshes", "true"},
            {"importInvisibleMeshes", "true"}, {"importCurves", "true"}, {"importInvisibleCurves", "true"}});
        QCOMPARE(lmCallLog::lines(), QStringList{everything});
    }

    void tessellationWidgetCarriesItsOptions()
    {
        lmIgesFilePreferencesGUII iges;
        startPage(iges);
        lmTesselationSettings *tessellation = iges.page()->m_tesselationSettings;
        QCOMPARE(tessellation->qualityPreset(), lmTesselationSettings::MediumQuality);
        QVERIFY(tessellation->isGroupEnabled(lmTesselationSettings::StitchingGroup));

        setStored("IgesOptions chord deviation", 0.2);
        setStored("IgesOptions normal tolerance", 20.0);
        setStored("IgesOptions max chord length", 500.0);
        setStored("IgesOptions stitching", false);
        setStored("IgesOptions unshare nodes", true);
        iges.updateGUI();
        QCOMPARE(tessellation->qualityPreset(), lmTesselationSettings::LowQuality);
        QVERIFY(!tessellation->stitchingToleranceField()->isEnabled());
        QVERIFY(tessellation->unshareNodes()->isChecked());

        // The page wired the widget: a typed value leaves the preset.
        tessellation->chordDeviationField()->setValue(0.0125);
        QCOMPARE(tessellation->qualityPreset(), lmTesselationSettings::CustomQuality);
        tessellation->stitchingSwitch()->setChecked(true);
        tessellation->setStitchingTolerance(0.25);
        tessellation->keepSurfaceData()->setChecked(false);
        tessellation->unifySurfaceNormals()->setChecked(false);
        tessellation->mergeGeometries()->setChecked(false);
        tessellation->createGroupsForLayers()->setChecked(false);
        tessellation->removeEmptyGroups()->setChecked(false);
        iges.storeGUI();
        iges.apply();
        const QString edited = recordLine("Iges", {
            {"chordDeviation", "0.0125"}, {"normalTolerance", "20"}, {"maxChordLength", "500"},
            {"stitchingTolerance", "0.25"}, {"keepSurfaceData", "false"}, {"unifySurfaceNormals", "false"},
            {"mergeGeometries", "false"}, {"createGroupsForLayers", "false"}, {"removeEmptyGroups", "false"},
            {"unshareNodes", "true"}});
        QCOMPARE(lmCallLog::lines(), QStringList{edited});

        // A mesh format neither tessellates nor stitches.
        lmKBXFilePreferencesGUII kbx;
        startPage(kbx);
        lmTesselationSettings *meshes = kbx.page()->m_tesselationSettings;
        QVERIFY(meshes->isGroupEnabled(lmTesselationSettings::SceneGraphGroup));
        QVERIFY(!meshes->isGroupEnabled(lmTesselationSettings::TessellationGroup));
        QVERIFY(!meshes->isGroupEnabled(lmTesselationSettings::StitchingGroup));
    }

    void ondraAloneLoadsItsSwitches()
    {
        lmWireFilePreferencesGUII ondra;
        startPage(ondra);
        lmFileTypePreferencesGUIW *p = ondra.page();
        for (QCheckBox *box : {p->m_emptyLayersEnabled, p->m_templateGeometriesEnabled, p->m_lightsEnabled,
                               p->m_camerasEnabled, p->m_variantsEnabled})
            box->setChecked(true);
        ondra.storeGUI();
        ondra.apply();
        const QString switches = recordLine("Ondra", {
            {"importEmptyLayers", "true"}, {"importTemplateGeometries", "true"}, {"importLights", "true"},
            {"importCameras", "true"}, {"importVariants", "true"}});
        QCOMPARE(lmCallLog::lines(), QStringList{switches});

        // NX shows the empty-layers switch but never loads it; the store still
        // reaches the record.
        lmNXFilePreferencesGUII nx;
        startPage(nx);
        setStored("NXOptions import empty layers", true);
        nx.updateGUI();
        QVERIFY(!nx.page()->m_emptyLayersEnabled->isChecked());
        QCOMPARE(applyLog(nx), QStringList{recordLine("NX", {{"importEmptyLayers", "true"}})});
        QVERIFY(!lmPreferences::getData().contains("NXOptions import cameras"));
    }

    void wrongTypedOrMissingKeysKeepTheMember()
    {
        lmDGNFilePreferencesGUII dgn;
        startPage(dgn);
        setStored("DGNOptions chord deviation", 0.5);
        setStored("DGNOptions import mesh LODs", 0);
        dgn.apply();
        setStored("DGNOptions chord deviation", 0.25f); // float, not double
        lmPreferences::getData().remove("DGNOptions import mesh LODs");
        lmCallLog::clear();
        lmStderrCapture capture;
        dgn.apply();
        QCOMPARE(capture.text().count(
                     QLatin1String("getFromMessage : Attribute 'DGNOptions chord deviation' has wrong type")),
                 1);
        QCOMPARE(lmCallLog::lines(),
                 QStringList{recordLine("DGN", {{"chordDeviation", "0.5"}, {"importMeshLODs", "0"}})});
        QVERIFY(lmHoldsType(lmPreferences::getData().get("DGNOptions chord deviation"), typeid(float)));
    }

    void unsupportedTypesKeepTheirKeysButShowNoPage()
    {
        lmCADFileTypeRegistry::removeType(lmCADFileTypes::Step);
        lmCADFileTypeRegistry::removeType(lmCADFileTypes::BCAD);
        QVERIFY(lmCADFileTypeRegistry::isSupported(lmCADFileTypes::Iges));
        lmStepFilePreferencesGUII step;
        lmGenericCADFilePreferencesGUII base;
        QCOMPARE(lmPreferencesHost::pages().size(), std::size_t(1));
        QCOMPARE(lmPreferencesHost::pages()[0].page, QStringLiteral("Base CAD"));
        QVERIFY(step.page()->isHidden());

        startPage(step);
        QVERIFY(lmPreferences::getData().contains("StepOptions stitching"));
        step.apply();
        QCOMPARE(lmCallLog::lines(), QStringList{recordLine("Step")});

        // A fresh host supports every type with a page again.
        lmResetHost();
        QVERIFY(lmCADFileTypeRegistry::isSupported(lmCADFileTypes::Step));
        const auto prt = lmCADFileTypeRegistry::typesOf("prt");
        QCOMPARE(prt.size(), std::size_t(2));
        QCOMPARE(prt[0], lmCADFileTypes::NX);
        QCOMPARE(prt[1], lmCADFileTypes::ProEngineer);
    }
};

QTEST_MAIN(tst_FileTypePages)
#include "tst_filetypepages.moc"

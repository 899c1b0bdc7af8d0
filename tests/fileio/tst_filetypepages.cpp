// The eighteen CAD format pages over their shared base. One table, written
// from the design, holds what differs per file type: the key prefix, the
// page's own keys, what apply hands to the host and which controls show.
// The cases after it are the base's rules and the format pages' own options.
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
#include "lmHostSettings.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"
#include "OpenSG/OSGSceneFileHandler.h"

#include <QtTest>

#include <functional>
#include <iterator>
#include <memory>
#include <tuple>

namespace {

using PagePtr = std::unique_ptr<lmFileTypePreferences>;

// The logged record with every field at its default except the given ones.
QString recordLine(const QString &typeName, const QMap<QString, QString> &changes = {})
{
    static const QStringList kFields = {
        "mergeGeometries=true", "keepSurfaceData=true", "createGroupsForLayers=true", "removeEmptyGroups=true",
        "unshareNodes=false", "chordDeviation=0.075", "normalTolerance=10", "maxChordLength=200", "stitching=true",
        "stitchingTolerance=0.1", "importSurfaces=true", "importInvisibleSurfaces=false", "unifySurfaceNormals=true",
        "importCurves=false", "importInvisibleCurves=false", "importMeshes=true", "importInvisibleMeshes=false",
        "importAssociativeMeshes=false", "importInvisibleInstances=false", "importTemplateGeometries=false",
        "importLights=false", "importCameras=false", "importVariants=false", "importReferencedFiles=true",
        "importMeshLODs=2", "jtToolkit=0", "importEmptyLayers=false", "importCoordSystems=false",
        "optimizeMaterials=true", "smartReferenceBehavior=2", "importAsSmartReference=false",
        "useLegacyRhinoLoader=false", "importNurbs=true", "jtUsePlugin=false", "jtActiveLayerFilter=true",
        "jtLoadBreps=0"};
    QString line = QStringLiteral("lmImportOptions::write(\"%1\"").arg(typeName);
    int used = 0;
    for (const QString &field : kFields) {
        const QString name = field.section('=', 0, 0);
        used += changes.contains(name);
        line += ", " + (changes.contains(name) ? name + '=' + changes.value(name) : field);
    }
    if (used != changes.size())
        qFatal("recordLine: unknown field among %s", qPrintable(QStringList(changes.keys()).join(' ')));
    return line + ')';
}

template <class T>
T stored(const std::string &key, T fallback)
{
    getFromMessage(lmPreferences::getData(), key, fallback);
    return fallback;
}

// Shown when the page is: nothing up to its tab is hidden, and the tab is
// still in the tab widget.
bool shown(lmFileTypePreferencesGUIW *page, const QWidget *widget)
{
    for (const QWidget *w = widget; w && w != page; w = w->parentWidget()) {
        if (w == page->m_importTab || w == page->m_exportTab)
            return page->m_tabWidget->indexOf(const_cast<QWidget *>(w)) >= 0;
        if (w->isHidden())
            return false;
    }
    return true;
}

const QStringList kChecked = {
    "m_importTab", "m_exportTab", "m_exportSTL", "m_exportKBX", "_legacy_jt_settings", "_legacy_rhino_settings",
    "_general_settings", "_file_specific_options", "_project_settings", "_advanced_settings", "_scene_settings",
    "m_tesselationSettings", "_cbImportSurfaces", "_cbImportMeshes", "_cbImportCurves", "m_associativeMeshesEnabled",
    "m_invisibleInstancesEnabled", "m_importReferencedFiles", "m_optimizeMaterials", "m_coordSystemsEnabled",
    "m_emptyLayersEnabled", "m_templateGeometriesEnabled", "m_lightsEnabled", "m_camerasEnabled",
    "m_variantsEnabled", "m_meshLODs", "m_jtToolkit", "m_importAsSmart", "m_importBehavior"};
// Shown on a plain CAD page.
const QStringList kUsual = {"m_importTab", "_cbImportSurfaces", "_cbImportMeshes", "_cbImportCurves",
                            "_advanced_settings", "m_tesselationSettings", "m_invisibleInstancesEnabled",
                            "m_importReferencedFiles", "m_optimizeMaterials"};
const QString kOndra = "m_emptyLayersEnabled m_templateGeometriesEnabled m_lightsEnabled m_camerasEnabled "
                       "m_variantsEnabled";
const QString kNoReferences = "m_invisibleInstancesEnabled m_importReferencedFiles m_optimizeMaterials";

QString shownControls(lmFileTypePreferencesGUIW *page)
{
    QStringList names;
    for (const QString &name : kChecked)
        if (shown(page, page->findChild<QWidget *>(name)))
            names << name;
    std::sort(names.begin(), names.end());
    return names.join(' ');
}

struct PageRow
{
    std::function<PagePtr()> make;
    const char *pageName;
    int type;
    const char *prefix;
    QString more;               // controls shown beyond the usual ones
    QString less;               // usual controls hidden
    QStringList ownDefaults;    // the page's own keys after setDefault
    QStringList applyLines;     // host calls after the common record
};

template <class Page>
std::function<PagePtr()> maker()
{
    return [] { return PagePtr(new Page); };
}

// In creation order.
const std::vector<PageRow> &pageRows()
{
    static const std::vector<PageRow> kRows = {
        {maker<lmCatiaV4FilePreferencesGUII>(), "Catia V4", 15, "Catia V4", "_file_specific_options", {}, {}, {}},
        {maker<lmCatiaV5FilePreferencesGUII>(), "Catia V5", 16, "Catia V5",
         "_file_specific_options m_associativeMeshesEnabled m_coordSystemsEnabled", {}, {}, {}},
        {maker<lmWireFilePreferencesGUII>(), "Ondra", 13, "Ondra", "_file_specific_options " + kOndra, kNoReferences,
         {}, {}},
        {maker<lmIgesFilePreferencesGUII>(), "Iges", 21, "Iges", "", kNoReferences, {}, {}},
        {maker<lmNXFilePreferencesGUII>(), "NX", 20, "NX",
         "_file_specific_options m_associativeMeshesEnabled m_emptyLayersEnabled", {}, {}, {}},
        {maker<lmStepFilePreferencesGUII>(), "Step", 28, "Step", "_file_specific_options m_associativeMeshesEnabled",
         {}, {}, {}},
        {maker<lmDraftexFilePreferencesGUII>(), "Draftex", 14, "Draftex", "", kNoReferences, {}, {}},
        {maker<lmFabricorFilePreferencesGUII>(), "Fabricor", 18, "Fabricor", "_file_specific_options", {}, {}, {}},
        {maker<lmSolidWorksFilePreferencesGUII>(), "SolidWorks", 27, "SolidWorks", "_file_specific_options", {}, {},
         {}},
        {maker<lmSolidEdgeFilePreferencesGUII>(), "SolidEdge", 26, "SolidEdge",
         "_file_specific_options m_associativeMeshesEnabled", {}, {}, {}},
        {maker<lmStlFilePreferencesGUII>(), "STL", 29, "STL", "m_exportTab m_exportSTL", kUsual.join(' '),
         {"STLOptions export = int 0", "STLOptions import source reference behavior = int 1"}, {}},
        {maker<lmProEngineerFilePreferencesGUII>(), "ProE / Creo", 23, "ProEngineer", "_file_specific_options", {},
         {}, {}},
        {maker<lmJtFilePreferencesGUII>(), "JT", 19, "JT",
         "_file_specific_options m_meshLODs m_jtToolkit _legacy_jt_settings", {},
         {"JTOptions ACTIVELAYERFILTER = bool true", "JTOptions LOADBREPS = int 0", "JTOptions USEPLUGIN = bool false"},
         {recordLine("JT"), "lmFileIO::setUseLegacyJtLoader(false)"}},
        {maker<lmRhinoFilePreferencesGUII>(), "Rhino", 24, "Rhino", "_legacy_rhino_settings", {},
         {"RhinoOptions USEPLUGIN = bool false", "RhinoOptions import nurbs = bool true"},
         {"lmFileIO::setUseLegacyRhinoLoader(false)", recordLine("Rhino")}},
        {maker<lmGenericCADFilePreferencesGUII>(), "Base CAD", 30, "BCAD", "", kNoReferences, {}, {}},
        {maker<lmKBXFilePreferencesGUII>(), "KBX", 3, "KBX", "m_exportTab m_exportKBX",
         "_advanced_settings m_tesselationSettings",
         {"KbxOptions export vertex colors = bool false", "KbxOptions format = int 0", "KbxOptions version = int 0"},
         {"osg::SceneFileHandler::setOptions(\"kbx\", "
          "\"kbx_version=KBX2016,kbx_format=binary,kbx_export_vertex_colors=false\")"}},
        {maker<lmDGNFilePreferencesGUII>(), "DGN", 17, "DGN", "_file_specific_options", {}, {}, {}},
        {maker<lmPLMXMLPreferencesGUII>(), "PLM XML", 7, "PLMXML", "_file_specific_options",
         "_advanced_settings m_tesselationSettings m_invisibleInstancesEnabled", {}, {}},
    };
    return kRows;
}

// The common keys: suffix, default, another value and the record field it
// reaches (none: read, never handed on by a CAD page). The last four are
// given a default by the Ondra page only, yet read by every page.
struct CommonKey
{
    const char *suffix;
    QVariant byDefault;
    QVariant other;
    const char *field;
};
const CommonKey kCommonKeys[] = {
    {"stitching", true, false, "stitching"},
    {"stitching tolerance", 0.1, 0.5, "stitchingTolerance"},
    {"tessellation", true, false, nullptr},
    {"keep surface data", true, false, "keepSurfaceData"},
    {"create groups for layers", true, false, "createGroupsForLayers"},
    {"chord deviation", 0.075, 0.2, "chordDeviation"},
    {"normal tolerance", 10.0, 20.0, "normalTolerance"},
    {"max chord length", 200.0, 500.0, "maxChordLength"},
    {"merge geometries", true, false, "mergeGeometries"},
    {"remove empty groups", true, false, "removeEmptyGroups"},
    {"unshare nodes", false, true, "unshareNodes"},
    {"flush transformations", false, true, nullptr},
    {"import surfaces", true, false, "importSurfaces"},
    {"import invisible surfaces", false, true, "importInvisibleSurfaces"},
    {"unify surface normals", true, false, "unifySurfaceNormals"},
    {"import meshes", true, false, "importMeshes"},
    {"import invisible meshes", false, true, "importInvisibleMeshes"},
    {"import curves", false, true, "importCurves"},
    {"import invisible curves", false, true, "importInvisibleCurves"},
    {"import invisible instances", false, true, "importInvisibleInstances"},
    {"import associative meshes", false, true, "importAssociativeMeshes"},
    {"import empty layers", false, true, "importEmptyLayers"},
    {"import coord systems", false, true, "importCoordSystems"},
    {"import referenced files", true, false, "importReferencedFiles"},
    {"import mesh LODs", 2, 0, "importMeshLODs"},
    {"jt toolkit", 0, 1, "jtToolkit"},
    {"import optimize materials", true, false, "optimizeMaterials"},
    {"import smart reference behavior", 2, 0, nullptr},
    {"import create as smart", false, true, nullptr},
    {"import cameras", false, true, "importCameras"},
    {"import lights", false, true, "importLights"},
    {"import variants", false, true, "importVariants"},
    {"import template geometries", false, true, "importTemplateGeometries"},
};
const int kOndraOnly = 4;

boost::any toAny(const QVariant &value)
{
    if (value.userType() == QMetaType::Bool)
        return value.toBool();
    return value.userType() == QMetaType::Int ? boost::any(value.toInt()) : boost::any(value.toDouble());
}

} // namespace

class tst_FileTypePages : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void eachFileType_data()
    {
        QTest::addColumn<int>("row");
        for (std::size_t i = 0; i < pageRows().size(); ++i)
            QTest::newRow(pageRows()[i].pageName) << int(i);
    }

    void eachFileType()
    {
        QFETCH(int, row);
        const PageRow &r = pageRows()[row];
        PagePtr page = r.make();
        QCOMPARE(int(page->fileType()), r.type);
        QCOMPARE(lmPreferencesHost::pages().back().page, QString(r.pageName));

        page->setDefault(lmPreferences::getData(), true);
        QStringList defaults = QStringList{"BCADOptions use ATF = bool false",
                                           "PLMXML load referenced files = bool true"} + r.ownDefaults;
        for (int i = 0; i < int(std::size(kCommonKeys)) - (r.type == 13 ? 0 : kOndraOnly); ++i)
            defaults << QString("%1Options %2 = %3 %4").arg(r.prefix, kCommonKeys[i].suffix,
                                                            kCommonKeys[i].byDefault.typeName(),
                                                            kCommonKeys[i].byDefault.toString());
        std::sort(defaults.begin(), defaults.end());
        defaults.removeDuplicates(); // Rhino's merge key is a common one
        QCOMPARE(storeDump(), defaults);
        QCOMPARE(applyLog(*page), QStringList{recordLine(r.prefix)} + r.applyLines);

        page->updateGUI();
        QStringList controls = kUsual + r.more.split(' ', Qt::SkipEmptyParts);
        for (const QString &name : r.less.split(' ', Qt::SkipEmptyParts))
            controls.removeAll(name);
        std::sort(controls.begin(), controls.end());
        QCOMPARE(shownControls(page->page()), controls.join(' '));
        page->updateGUI(); // a second pass removes nothing more
        QCOMPARE(shownControls(page->page()), controls.join(' '));
        // Every key is pushed on every apply, so nothing is marked unchanged.
        QCOMPARE(acceptLog(*page), QStringList{recordLine(r.prefix)} + r.applyLines);
        QVERIFY(unchangedKeys().empty());
    }

    void smartReferencesOfTheSceneFormatsAreLossy()
    {
        lmFileTypePreferences lumo(lmCADFileTypes::LUMO, "LUMO", "FileIO");
        lumo.setDefault(lmPreferences::getData(), false);
        for (int behavior : {0, 1, 2, 3}) {
            setStored("LUMOOptions import smart reference behavior", behavior);
            setStored("LUMOOptions import create as smart", behavior == 3);
            const QString kept = behavior == 2 ? "2" : "3";
            QCOMPARE(applyLog(lumo), QStringList{recordLine("LUMO", {{"smartReferenceBehavior", kept},
                                                                     {"importAsSmartReference",
                                                                      behavior == 3 ? "true" : "false"}})});
            lumo.updateGUI();
            QCOMPARE(lumo.page()->m_importBehavior->currentIndex(), behavior == 2 ? 0 : 1);
            QCOMPARE(lumo.page()->m_importAsSmart->isChecked(), behavior == 3);
        }
        QVERIFY(shown(lumo.page(), lumo.page()->_project_settings));
        QVERIFY(shown(lumo.page(), lumo.page()->m_importBehavior));
        QVERIFY(!shown(lumo.page(), lumo.page()->m_tesselationSettings));
        for (int index : {0, 1}) {
            lumo.page()->m_importBehavior->setCurrentIndex(index);
            lumo.storeGUI();
            QCOMPARE(stored("LUMOOptions import smart reference behavior", -1), index == 0 ? 2 : 1);
        }
    }

    // Each common key reaches its field of the record, read under the key of
    // the page's type; PLM XML reads its sub-references from its own key.
    void eachKeyReachesItsRecordField_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("field");
        const int step = 5, plm = 17;
        for (const CommonKey &key : kCommonKeys)
            QTest::addRow("%s", key.suffix) << step << QString("StepOptions ") + key.suffix << key.other
                                            << (key.field ? key.field + ('=' + key.other.toString()) : QString());
        QTest::newRow("PLM XML prefixed") << plm << "PLMXMLOptions import referenced files" << QVariant(false)
                                          << QString();
        QTest::newRow("PLM XML own") << plm << "PLMXML load referenced files" << QVariant(false)
                                     << "importReferencedFiles=false";
    }

    void eachKeyReachesItsRecordField()
    {
        QFETCH(int, row);
        QFETCH(QString, key);
        QFETCH(QVariant, value);
        QFETCH(QString, field);
        PagePtr page = pageRows()[row].make();
        startPage(*page);
        setStored(key.toStdString(), toAny(value));
        QMap<QString, QString> changes;
        if (!field.isEmpty())
            changes[field.section('=', 0, 0)] = field.section('=', 1);
        QCOMPARE(applyLog(*page).first(), recordLine(pageRows()[row].prefix, changes));
    }

    void geometryCombosHaveThreeStates()
    {
        lmSolidEdgeFilePreferencesGUII page;
        startPage(page);
        for (const char *kind : {"surfaces", "meshes", "curves"}) {
            auto *combo = page.page()->findChild<QComboBox *>(QStringLiteral("_cbImport") + QChar(kind[0]).toUpper()
                                                              + (kind + 1));
            const std::string import = std::string("SolidEdgeOptions import ") + kind;
            const std::string invisible = std::string("SolidEdgeOptions import invisible ") + kind;
            // Invisible without import imports nothing.
            for (auto state : {std::make_tuple(false, false, 0), std::make_tuple(true, false, 1),
                               std::make_tuple(true, true, 2), std::make_tuple(false, true, 0)}) {
                setStored(import, std::get<0>(state));
                setStored(invisible, std::get<1>(state));
                page.updateGUI();
                QCOMPARE(combo->currentIndex(), std::get<2>(state));
            }
            for (int index : {0, 1, 2}) {
                combo->setCurrentIndex(index);
                page.storeGUI();
                QCOMPARE(stored(import, index == 0), index > 0);
                QCOMPARE(stored(invisible, index != 2), index > 1);
            }
        }
    }

    void tessellationWidgetAndSwitchesOfTheForm()
    {
        lmIgesFilePreferencesGUII iges;
        startPage(iges);
        lmTesselationSettings *tessellation = iges.page()->m_tesselationSettings;
        setStored("IgesOptions chord deviation", 0.2);
        setStored("IgesOptions normal tolerance", 20.0);
        setStored("IgesOptions max chord length", 500.0);
        iges.updateGUI();
        QCOMPARE(tessellation->qualityPreset(), lmTesselationSettings::LowQuality);
        QVERIFY(tessellation->isGroupEnabled(lmTesselationSettings::StitchingGroup));
        // The page wired the widget: a typed value leaves the preset.
        tessellation->chordDeviationField()->setValue(0.0125);
        QCOMPARE(tessellation->qualityPreset(), lmTesselationSettings::CustomQuality);
        tessellation->setStitchingTolerance(0.25);
        tessellation->unshareNodes()->setChecked(true);
        QCOMPARE(acceptLog(iges), QStringList{recordLine("Iges", {{"chordDeviation", "0.0125"},
            {"normalTolerance", "20"}, {"maxChordLength", "500"}, {"stitchingTolerance", "0.25"},
            {"unshareNodes", "true"}})});
        // A mesh format neither tessellates nor stitches.
        lmKBXFilePreferencesGUII kbx;
        startPage(kbx);
        QVERIFY(kbx.page()->m_tesselationSettings->isGroupEnabled(lmTesselationSettings::SceneGraphGroup));
        QVERIFY(!kbx.page()->m_tesselationSettings->isGroupEnabled(lmTesselationSettings::TessellationGroup));

        // PLM XML shows its sub-references from a key of its own.
        lmPLMXMLPreferencesGUII plm;
        startPage(plm);
        setStored("PLMXML load referenced files", false);
        plm.updateGUI();
        QVERIFY(!plm.page()->m_importReferencedFiles->isChecked());
        plm.page()->m_importReferencedFiles->setChecked(true);
        plm.storeGUI();
        QCOMPARE(stored("PLMXML load referenced files", false), true);
        // The Ondra switches load and store; NX shows empty layers but never loads them.
        lmWireFilePreferencesGUII ondra;
        lmNXFilePreferencesGUII nx;
        startPage(ondra);
        startPage(nx);
        for (const char *key : {"OndraOptions import cameras", "OndraOptions import empty layers",
                                "NXOptions import empty layers"})
            setStored(key, true);
        ondra.updateGUI();
        nx.updateGUI();
        QVERIFY(ondra.page()->m_camerasEnabled->isChecked() && ondra.page()->m_emptyLayersEnabled->isChecked());
        QVERIFY(!nx.page()->m_emptyLayersEnabled->isChecked());
        ondra.page()->m_lightsEnabled->setChecked(true);
        ondra.storeGUI();
        QCOMPARE(stored("OndraOptions import lights", false), true);
        // Restricted editions never keep surface data; the store keeps the choice.
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        QCOMPARE(applyLog(nx), QStringList{recordLine("NX", {{"importEmptyLayers", "true"},
                                                              {"keepSurfaceData", "false"}})});
        QCOMPARE(stored("NXOptions keep surface data", false), true);
    }

    void unsupportedTypesKeepTheirKeysButShowNoPage()
    {
        lmCADFileTypeRegistry::removeType(lmCADFileTypes::Step);
        lmCADFileTypeRegistry::removeType(lmCADFileTypes::BCAD);
        lmStepFilePreferencesGUII step;
        lmGenericCADFilePreferencesGUII base;
        QCOMPARE(lmPreferencesHost::pages().size(), std::size_t(1));
        QCOMPARE(lmPreferencesHost::pages()[0].page, QStringLiteral("Base CAD"));
        QVERIFY(step.page()->isHidden());
        startPage(step);
        QCOMPARE(applyLog(step), QStringList{recordLine("Step")});
    }

    void kbxOptionString_data()
    {
        QTest::addColumn<int>("version");
        QTest::addColumn<int>("format");
        QTest::addColumn<bool>("colors");
        QTest::addColumn<QString>("options");
        const QString binary = ",kbx_format=binary,kbx_export_vertex_colors=false";
        QTest::newRow("current") << 0 << 0 << false << "kbx_version=KBX2016" + binary;
        for (int version : {2011, 2012, 2013, 2014, 2016})
            QTest::addRow("%d", version) << version << 0 << false << QString("kbx_version=KBX%1").arg(version) + binary;
        QTest::newRow("2015 has no name") << 2015 << 0 << false << "kbx_version=" + binary;
        QTest::newRow("unknown version") << 1999 << 0 << false << "kbx_version=" + binary;
        QTest::newRow("format 1") << 0 << 1 << true
                                  << "kbx_version=KBX2016,kbx_format=ascii,kbx_export_vertex_colors=true";
        QTest::newRow("format 2") << 2012 << 2 << false
                                  << "kbx_version=KBX2012,kbx_format=ascii,kbx_export_vertex_colors=false";
    }

    void kbxOptionString()
    {
        QFETCH(int, version);
        QFETCH(int, format);
        QFETCH(bool, colors);
        QFETCH(QString, options);
        lmKBXFilePreferencesGUII kbx;
        startPage(kbx);
        setStored("KbxOptions version", version);
        setStored("KbxOptions format", format);
        setStored("KbxOptions export vertex colors", colors);
        kbx.apply();
        QCOMPARE(QString(osg::SceneFileHandler::the().getOptions("kbx")), options);
    }

    void kbxPageEditsReachTheLoader()
    {
        lmKBXFilePreferencesGUII kbx;
        startPage(kbx);
        kbx.page()->_export_version->setCurrentIndex(1); // "KBX 2014/2015"
        kbx.page()->_export_format->setCurrentIndex(1);
        kbx.page()->_export_vertex_colors->setChecked(true);
        QCOMPARE(acceptLog(kbx).last(), QString("osg::SceneFileHandler::setOptions(\"kbx\", "
                                                "\"kbx_version=KBX2014,kbx_format=ascii,kbx_export_vertex_colors=true\")"));
        QCOMPARE(stored("KbxOptions version", -1), 2014);
        setStored("KbxOptions version", 2012);
        kbx.updateGUI();
        QCOMPARE(kbx.page()->_export_version->currentText(), QStringLiteral("KBX 2012"));
        setStored("KbxOptions version", 2015); // no item stores it
        kbx.updateGUI();
        QCOMPARE(kbx.page()->_export_version->currentIndex(), -1);
    }

    void rhinoLegacyLoader()
    {
        lmRhinoFilePreferencesGUII rhino;
        startPage(rhino);
        lmFileTypePreferencesGUIW *p = rhino.page();
        auto state = [p] {
            return QList<bool>{p->m_rhinoMergeGeometries->isEnabled(), p->m_rhinoImportNurbs->isEnabled(),
                               p->_advanced_settings->isEnabled(), shown(p, p->_file_specific_options)};
        };
        QCOMPARE(state(), QList<bool>({false, false, true, false}));
        const QStringList before = storeDump();
        p->m_useLegacyRhinoLoader->setChecked(true);
        QCOMPARE(state(), QList<bool>({true, true, false, false}));
        QCOMPARE(storeDump(), before); // toggling alone writes nothing

        // The common record first, then the legacy loader's own.
        p->m_rhinoImportNurbs->setChecked(false);
        QCOMPARE(acceptLog(rhino), QStringList({recordLine("Rhino"), "lmFileIO::setUseLegacyRhinoLoader(true)",
                                                recordLine("Rhino", {{"useLegacyRhinoLoader", "true"},
                                                                     {"importNurbs", "false"}})}));
        // The merge key is the common one too; the legacy box is stored last.
        p->m_rhinoMergeGeometries->setChecked(false);
        rhino.storeGUI();
        QCOMPARE(stored("RhinoOptions merge geometries", true), false);

        // With the regular reader the legacy options stay stored and written.
        setStored("RhinoOptions USEPLUGIN", false);
        rhino.updateGUI();
        QCOMPARE(state(), QList<bool>({false, false, true, false}));
        QCOMPARE(applyLog(rhino).last(), recordLine("Rhino", {{"mergeGeometries", "false"}, {"importNurbs", "false"}}));
    }

    void jtLegacyLoader_data()
    {
        QTest::addColumn<int>("edition");
        QTest::newRow("professional") << int(lmHostSettings::Professional);
        QTest::newRow("design") << int(lmHostSettings::Design);
    }

    void jtLegacyLoader()
    {
        QFETCH(int, edition);
        lmHostSettings::setEdition(lmHostSettings::Edition(edition));
        lmJtFilePreferencesGUII jt;
        startPage(jt);
        lmFileTypePreferencesGUIW *p = jt.page();
        // Only the professional edition chooses the B-rep handling.
        QCOMPARE(shown(p, p->m_legacyJtbreps), edition == lmHostSettings::Professional);
        QCOMPARE(shown(p, p->_brepsLabel), edition == lmHostSettings::Professional);
        const QList<QWidget *> legacy = {p->m_legacyJtActiveLayerfilter, p->_brepsLabel, p->m_legacyJtbreps};
        for (QWidget *widget : legacy)
            QVERIFY(!widget->isEnabled());
        p->_useLegacyJtLoader->setChecked(true);
        for (QWidget *widget : legacy)
            QVERIFY(widget->isEnabled());

        p->m_legacyJtActiveLayerfilter->setChecked(false);
        p->m_legacyJtbreps->setCurrentIndex(2);
        p->m_jtToolkit->setCurrentIndex(1);
        const QString legacyRecord = recordLine("JT", {{"jtToolkit", "1"}, {"jtUsePlugin", "true"},
                                                       {"jtActiveLayerFilter", "false"}, {"jtLoadBreps", "2"}});
        QCOMPARE(acceptLog(jt), QStringList({recordLine("JT", {{"jtToolkit", "1"}}), legacyRecord,
                                             "lmFileIO::setUseLegacyJtLoader(true)"}));
        // Disabled again by a loaded store, yet still written.
        setStored("JTOptions USEPLUGIN", false);
        jt.updateGUI();
        for (QWidget *widget : legacy)
            QVERIFY(!widget->isEnabled());
        QCOMPARE(applyLog(jt).at(1), QString(legacyRecord).replace("jtUsePlugin=true", "jtUsePlugin=false"));
    }

    void stlKeepsTheExportFormatAndPinsSourceReferences()
    {
        setStored("STLOptions export", 1);
        setStored("STLOptions import source reference behavior", 4);
        lmStlFilePreferencesGUII stl;
        stl.setDefault(lmPreferences::getData(), false);
        QCOMPARE(stored("STLOptions export", -1), 1);
        QCOMPARE(stored("STLOptions import source reference behavior", -1), 1);
        stl.updateGUI();
        QCOMPARE(stl.page()->m_stlExportFormat->currentText(), QStringLiteral("Binary"));

        // Apply stores the page's choice and the pinned key, nothing else.
        setStored("STLOptions import source reference behavior", 3);
        stl.page()->m_stlExportFormat->setCurrentIndex(0);
        stl.page()->_cbImportCurves->setCurrentIndex(2);
        QStringList expected = storeDump();
        expected.replaceInStrings("STLOptions export = int 1", "STLOptions export = int 0");
        expected.replaceInStrings("reference behavior = int 3", "reference behavior = int 1");
        QCOMPARE(applyLog(stl), QStringList{recordLine("STL")});
        QCOMPARE(storeDump(), expected);
    }
};

QTEST_MAIN(tst_FileTypePages)
#include "tst_filetypepages.moc"

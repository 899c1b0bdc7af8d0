#include "lmFileTypePreferences.h"

#include "lmCADFileTypeRegistry.h"
#include "lmController.h"
#include "lmImportOptions.h"
#include "lmKeyBinding.h"
#include "lmMessageHelpers.h"

#include <QtGlobal>

#include <initializer_list>
#include <iterator>

using namespace lmCADFileTypes;

namespace {

using Options = lmFileTypePreferences::Options;

// What the common form offers a file type.
enum Capability : unsigned {
    ImportTab = 1u << 0,
    ExportTab = 1u << 1,
    ExportKBX = 1u << 2,        // the KBX group of the export tab
    ExportSTL = 1u << 3,        // the STL group of the export tab
    LegacyJt = 1u << 4,         // the legacy JT loader group
    LegacyRhino = 1u << 5,      // the legacy Rhino loader group
    CommonOptions = 1u << 6,    // the common controls are loaded and stored
    FileSpecific = 1u << 7,     // the "File Specific Options" page
    Project = 1u << 8,          // the project page
    Advanced = 1u << 9,         // the advanced page
    Tessellation = 1u << 10,    // the tessellation widget, shown, loaded and stored
    MeshesOnly = 1u << 11,      // nothing to tessellate or stitch: scene-graph options only
    AssociativeMeshes = 1u << 12,
    InvisibleInstances = 1u << 13,
    References = 1u << 14,      // referenced files and material optimisation
    CoordSystems = 1u << 15,
    OndraSwitches = 1u << 16,   // cameras, lights, variants, template geometries: defaulted and shown
    EmptyLayers = 1u << 17,     // shown and stored
    LoadsEmptyLayers = 1u << 18,
    JtOptions = 1u << 19,       // mesh LODs and JT toolkit shown
    SmartReferences = 1u << 20, // the native scene formats: read, shown and stored
    OwnReferenceKey = 1u << 21, // sub-references under "PLMXML load referenced files"
};

constexpr unsigned kPlainCAD = ImportTab | CommonOptions | Advanced | Tessellation;
constexpr unsigned kCAD = kPlainCAD | InvisibleInstances | References;
constexpr unsigned kCADFile = kCAD | FileSpecific;
constexpr unsigned kScene = ImportTab | ExportTab | CommonOptions | Advanced | InvisibleInstances | References;

struct FileTypeRow
{
    FileType type;
    const char *name; // prefixes the keys and names the record
    unsigned capabilities;
};

// One row per file type, in the order of the enumeration.
constexpr FileTypeRow kFileTypes[] = {
    {Cinema4D, "Cinema4D", 0},
    {Cosmo, "Cosmo", 0},
    {PlanetWeb, "PlanetWeb", 0},
    {KBX, "KBX", (kCAD & ~Advanced) | ExportTab | ExportKBX | MeshesOnly},
    {Kova, "Kova", kCAD | ExportTab},
    {Obj, "Obj", kCAD},
    {OpenSG, "OpenSG", kScene | SmartReferences},
    {PLMXML, "PLMXML", ImportTab | CommonOptions | FileSpecific | References | OwnReferenceKey},
    {Python, "Python", 0},
    {Krafta3D, "3DKrafta", 0},
    {LUMO, "LUMO", kScene | Project | SmartReferences},
    {VRML, "VRML", kCAD | ExportTab},
    {ACIS, "ACIS", kCAD},
    {Ondra, "Ondra", kPlainCAD | FileSpecific | OndraSwitches | EmptyLayers | LoadsEmptyLayers},
    {Draftex, "Draftex", kPlainCAD},
    {CatiaV4, "Catia V4", kCADFile},
    {CatiaV5, "Catia V5", kCADFile | AssociativeMeshes | CoordSystems},
    {DGN, "DGN", kCADFile},
    {Fabricor, "Fabricor", kCADFile},
    {JT, "JT", kCADFile | JtOptions | LegacyJt},
    {NX, "NX", kCADFile | AssociativeMeshes | EmptyLayers},
    {Iges, "Iges", kPlainCAD},
    {Parasolid, "Parasolid", kCAD},
    {ProEngineer, "ProEngineer", kCADFile},
    {Rhino, "Rhino", kCADFile | LegacyRhino},
    {SketchUp, "SketchUp", kCAD},
    {SolidEdge, "SolidEdge", kCADFile | AssociativeMeshes},
    {SolidWorks, "SolidWorks", kCADFile},
    {Step, "Step", kCADFile | AssociativeMeshes},
    {STL, "STL", ExportTab | ExportSTL},
    {BCAD, "BCAD", kPlainCAD},
    {Undefined, "Undefined", 0},
    {Unsupported, "Unsupported", 0},
};

constexpr bool inEnumerationOrder()
{
    for (int i = 0; i < int(std::size(kFileTypes)); ++i)
        if (kFileTypes[i].type != i)
            return false;
    return true;
}
static_assert(std::size(kFileTypes) == Unsupported + 1, "one row per file type");
static_assert(inEnumerationOrder(), "rows in the order of the enumeration");

// The common options: key suffix and default.
constexpr lmTypedKey<bool> kStitching{"Options stitching", true};
constexpr lmTypedKey<double> kStitchingTolerance{"Options stitching tolerance", 0.1};
constexpr lmTypedKey<bool> kTessellation{"Options tessellation", true};
constexpr lmTypedKey<bool> kKeepSurfaceData{"Options keep surface data", true};
constexpr lmTypedKey<bool> kCreateGroupsForLayers{"Options create groups for layers", true};
constexpr lmTypedKey<double> kChordDeviation{"Options chord deviation", 0.075};
constexpr lmTypedKey<double> kNormalTolerance{"Options normal tolerance", 10.0};
constexpr lmTypedKey<double> kMaxChordLength{"Options max chord length", 200.0};
constexpr lmTypedKey<bool> kMergeGeometries{"Options merge geometries", true};
constexpr lmTypedKey<bool> kRemoveEmptyGroups{"Options remove empty groups", true};
constexpr lmTypedKey<bool> kUnshareNodes{"Options unshare nodes", false};
constexpr lmTypedKey<bool> kFlushTransformations{"Options flush transformations", false};
constexpr lmTypedKey<bool> kImportSurfaces{"Options import surfaces", true};
constexpr lmTypedKey<bool> kImportInvisibleSurfaces{"Options import invisible surfaces", false};
constexpr lmTypedKey<bool> kUnifySurfaceNormals{"Options unify surface normals", true};
constexpr lmTypedKey<bool> kImportMeshes{"Options import meshes", true};
constexpr lmTypedKey<bool> kImportInvisibleMeshes{"Options import invisible meshes", false};
constexpr lmTypedKey<bool> kImportCurves{"Options import curves", false};
constexpr lmTypedKey<bool> kImportInvisibleCurves{"Options import invisible curves", false};
constexpr lmTypedKey<bool> kImportInvisibleInstances{"Options import invisible instances", false};
constexpr lmTypedKey<bool> kImportAssociativeMeshes{"Options import associative meshes", false};
constexpr lmTypedKey<bool> kImportEmptyLayers{"Options import empty layers", false};
constexpr lmTypedKey<bool> kImportCoordSystems{"Options import coord systems", false};
constexpr lmTypedKey<bool> kImportCameras{"Options import cameras", false};
constexpr lmTypedKey<bool> kImportLights{"Options import lights", false};
constexpr lmTypedKey<bool> kImportVariants{"Options import variants", false};
constexpr lmTypedKey<bool> kImportTemplateGeometries{"Options import template geometries", false};
constexpr lmTypedKey<bool> kImportReferencedFiles{"Options import referenced files", true};
constexpr lmTypedKey<std::int32_t> kImportMeshLODs{"Options import mesh LODs", 2};
constexpr lmTypedKey<std::int32_t> kJtToolkit{"Options jt toolkit", 0};
constexpr lmTypedKey<bool> kOptimizeMaterials{"Options import optimize materials", true};
constexpr lmTypedKey<std::int32_t> kSmartReferenceBehavior{"Options import smart reference behavior", 2};
constexpr lmTypedKey<bool> kCreateAsSmart{"Options import create as smart", false};
constexpr char kSourceReferenceBehavior[] = "Options import source reference behavior";
// Written without a prefix, by every page.
constexpr lmTypedKey<bool> kUseATF{"BCADOptions use ATF", false};
constexpr lmTypedKey<bool> kPLMXMLReferencedFiles{"PLMXML load referenced files", true};

// The stored smart-reference behaviour that keeps references ("Keep References").
constexpr std::int32_t kKeepReferences = 2;

const FileTypeRow &rowOf(int type)
{
    return kFileTypes[type >= 0 && type < int(std::size(kFileTypes)) ? type : Unsupported];
}

int geometryIndex(bool import, bool invisible)
{
    return !import ? 0 : (!invisible ? 1 : 2);
}

void removeTab(QTabWidget *tabs, QWidget *tab)
{
    const int index = tabs->indexOf(tab);
    if (index >= 0)
        tabs->removeTab(index);
}

void setVisible(std::initializer_list<QWidget *> widgets, bool visible)
{
    for (QWidget *widget : widgets)
        widget->setVisible(visible);
}

} // namespace

lmFileTypePreferences::lmFileTypePreferences(FileType type, const QString &pageName, const QString &parentName)
    : lmPreferences(parentName, pageName), m_fileType(type), m_page(nullptr)
{
    Q_ASSERT(type >= KBX && type <= BCAD);
    declareKeys();

    m_page = new lmFileTypePreferencesGUIW;
    bindCommonControls();

    // The base CAD options are offered whatever the host supports; any other
    // format without a reader keeps its keys but shows no page.
    if (type != BCAD && !lmCADFileTypeRegistry::isSupported(type)) {
        m_page->hide();
        return;
    }
    m_page->m_tesselationSettings->setConnections();
    addPreferencesGUI(m_page);
}

lmFileTypePreferences::~lmFileTypePreferences()
{
    // The unprefixed keys go too, although every other page wrote them as well.
    lmMessage &store = getData();
    for (const Row &row : m_rows)
        store.remove(row.name);
    subPreferencesGUI(m_page);
    delete m_page;
}

bool lmFileTypePreferences::has(unsigned capability) const
{
    return (rowOf(m_fileType).capabilities & capability) != 0;
}

// A key of this page: prefix (empty for the unprefixed keys) and option. The
// member starts at the default and is what apply and updateGUI read it into.
template <class T>
void lmFileTypePreferences::declare(const char *prefix, const lmTypedKey<T> &option, T *member, int use)
{
    m_keyNames.push_back(std::string(prefix) + option.name);
    const lmTypedKey<T> key{m_keyNames.back().c_str(), option.defaultValue};
    *member = option.defaultValue;
    Row row{key.name, {}, {}};
    if (use & Defaulted)
        row.writeDefault = [key](lmMessage &store, bool overwrite) { key.writeDefault(store, overwrite); };
    if (use & Read)
        row.read = [key, member](const lmMessage &store) { key.read(store, *member); };
    m_rows.push_back(std::move(row));
}

const char *lmFileTypePreferences::declaredName(const std::string &name) const
{
    for (const std::string &declared : m_keyNames)
        if (declared == name)
            return declared.c_str();
    qFatal("undeclared key %s", name.c_str());
    return nullptr;
}

template <class T>
lmTypedKey<T> lmFileTypePreferences::prefixed(const lmTypedKey<T> &option) const
{
    return {declaredName(key(option.name)), option.defaultValue};
}

// Every key of the page, in the order of its defaults.
void lmFileTypePreferences::declareKeys()
{
    Options &o = m_options;
    const char *prefix = rowOf(m_fileType).name;
    declare(prefix, kStitching, &o.stitching);
    declare(prefix, kStitchingTolerance, &o.stitchingTolerance);
    declare(prefix, kTessellation, &o.tessellation);
    declare(prefix, kKeepSurfaceData, &o.keepSurfaceData);
    declare(prefix, kCreateGroupsForLayers, &o.createGroupsForLayers);
    declare(prefix, kChordDeviation, &o.chordDeviation);
    declare(prefix, kNormalTolerance, &o.normalTolerance);
    declare(prefix, kMaxChordLength, &o.maxChordLength);
    declare(prefix, kMergeGeometries, &o.mergeGeometries);
    declare(prefix, kRemoveEmptyGroups, &o.removeEmptyGroups);
    declare(prefix, kUnshareNodes, &o.unshareNodes);
    declare(prefix, kFlushTransformations, &o.flushTransformations);
    declare(prefix, kImportSurfaces, &o.importSurfaces);
    declare(prefix, kImportInvisibleSurfaces, &o.importInvisibleSurfaces);
    declare(prefix, kUnifySurfaceNormals, &o.unifySurfaceNormals);
    declare(prefix, kImportMeshes, &o.importMeshes);
    declare(prefix, kImportInvisibleMeshes, &o.importInvisibleMeshes);
    declare(prefix, kImportCurves, &o.importCurves);
    declare(prefix, kImportInvisibleCurves, &o.importInvisibleCurves);
    declare(prefix, kImportInvisibleInstances, &o.importInvisibleInstances);
    declare(prefix, kImportAssociativeMeshes, &o.importAssociativeMeshes);
    declare(prefix, kImportEmptyLayers, &o.importEmptyLayers);
    declare(prefix, kImportCoordSystems, &o.importCoordSystems);
    // Read by every page, given a default by the Ondra page only.
    const int ondra = has(OndraSwitches) ? Defaulted | Read : Read;
    declare(prefix, kImportCameras, &o.importCameras, ondra);
    declare(prefix, kImportLights, &o.importLights, ondra);
    declare(prefix, kImportVariants, &o.importVariants, ondra);
    declare(prefix, kImportTemplateGeometries, &o.importTemplateGeometries, ondra);
    const bool ownReferenceKey = has(OwnReferenceKey);
    declare(prefix, kImportReferencedFiles, &o.importReferencedFiles, ownReferenceKey ? Defaulted : Defaulted | Read);
    declare(prefix, kImportMeshLODs, &o.importMeshLODs);
    declare(prefix, kJtToolkit, &o.jtToolkit);
    declare(prefix, kOptimizeMaterials, &o.optimizeMaterials);
    const int smart = has(SmartReferences) ? Defaulted | Read : Defaulted;
    declare(prefix, kSmartReferenceBehavior, &o.smartReferenceBehavior, smart);
    declare(prefix, kCreateAsSmart, &o.importCreateAsSmart, smart);
    bool useATF = false; // read by the Base CAD readers, not by a page
    declare("", kUseATF, &useATF, Defaulted);
    declare("", kPLMXMLReferencedFiles, &o.importReferencedFiles, ownReferenceKey ? Defaulted | Read : Defaulted);
}

// The controls that storeCommonControls() writes for this type, bound to
// their keys; the geometry combos, the tessellation values and the smart
// references are loaded and stored by hand.
void lmFileTypePreferences::bindCommonControls()
{
    m_bindings.writeFromHere(lmPageBindings::Plain); // every key counts as changed
    if (!has(CommonOptions))
        return;

    lmFileTypePreferencesGUIW *p = m_page;
    const auto names = [this](std::initializer_list<const char *> options) {
        QStringList keys;
        for (const char *option : options)
            keys << QString::fromStdString(key(option));
        return keys;
    };
    lmBindKeys(p->_cbImportSurfaces, names({kImportSurfaces.name, kImportInvisibleSurfaces.name}));
    lmBindKeys(p->_cbImportMeshes, names({kImportMeshes.name, kImportInvisibleMeshes.name}));
    lmBindKeys(p->_cbImportCurves, names({kImportCurves.name, kImportInvisibleCurves.name}));

    if (has(Tessellation)) {
        lmTesselationSettings *tessellation = p->m_tesselationSettings;
        lmBindKeys(tessellation->chordDeviationField(), names({kChordDeviation.name}));
        lmBindKeys(tessellation->normalToleranceField(), names({kNormalTolerance.name}));
        lmBindKeys(tessellation->maxChordLengthField(), names({kMaxChordLength.name}));
        lmBindKeys(tessellation->stitchingSwitch(), names({kStitching.name}));
        lmBindKeys(tessellation->stitchingToleranceField(), names({kStitchingTolerance.name}));
        m_bindings.bind(prefixed(kKeepSurfaceData), tessellation->keepSurfaceData());
        m_bindings.bind(prefixed(kUnifySurfaceNormals), tessellation->unifySurfaceNormals());
        m_bindings.bind(prefixed(kMergeGeometries), tessellation->mergeGeometries());
        m_bindings.bind(prefixed(kCreateGroupsForLayers), tessellation->createGroupsForLayers());
        m_bindings.bind(prefixed(kRemoveEmptyGroups), tessellation->removeEmptyGroups());
        m_bindings.bind(prefixed(kUnshareNodes), tessellation->unshareNodes());
        m_bindings.bind(prefixed(kFlushTransformations), tessellation->flushTransformations());
    }

    m_bindings.bind(prefixed(kImportAssociativeMeshes), p->m_associativeMeshesEnabled);
    m_bindings.bind(prefixed(kImportInvisibleInstances), p->m_invisibleInstancesEnabled);
    m_bindings.bind(has(OwnReferenceKey) ? kPLMXMLReferencedFiles : prefixed(kImportReferencedFiles),
                    p->m_importReferencedFiles);
    m_bindings.bind(prefixed(kOptimizeMaterials), p->m_optimizeMaterials);
    m_bindings.bind(prefixed(kImportCoordSystems), p->m_coordSystemsEnabled);
    if (has(OndraSwitches)) {
        m_bindings.bind(prefixed(kImportCameras), p->m_camerasEnabled);
        m_bindings.bind(prefixed(kImportLights), p->m_lightsEnabled);
        m_bindings.bind(prefixed(kImportVariants), p->m_variantsEnabled);
        m_bindings.bind(prefixed(kImportTemplateGeometries), p->m_templateGeometriesEnabled);
    }
    if (has(LoadsEmptyLayers))
        m_bindings.bind(prefixed(kImportEmptyLayers), p->m_emptyLayersEnabled);
    else if (has(EmptyLayers)) // shown and stored, never loaded
        m_bindings.bindShown(
            prefixed(kImportEmptyLayers), p->m_emptyLayersEnabled, [](QCheckBox *, bool) {},
            [](const QCheckBox *box) { return box->isChecked(); });
    m_bindings.bind(prefixed(kImportMeshLODs), p->m_meshLODs, lmIfNoItem::Clear);
    m_bindings.bind(prefixed(kJtToolkit), p->m_jtToolkit, lmIfNoItem::Clear);
    if (has(SmartReferences)) {
        lmBindKeys(p->m_importAsSmart, names({kCreateAsSmart.name}));
        lmBindKeys(p->m_importBehavior, names({kSmartReferenceBehavior.name}));
    }
}

std::string lmFileTypePreferences::typeName() const
{
    return typeName(m_fileType);
}

std::string lmFileTypePreferences::typeName(int type)
{
    return type >= 0 && type < int(std::size(kFileTypes)) ? kFileTypes[type].name : "undefined";
}

std::string lmFileTypePreferences::smartReferenceBehaviorKey(FileType type)
{
    return typeName(type) + kSmartReferenceBehavior.name;
}

std::string lmFileTypePreferences::createAsSmartKey(FileType type)
{
    return typeName(type) + kCreateAsSmart.name;
}

std::string lmFileTypePreferences::key(const char *suffix) const
{
    return typeName() + suffix;
}

std::string lmFileTypePreferences::sourceReferenceKey() const
{
    return key(kSourceReferenceBehavior);
}

void lmFileTypePreferences::setDefault(lmMessage &, bool overwrite)
{
    lmMessage &store = getData();
    for (const Row &row : m_rows)
        if (row.writeDefault)
            row.writeDefault(store, overwrite);
    setFormatDefault(overwrite);
}

void lmFileTypePreferences::readOptions(const lmMessage &store)
{
    for (const Row &row : m_rows)
        if (row.read)
            row.read(store);
}

void lmFileTypePreferences::apply()
{
    lmMessage &store = getData();
    readOptions(store);
    // Restricted editions never keep surface data; the store keeps the user's choice.
    if (lmController::isRestrictedEdition())
        m_options.keepSurfaceData = false;

    const Options &o = m_options;
    lmImportOptions record(typeName(), true, true);
    // "Options tessellation" and "Options flush transformations" are read but
    // deliberately not handed to the reader.
    record.m_mergeGeometries = o.mergeGeometries;
    record.m_keepSurfaceData = o.keepSurfaceData;
    record.m_createGroupsForLayers = o.createGroupsForLayers;
    record.m_removeEmptyGroups = o.removeEmptyGroups;
    record.m_unshareNodes = o.unshareNodes;
    record.m_chordDeviation = o.chordDeviation;
    record.m_normalTolerance = o.normalTolerance;
    record.m_maxChordLength = o.maxChordLength;
    record.m_stitching = o.stitching;
    record.m_stitchingTolerance = o.stitchingTolerance;
    record.m_importSurfaces = o.importSurfaces;
    record.m_importInvisibleSurfaces = o.importInvisibleSurfaces;
    record.m_unifySurfaceNormals = o.unifySurfaceNormals;
    record.m_importCurves = o.importCurves;
    record.m_importInvisibleCurves = o.importInvisibleCurves;

    record.setImportMeshes(o.importMeshes);
    record.setImportInvisibleMeshes(o.importInvisibleMeshes);
    record.setImportAssociativeMeshes(o.importAssociativeMeshes);
    record.setImportInvisibleInstances(o.importInvisibleInstances);
    record.setImportTemplateGeometries(o.importTemplateGeometries);
    record.setImportLights(o.importLights);
    record.setImportCameras(o.importCameras);
    record.setImportVariants(o.importVariants);
    record.setImportReferencedFiles(o.importReferencedFiles);
    record.m_importMeshLODs = o.importMeshLODs;
    record.m_jtToolkit = o.jtToolkit;
    record.m_importEmptyLayers = o.importEmptyLayers;
    record.setImportCoordSystems(o.importCoordSystems);
    record.setOptimizeMaterials(o.optimizeMaterials);
    // Only a stored 2 keeps references; every other value removes them.
    record.setSmartReferenceBehavior(o.smartReferenceBehavior == kKeepReferences ? lmImportOptions::KeepReferences
                                                                                 : lmImportOptions::RemoveReferences);
    record.setImportAsSmartReference(o.importCreateAsSmart != 0);
    record.write();

    applyFormat(store);
}

void lmFileTypePreferences::updateGUI()
{
    readOptions(getData());
    updateCommonControls();
    updateFormatGUI();
}

void lmFileTypePreferences::storeGUI()
{
    storeCommonControls();
    storeFormatGUI();
}

void lmFileTypePreferences::updateCommonControls()
{
    const Options &o = m_options;
    lmFileTypePreferencesGUIW *p = m_page;

    if (!has(ImportTab))
        removeTab(p->m_tabWidget, p->m_importTab);
    if (!has(ExportTab))
        removeTab(p->m_tabWidget, p->m_exportTab);
    p->m_exportSTL->setVisible(has(ExportSTL));
    p->m_exportKBX->setVisible(has(ExportKBX));
    p->_legacy_jt_settings->setVisible(has(LegacyJt));
    p->_legacy_rhino_settings->setVisible(has(LegacyRhino));

    if (!has(CommonOptions))
        return;

    p->_general_settings->hide();
    p->_file_specific_options->setVisible(has(FileSpecific));
    p->_project_settings->setVisible(has(Project));
    p->_advanced_settings->setVisible(has(Advanced));

    p->_cbImportSurfaces->setCurrentIndex(geometryIndex(o.importSurfaces, o.importInvisibleSurfaces));
    p->_cbImportMeshes->setCurrentIndex(geometryIndex(o.importMeshes, o.importInvisibleMeshes));
    p->_cbImportCurves->setCurrentIndex(geometryIndex(o.importCurves, o.importInvisibleCurves));

    m_bindings.load(getData());
    lmTesselationSettings *tessellation = p->m_tesselationSettings;
    tessellation->setVisible(has(Tessellation));
    if (has(Tessellation)) {
        tessellation->enableGroups(has(MeshesOnly) ? lmTesselationSettings::SceneGraphGroup
                                                   : lmTesselationSettings::StitchingGroup);
        tessellation->setChordDeviation(o.chordDeviation);
        tessellation->setNormalTolerance(o.normalTolerance);
        tessellation->setMaxChordLength(o.maxChordLength);
        tessellation->setStitchingEnabled(o.stitching);
        tessellation->setStitchingTolerance(o.stitchingTolerance);
        tessellation->updateQualityPreset();
        lmLoadedValues &loaded = m_bindings.loaded();
        loaded.loaded(key(kChordDeviation.name), tessellation->chordDeviationField(), o.chordDeviation);
        loaded.loaded(key(kNormalTolerance.name), tessellation->normalToleranceField(), o.normalTolerance);
        loaded.loaded(key(kMaxChordLength.name), tessellation->maxChordLengthField(), o.maxChordLength);
        loaded.loaded(key(kStitchingTolerance.name), tessellation->stitchingToleranceField(), o.stitchingTolerance);
    }

    p->m_associativeMeshesEnabled->setVisible(has(AssociativeMeshes));
    p->m_invisibleInstancesEnabled->setVisible(has(InvisibleInstances));
    p->m_importReferencedFiles->setVisible(has(References));
    p->m_optimizeMaterials->setVisible(has(References));
    p->m_coordSystemsEnabled->setVisible(has(CoordSystems));
    setVisible({p->m_camerasEnabled, p->m_lightsEnabled, p->m_variantsEnabled, p->m_templateGeometriesEnabled},
               has(OndraSwitches));
    p->m_emptyLayersEnabled->setVisible(has(EmptyLayers));
    setVisible({p->_meshLODsLabel, p->m_meshLODs, p->_jtToolkitLabel, p->m_jtToolkit}, has(JtOptions));

    setVisible({p->m_importAsSmart, p->m_importBehavior, p->_importBehaviorLabel}, has(SmartReferences));
    p->m_importAsSmart->setChecked(o.importCreateAsSmart);
    p->m_importBehavior->setCurrentIndex(o.smartReferenceBehavior == kKeepReferences ? 0 : 1);

    p->_scene_settings->hide();
}

// Writes back exactly the controls that updateCommonControls() loads, so a
// control that a type does not use never overwrites its stored value.
void lmFileTypePreferences::storeCommonControls()
{
    if (!has(CommonOptions))
        return;

    lmMessage &store = getData();
    const lmFileTypePreferencesGUIW *p = m_page;
    const auto putGeometry = [&](const lmTypedKey<bool> &import, const lmTypedKey<bool> &invisible,
                                 const QComboBox *combo) {
        prefixed(import).writePlain(store, combo->currentIndex() > 0);
        prefixed(invisible).writePlain(store, combo->currentIndex() > 1);
    };
    putGeometry(kImportSurfaces, kImportInvisibleSurfaces, p->_cbImportSurfaces);
    putGeometry(kImportMeshes, kImportInvisibleMeshes, p->_cbImportMeshes);
    putGeometry(kImportCurves, kImportInvisibleCurves, p->_cbImportCurves);

    if (has(Tessellation)) {
        const lmTesselationSettings *tessellation = p->m_tesselationSettings;
        const auto putField = [&](const lmTypedKey<double> &option, const QLMWheelPrec *wheel) {
            const lmTypedKey<double> key = prefixed(option);
            key.writePlain(store, m_bindings.loaded().value(key.name, wheel, wheel->value()));
        };
        putField(kChordDeviation, tessellation->chordDeviationField());
        putField(kNormalTolerance, tessellation->normalToleranceField());
        putField(kMaxChordLength, tessellation->maxChordLengthField());
        prefixed(kStitching).writePlain(store, tessellation->stitchingEnabled());
        putField(kStitchingTolerance, tessellation->stitchingToleranceField());
    }
    m_bindings.store(store, [](const char *) {});

    if (has(SmartReferences)) {
        prefixed(kCreateAsSmart).writePlain(store, p->m_importAsSmart->isChecked());
        // "Keep References" is stored as 2; "Remove References" as its index.
        prefixed(kSmartReferenceBehavior)
            .writePlain(store, p->m_importBehavior->currentIndex() == 0 ? kKeepReferences : std::int32_t(1));
    }
}

void lmFileTypePreferences::setFormatDefault(bool) {}

void lmFileTypePreferences::applyFormat(lmMessage &) {}

void lmFileTypePreferences::updateFormatGUI() {}

void lmFileTypePreferences::storeFormatGUI() {}

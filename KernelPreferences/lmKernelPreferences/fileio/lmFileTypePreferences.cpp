#include "lmFileTypePreferences.h"

#include "lmCADFileTypeRegistry.h"
#include "lmController.h"
#include "lmImportOptions.h"
#include "lmKeyBinding.h"
#include "lmMessageHelpers.h"

#include <QtGlobal>

#include <algorithm>
#include <initializer_list>
#include <type_traits>
#include <variant>

using namespace lmCADFileTypes;

namespace {

using Options = lmFileTypePreferences::Options;

// Indexed by the file type; the names prefix the keys and name the records.
const char *const kTypeNames[] = {
    "Cinema4D", "Cosmo", "PlanetWeb", "KBX", "Kova", "Obj",
    "OpenSG", "PLMXML", "Python", "3DKrafta", "LUMO", "VRML",
    "ACIS", "Ondra", "Draftex", "Catia V4", "Catia V5", "DGN",
    "Fabricor", "JT", "NX", "Iges", "Parasolid", "ProEngineer",
    "Rhino", "SketchUp", "SolidEdge", "SolidWorks", "Step", "STL",
    "BCAD", "Undefined", "Unsupported",
};
const int kTypeCount = int(sizeof(kTypeNames) / sizeof(kTypeNames[0]));

const char *const kStitching = "Options stitching";
const char *const kStitchingTolerance = "Options stitching tolerance";
const char *const kTessellation = "Options tessellation";
const char *const kKeepSurfaceData = "Options keep surface data";
const char *const kCreateGroupsForLayers = "Options create groups for layers";
const char *const kChordDeviation = "Options chord deviation";
const char *const kNormalTolerance = "Options normal tolerance";
const char *const kMaxChordLength = "Options max chord length";
const char *const kMergeGeometries = "Options merge geometries";
const char *const kRemoveEmptyGroups = "Options remove empty groups";
const char *const kUnshareNodes = "Options unshare nodes";
const char *const kFlushTransformations = "Options flush transformations";
const char *const kImportSurfaces = "Options import surfaces";
const char *const kImportInvisibleSurfaces = "Options import invisible surfaces";
const char *const kUnifySurfaceNormals = "Options unify surface normals";
const char *const kImportMeshes = "Options import meshes";
const char *const kImportInvisibleMeshes = "Options import invisible meshes";
const char *const kImportCurves = "Options import curves";
const char *const kImportInvisibleCurves = "Options import invisible curves";
const char *const kImportInvisibleInstances = "Options import invisible instances";
const char *const kImportAssociativeMeshes = "Options import associative meshes";
const char *const kImportEmptyLayers = "Options import empty layers";
const char *const kImportCoordSystems = "Options import coord systems";
const char *const kImportCameras = "Options import cameras";
const char *const kImportLights = "Options import lights";
const char *const kImportVariants = "Options import variants";
const char *const kImportTemplateGeometries = "Options import template geometries";
const char *const kImportReferencedFiles = "Options import referenced files";
const char *const kImportMeshLODs = "Options import mesh LODs";
const char *const kJtToolkit = "Options jt toolkit";
const char *const kOptimizeMaterials = "Options import optimize materials";
const char *const kSmartReferenceBehavior = "Options import smart reference behavior";
const char *const kCreateAsSmart = "Options import create as smart";
const char *const kUseATF = "BCADOptions use ATF";
const char *const kPLMXMLReferencedFiles = "PLMXML load referenced files";

// Which pages give a row its default and under which key they read it.
enum class Scope {
    EveryPage,        // prefixed; defaulted and read by every page
    OndraOnly,        // prefixed; defaulted by the Ondra page only, read by every page
    SubReference,     // prefixed; read with the sub-reference name, except on the PLM XML page
    SmartReference,   // prefixed; read only by the OpenSG and LUMO types
    Unprefixed,       // as written; defaulted by every page, read by none
    PLMXMLReference,  // as written; defaulted by every page, the PLM XML page's sub-reference
};

using Member = std::variant<std::monostate, bool Options::*, double Options::*, std::int32_t Options::*>;

struct CommonOption
{
    const char *suffix;
    Member member;
    boost::any defaultValue;
    Scope scope;
};

template <class T>
CommonOption option(const char *suffix, T Options::*member, T defaultValue, Scope scope = Scope::EveryPage)
{
    return {suffix, member, boost::any(defaultValue), scope};
}

// In the order in which the defaults are written.
const CommonOption kCommonOptions[] = {
    option(kStitching, &Options::stitching, true),
    option(kStitchingTolerance, &Options::stitchingTolerance, 0.1),
    option(kTessellation, &Options::tessellation, true),
    option(kKeepSurfaceData, &Options::keepSurfaceData, true),
    option(kCreateGroupsForLayers, &Options::createGroupsForLayers, true),
    option(kChordDeviation, &Options::chordDeviation, 0.075),
    option(kNormalTolerance, &Options::normalTolerance, 10.0),
    option(kMaxChordLength, &Options::maxChordLength, 200.0),
    option(kMergeGeometries, &Options::mergeGeometries, true),
    option(kRemoveEmptyGroups, &Options::removeEmptyGroups, true),
    option(kUnshareNodes, &Options::unshareNodes, false),
    option(kFlushTransformations, &Options::flushTransformations, false),
    option(kImportSurfaces, &Options::importSurfaces, true),
    option(kImportInvisibleSurfaces, &Options::importInvisibleSurfaces, false),
    option(kUnifySurfaceNormals, &Options::unifySurfaceNormals, true),
    option(kImportMeshes, &Options::importMeshes, true),
    option(kImportInvisibleMeshes, &Options::importInvisibleMeshes, false),
    option(kImportCurves, &Options::importCurves, false),
    option(kImportInvisibleCurves, &Options::importInvisibleCurves, false),
    option(kImportInvisibleInstances, &Options::importInvisibleInstances, false),
    option(kImportAssociativeMeshes, &Options::importAssociativeMeshes, false),
    option(kImportEmptyLayers, &Options::importEmptyLayers, false),
    option(kImportCoordSystems, &Options::importCoordSystems, false),
    option(kImportCameras, &Options::importCameras, false, Scope::OndraOnly),
    option(kImportLights, &Options::importLights, false, Scope::OndraOnly),
    option(kImportVariants, &Options::importVariants, false, Scope::OndraOnly),
    option(kImportTemplateGeometries, &Options::importTemplateGeometries, false, Scope::OndraOnly),
    option(kImportReferencedFiles, &Options::importReferencedFiles, true, Scope::SubReference),
    option(kImportMeshLODs, &Options::importMeshLODs, std::int32_t(2)),
    option(kJtToolkit, &Options::jtToolkit, std::int32_t(0)),
    option(kOptimizeMaterials, &Options::optimizeMaterials, true),
    option(kSmartReferenceBehavior, &Options::smartReferenceBehavior, std::int32_t(2), Scope::SmartReference),
    option(kCreateAsSmart, &Options::importCreateAsSmart, false, Scope::SmartReference),
    {kUseATF, std::monostate(), boost::any(false), Scope::Unprefixed},
    option(kPLMXMLReferencedFiles, &Options::importReferencedFiles, true, Scope::PLMXMLReference),
};

bool isOneOf(int type, std::initializer_list<int> types)
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

// The names prefixing the sub-reference key: the type names, except that PLM
// XML (which keeps a key of its own) reads "undefined".
std::string subReferenceName(int type)
{
    return type == PLMXML ? "undefined" : lmFileTypePreferences::typeName(type);
}

// Only the native scene formats read smart-reference keys, prefixed with
// their type names.
bool hasSmartReferences(int type)
{
    return type == OpenSG || type == LUMO;
}

// The key a row is written under by setDefault and removed under.
std::string storedKey(const CommonOption &row, const std::string &typeName)
{
    const bool unprefixed = row.scope == Scope::Unprefixed || row.scope == Scope::PLMXMLReference;
    return unprefixed ? std::string(row.suffix) : typeName + row.suffix;
}

// The key the page reads a row from; empty when this type does not read it.
std::string readKey(const CommonOption &row, int type)
{
    switch (row.scope) {
    case Scope::EveryPage:
    case Scope::OndraOnly:
        return lmFileTypePreferences::typeName(type) + row.suffix;
    case Scope::SubReference:
        return type == PLMXML ? std::string() : subReferenceName(type) + row.suffix;
    case Scope::SmartReference:
        return hasSmartReferences(type) ? lmFileTypePreferences::typeName(type) + row.suffix : std::string();
    case Scope::Unprefixed:
        return std::string();
    case Scope::PLMXMLReference:
        return type == PLMXML ? std::string(row.suffix) : std::string();
    }
    return std::string();
}

std::string subReferenceKey(int type)
{
    if (type == PLMXML)
        return kPLMXMLReferencedFiles;
    return subReferenceName(type) + kImportReferencedFiles;
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

} // namespace

lmFileTypePreferences::lmFileTypePreferences(FileType type, const QString &pageName, const QString &parentName)
    : lmPreferences(parentName, pageName), m_fileType(type), m_page(nullptr)
{
    Q_ASSERT(type >= KBX && type <= BCAD);
    // The members start at the defaults of the key table.
    for (const CommonOption &row : kCommonOptions)
        std::visit(
            [this, &row](auto member) {
                using M = decltype(member);
                if constexpr (!std::is_same<M, std::monostate>::value) {
                    using T = std::remove_reference_t<decltype(m_options.*member)>;
                    m_options.*member = boost::any_cast<T>(row.defaultValue);
                }
            },
            row.member);

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
    const std::string prefix = typeName();
    for (const CommonOption &row : kCommonOptions)
        store.remove(storedKey(row, prefix));
    subPreferencesGUI(m_page);
    delete m_page;
}

// The keys of the common controls carry this page's type name, so they are
// bound here rather than in the shared form: the controls and keys that
// storeCommonControls() writes for this type.
void lmFileTypePreferences::bindCommonControls()
{
    const int t = m_fileType;
    if (!((t >= KBX && t <= PLMXML) || (t >= LUMO && t <= Step) || t == BCAD))
        return;

    lmFileTypePreferencesGUIW *p = m_page;
    auto bind = [](QObject *control, std::initializer_list<std::string> keys) {
        QStringList names;
        for (const std::string &key : keys)
            names << QString::fromStdString(key);
        lmBindKeys(control, names);
    };

    bind(p->_cbImportSurfaces, {key(kImportSurfaces), key(kImportInvisibleSurfaces)});
    bind(p->_cbImportMeshes, {key(kImportMeshes), key(kImportInvisibleMeshes)});
    bind(p->_cbImportCurves, {key(kImportCurves), key(kImportInvisibleCurves)});

    if (!isOneOf(t, {OpenSG, PLMXML, Python, Krafta3D, LUMO, STL})) {
        lmTesselationSettings *tessellation = p->m_tesselationSettings;
        bind(tessellation->chordDeviationField(), {key(kChordDeviation)});
        bind(tessellation->normalToleranceField(), {key(kNormalTolerance)});
        bind(tessellation->maxChordLengthField(), {key(kMaxChordLength)});
        bind(tessellation->stitchingSwitch(), {key(kStitching)});
        bind(tessellation->stitchingToleranceField(), {key(kStitchingTolerance)});
        bind(tessellation->keepSurfaceData(), {key(kKeepSurfaceData)});
        bind(tessellation->unifySurfaceNormals(), {key(kUnifySurfaceNormals)});
        bind(tessellation->mergeGeometries(), {key(kMergeGeometries)});
        bind(tessellation->createGroupsForLayers(), {key(kCreateGroupsForLayers)});
        bind(tessellation->removeEmptyGroups(), {key(kRemoveEmptyGroups)});
        bind(tessellation->unshareNodes(), {key(kUnshareNodes)});
        bind(tessellation->flushTransformations(), {key(kFlushTransformations)});
    }

    bind(p->m_associativeMeshesEnabled, {key(kImportAssociativeMeshes)});
    bind(p->m_invisibleInstancesEnabled, {key(kImportInvisibleInstances)});
    bind(p->m_importReferencedFiles, {subReferenceKey(t)});
    bind(p->m_optimizeMaterials, {key(kOptimizeMaterials)});
    bind(p->m_coordSystemsEnabled, {key(kImportCoordSystems)});
    if (t == Ondra) {
        bind(p->m_camerasEnabled, {key(kImportCameras)});
        bind(p->m_lightsEnabled, {key(kImportLights)});
        bind(p->m_variantsEnabled, {key(kImportVariants)});
        bind(p->m_templateGeometriesEnabled, {key(kImportTemplateGeometries)});
    }
    if (isOneOf(t, {Ondra, NX}))
        bind(p->m_emptyLayersEnabled, {key(kImportEmptyLayers)});
    bind(p->m_meshLODs, {key(kImportMeshLODs)});
    bind(p->m_jtToolkit, {key(kJtToolkit)});
    if (hasSmartReferences(t)) {
        bind(p->m_importAsSmart, {typeName(t) + kCreateAsSmart});
        bind(p->m_importBehavior, {typeName(t) + kSmartReferenceBehavior});
    }
}

std::string lmFileTypePreferences::typeName() const
{
    return typeName(m_fileType);
}

std::string lmFileTypePreferences::typeName(int type)
{
    return type >= 0 && type < kTypeCount ? kTypeNames[type] : "undefined";
}

std::string lmFileTypePreferences::key(const char *suffix) const
{
    return typeName() + suffix;
}

void lmFileTypePreferences::setDefault(lmMessage &, bool overwrite)
{
    lmMessage &store = getData();
    const std::string prefix = typeName();
    for (const CommonOption &row : kCommonOptions) {
        if (row.scope == Scope::OndraOnly && m_fileType != Ondra)
            continue;
        store.set(storedKey(row, prefix), row.defaultValue, overwrite);
    }
    setFormatDefault(overwrite);
}

void lmFileTypePreferences::readOptions(const lmMessage &store)
{
    for (const CommonOption &row : kCommonOptions) {
        const std::string key = readKey(row, m_fileType);
        if (key.empty())
            continue;
        std::visit(
            [this, &store, &key](auto member) {
                if constexpr (!std::is_same<decltype(member), std::monostate>::value)
                    getFromMessage(store, key, m_options.*member);
            },
            row.member);
    }
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
    record.setSmartReferenceBehavior(o.smartReferenceBehavior == 2 ? lmImportOptions::KeepReferences
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

// Which controls a type uses; storeCommonControls() follows the same rules.
void lmFileTypePreferences::updateCommonControls()
{
    const int t = m_fileType;
    const Options &o = m_options;
    lmFileTypePreferencesGUIW *p = m_page;
    m_loaded.clear();

    if (!(isOneOf(t, {KBX, Kova, Obj, OpenSG, PLMXML, LUMO, VRML, ACIS}) || (t >= Ondra && t <= Step) || t == BCAD))
        removeTab(p->m_tabWidget, p->m_importTab);
    if (!isOneOf(t, {KBX, Kova, OpenSG, LUMO, VRML, STL}))
        removeTab(p->m_tabWidget, p->m_exportTab);
    p->m_exportSTL->setVisible(t == STL);
    p->m_exportKBX->setVisible(t == KBX);
    p->_legacy_jt_settings->setVisible(t == JT);
    p->_legacy_rhino_settings->setVisible(t == Rhino);

    if (!((t >= KBX && t <= PLMXML) || (t >= LUMO && t <= Step) || t == BCAD))
        return;

    p->_general_settings->hide();
    p->_file_specific_options->setVisible(isOneOf(
        t, {PLMXML, Ondra, CatiaV4, CatiaV5, DGN, Fabricor, JT, NX, ProEngineer, Rhino, SolidEdge, SolidWorks, Step}));
    p->_project_settings->setVisible(t == LUMO);
    p->_advanced_settings->setVisible(!isOneOf(t, {KBX, PLMXML}));

    p->_cbImportSurfaces->setCurrentIndex(geometryIndex(o.importSurfaces, o.importInvisibleSurfaces));
    p->_cbImportMeshes->setCurrentIndex(geometryIndex(o.importMeshes, o.importInvisibleMeshes));
    p->_cbImportCurves->setCurrentIndex(geometryIndex(o.importCurves, o.importInvisibleCurves));

    lmTesselationSettings *tessellation = p->m_tesselationSettings;
    tessellation->setVisible(!isOneOf(t, {OpenSG, PLMXML, LUMO, STL}));
    if (!isOneOf(t, {OpenSG, PLMXML, Python, Krafta3D, LUMO, STL})) {
        // A mesh format has nothing to tessellate or stitch.
        tessellation->enableGroups(t == KBX ? lmTesselationSettings::SceneGraphGroup
                                            : lmTesselationSettings::StitchingGroup);
        tessellation->setChordDeviation(o.chordDeviation);
        tessellation->setNormalTolerance(o.normalTolerance);
        tessellation->setMaxChordLength(o.maxChordLength);
        tessellation->setStitchingEnabled(o.stitching);
        tessellation->setStitchingTolerance(o.stitchingTolerance);
        tessellation->updateQualityPreset();
        m_loaded.loaded(key(kChordDeviation), tessellation->chordDeviationField(), o.chordDeviation);
        m_loaded.loaded(key(kNormalTolerance), tessellation->normalToleranceField(), o.normalTolerance);
        m_loaded.loaded(key(kMaxChordLength), tessellation->maxChordLengthField(), o.maxChordLength);
        m_loaded.loaded(key(kStitchingTolerance), tessellation->stitchingToleranceField(), o.stitchingTolerance);
        tessellation->keepSurfaceData()->setChecked(o.keepSurfaceData);
        tessellation->unifySurfaceNormals()->setChecked(o.unifySurfaceNormals);
        tessellation->mergeGeometries()->setChecked(o.mergeGeometries);
        tessellation->createGroupsForLayers()->setChecked(o.createGroupsForLayers);
        tessellation->removeEmptyGroups()->setChecked(o.removeEmptyGroups);
        tessellation->unshareNodes()->setChecked(o.unshareNodes);
        tessellation->flushTransformations()->setChecked(o.flushTransformations);
    }

    p->m_associativeMeshesEnabled->setVisible(isOneOf(t, {CatiaV5, NX, SolidEdge, Step}));
    p->m_associativeMeshesEnabled->setChecked(o.importAssociativeMeshes);
    p->m_invisibleInstancesEnabled->setVisible(!isOneOf(t, {PLMXML, Ondra, Draftex, Iges, BCAD}));
    p->m_invisibleInstancesEnabled->setChecked(o.importInvisibleInstances);
    const bool referencesAndMaterials = !isOneOf(t, {Ondra, Draftex, Iges, BCAD});
    p->m_importReferencedFiles->setVisible(referencesAndMaterials);
    p->m_importReferencedFiles->setChecked(o.importReferencedFiles);
    p->m_optimizeMaterials->setVisible(referencesAndMaterials);
    p->m_optimizeMaterials->setChecked(o.optimizeMaterials);
    p->m_coordSystemsEnabled->setVisible(t == CatiaV5);
    p->m_coordSystemsEnabled->setChecked(o.importCoordSystems);

    p->m_camerasEnabled->setVisible(t == Ondra);
    p->m_camerasEnabled->setChecked(o.importCameras);
    p->m_lightsEnabled->setVisible(t == Ondra);
    p->m_lightsEnabled->setChecked(o.importLights);
    p->m_variantsEnabled->setVisible(t == Ondra);
    p->m_variantsEnabled->setChecked(o.importVariants);
    p->m_templateGeometriesEnabled->setVisible(t == Ondra);
    p->m_templateGeometriesEnabled->setChecked(o.importTemplateGeometries);
    // NX shows the switch but never loads its stored value.
    p->m_emptyLayersEnabled->setVisible(isOneOf(t, {Ondra, NX}));
    if (t == Ondra)
        p->m_emptyLayersEnabled->setChecked(o.importEmptyLayers);

    for (QWidget *widget : std::initializer_list<QWidget *>{p->_meshLODsLabel, p->m_meshLODs, p->_jtToolkitLabel,
                                                            p->m_jtToolkit})
        widget->setVisible(t == JT);
    p->m_meshLODs->setCurrentIndex(o.importMeshLODs);
    m_loaded.loaded(key(kImportMeshLODs), p->m_meshLODs, std::int32_t(o.importMeshLODs));
    p->m_jtToolkit->setCurrentIndex(o.jtToolkit);
    m_loaded.loaded(key(kJtToolkit), p->m_jtToolkit, std::int32_t(o.jtToolkit));

    for (QWidget *widget :
         std::initializer_list<QWidget *>{p->m_importAsSmart, p->m_importBehavior, p->_importBehaviorLabel})
        widget->setVisible(hasSmartReferences(t));
    p->m_importAsSmart->setChecked(o.importCreateAsSmart);
    p->m_importBehavior->setCurrentIndex(o.smartReferenceBehavior == 2 ? 0 : 1);

    p->_scene_settings->hide();
}

// Writes back exactly the controls that updateCommonControls() loads, so a
// control that a type does not use never overwrites its stored value.
void lmFileTypePreferences::storeCommonControls()
{
    const int t = m_fileType;
    if (!((t >= KBX && t <= PLMXML) || (t >= LUMO && t <= Step) || t == BCAD))
        return;

    lmMessage &store = getData();
    const lmFileTypePreferencesGUIW *p = m_page;
    auto put = [&store](const std::string &key, const auto &value) { store.set(key, boost::any(value), true); };
    auto putGeometry = [&](const char *importSuffix, const char *invisibleSuffix, const QComboBox *combo) {
        put(key(importSuffix), combo->currentIndex() > 0);
        put(key(invisibleSuffix), combo->currentIndex() > 1);
    };

    putGeometry(kImportSurfaces, kImportInvisibleSurfaces, p->_cbImportSurfaces);
    putGeometry(kImportMeshes, kImportInvisibleMeshes, p->_cbImportMeshes);
    putGeometry(kImportCurves, kImportInvisibleCurves, p->_cbImportCurves);

    if (!isOneOf(t, {OpenSG, PLMXML, Python, Krafta3D, LUMO, STL})) {
        const lmTesselationSettings *tessellation = p->m_tesselationSettings;
        const auto field = [this](const char *suffix, const QLMWheelPrec *wheel) {
            return m_loaded.value(key(suffix), wheel, wheel->value());
        };
        put(key(kChordDeviation), field(kChordDeviation, tessellation->chordDeviationField()));
        put(key(kNormalTolerance), field(kNormalTolerance, tessellation->normalToleranceField()));
        put(key(kMaxChordLength), field(kMaxChordLength, tessellation->maxChordLengthField()));
        put(key(kStitching), tessellation->stitchingEnabled());
        put(key(kStitchingTolerance), field(kStitchingTolerance, tessellation->stitchingToleranceField()));
        put(key(kKeepSurfaceData), tessellation->keepSurfaceData()->isChecked());
        put(key(kUnifySurfaceNormals), tessellation->unifySurfaceNormals()->isChecked());
        put(key(kMergeGeometries), tessellation->mergeGeometries()->isChecked());
        put(key(kCreateGroupsForLayers), tessellation->createGroupsForLayers()->isChecked());
        put(key(kRemoveEmptyGroups), tessellation->removeEmptyGroups()->isChecked());
        put(key(kUnshareNodes), tessellation->unshareNodes()->isChecked());
        put(key(kFlushTransformations), tessellation->flushTransformations()->isChecked());
    }

    put(key(kImportAssociativeMeshes), p->m_associativeMeshesEnabled->isChecked());
    put(key(kImportInvisibleInstances), p->m_invisibleInstancesEnabled->isChecked());
    put(subReferenceKey(t), p->m_importReferencedFiles->isChecked());
    put(key(kOptimizeMaterials), p->m_optimizeMaterials->isChecked());
    put(key(kImportCoordSystems), p->m_coordSystemsEnabled->isChecked());
    if (t == Ondra) {
        put(key(kImportCameras), p->m_camerasEnabled->isChecked());
        put(key(kImportLights), p->m_lightsEnabled->isChecked());
        put(key(kImportVariants), p->m_variantsEnabled->isChecked());
        put(key(kImportTemplateGeometries), p->m_templateGeometriesEnabled->isChecked());
    }
    if (isOneOf(t, {Ondra, NX}))
        put(key(kImportEmptyLayers), p->m_emptyLayersEnabled->isChecked());
    put(key(kImportMeshLODs),
        m_loaded.value(key(kImportMeshLODs), p->m_meshLODs, std::int32_t(p->m_meshLODs->currentIndex())));
    put(key(kJtToolkit), m_loaded.value(key(kJtToolkit), p->m_jtToolkit, std::int32_t(p->m_jtToolkit->currentIndex())));
    if (hasSmartReferences(t)) {
        const std::string prefix = typeName(t);
        put(prefix + kCreateAsSmart, p->m_importAsSmart->isChecked());
        // "Keep References" is stored as 2; "Remove References" as its index.
        put(prefix + kSmartReferenceBehavior, std::int32_t(p->m_importBehavior->currentIndex() == 0 ? 2 : 1));
    }
}

void lmFileTypePreferences::setFormatDefault(bool) {}

void lmFileTypePreferences::applyFormat(lmMessage &) {}

void lmFileTypePreferences::updateFormatGUI() {}

void lmFileTypePreferences::storeFormatGUI() {}

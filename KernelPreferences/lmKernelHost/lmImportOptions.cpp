#include "lmImportOptions.h"

#include "lmCallLog.h"

#include <map>

namespace {

std::map<std::string, lmImportOptions> &written()
{
    static std::map<std::string, lmImportOptions> records;
    return records;
}

template <class T>
void field(std::string &line, const char *name, const T &value)
{
    line += ", ";
    line += name;
    line += '=';
    line += lmLogText(value);
}

} // namespace

lmImportOptions::lmImportOptions(const std::string &typeName, bool load, bool save)
    : m_typeName(typeName), m_save(save)
{
    if (load) {
        auto it = written().find(typeName);
        if (it != written().end()) {
            *this = it->second;
            m_save = save;
        }
    }
}

lmImportOptions::~lmImportOptions() = default;

void lmImportOptions::write()
{
    if (m_save) {
        auto it = written().find(m_typeName);
        if (it == written().end())
            written().emplace(m_typeName, *this);
        else
            it->second = *this;
    }
    if (!lmCallLog::isRecording())
        return;

    // Every field in declaration order, so that a test states one exact line.
    std::string line = "lmImportOptions::write(" + lmLogText(m_typeName);
    field(line, "mergeGeometries", m_mergeGeometries);
    field(line, "keepSurfaceData", m_keepSurfaceData);
    field(line, "createGroupsForLayers", m_createGroupsForLayers);
    field(line, "removeEmptyGroups", m_removeEmptyGroups);
    field(line, "unshareNodes", m_unshareNodes);
    field(line, "chordDeviation", m_chordDeviation);
    field(line, "normalTolerance", m_normalTolerance);
    field(line, "maxChordLength", m_maxChordLength);
    field(line, "stitching", m_stitching);
    field(line, "stitchingTolerance", m_stitchingTolerance);
    field(line, "importSurfaces", m_importSurfaces);
    field(line, "importInvisibleSurfaces", m_importInvisibleSurfaces);
    field(line, "unifySurfaceNormals", m_unifySurfaceNormals);
    field(line, "importCurves", m_importCurves);
    field(line, "importInvisibleCurves", m_importInvisibleCurves);
    field(line, "importMeshes", m_importMeshes);
    field(line, "importInvisibleMeshes", m_importInvisibleMeshes);
    field(line, "importAssociativeMeshes", m_importAssociativeMeshes);
    field(line, "importInvisibleInstances", m_importInvisibleInstances);
    field(line, "importTemplateGeometries", m_importTemplateGeometries);
    field(line, "importLights", m_importLights);
    field(line, "importCameras", m_importCameras);
    field(line, "importVariants", m_importVariants);
    field(line, "importReferencedFiles", m_importReferencedFiles);
    field(line, "importMeshLODs", m_importMeshLODs);
    field(line, "jtToolkit", m_jtToolkit);
    field(line, "importEmptyLayers", m_importEmptyLayers);
    field(line, "importCoordSystems", m_importCoordSystems);
    field(line, "optimizeMaterials", m_optimizeMaterials);
    field(line, "smartReferenceBehavior", static_cast<int>(m_smartReferenceBehavior));
    field(line, "importAsSmartReference", m_importAsSmartReference);
    field(line, "useLegacyRhinoLoader", m_useLegacyRhinoLoader);
    field(line, "importNurbs", m_importNurbs);
    field(line, "jtUsePlugin", m_jtUsePlugin);
    field(line, "jtActiveLayerFilter", m_jtActiveLayerFilter);
    field(line, "jtLoadBreps", m_jtLoadBreps);
    line += ')';
    lmCallLog::append(line);
}

bool lmImportOptions::lastWritten(const std::string &typeName, lmImportOptions &out)
{
    auto it = written().find(typeName);
    if (it == written().end())
        return false;
    out = it->second;
    return true;
}

void lmImportOptions::clearWritten()
{
    written().clear();
}

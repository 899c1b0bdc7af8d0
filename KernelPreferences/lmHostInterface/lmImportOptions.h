#pragma once

#include "lmHostApi.h"

#include <string>

// The host's per-file-type import options record. Fields are filled directly
// or through setters and committed with write().
class LM_HOST_API lmImportOptions
{
public:
    enum SmartReferenceBehavior : int { SmartReferenceUndefined = 0, KeepReferences = 2, RemoveReferences = 3 };

    // load: start from the record last written for typeName (if any);
    // save: write() commits the record as the one in force for typeName.
    lmImportOptions(const std::string &typeName, bool load, bool save);
    ~lmImportOptions();

    const std::string &typeName() const { return m_typeName; }

    void setImportMeshes(bool on) { m_importMeshes = on; }
    void setImportInvisibleMeshes(bool on) { m_importInvisibleMeshes = on; }
    void setImportAssociativeMeshes(bool on) { m_importAssociativeMeshes = on; }
    void setImportInvisibleInstances(bool on) { m_importInvisibleInstances = on; }
    void setImportTemplateGeometries(bool on) { m_importTemplateGeometries = on; }
    void setImportLights(bool on) { m_importLights = on; }
    void setImportCameras(bool on) { m_importCameras = on; }
    void setImportVariants(bool on) { m_importVariants = on; }
    void setImportReferencedFiles(bool on) { m_importReferencedFiles = on; }
    void setImportCoordSystems(bool on) { m_importCoordSystems = on; }
    void setOptimizeMaterials(bool on) { m_optimizeMaterials = on; }
    void setSmartReferenceBehavior(SmartReferenceBehavior behavior) { m_smartReferenceBehavior = behavior; }
    void setImportAsSmartReference(bool on) { m_importAsSmartReference = on; }

    bool getImportMeshes() const { return m_importMeshes; }
    bool getImportInvisibleMeshes() const { return m_importInvisibleMeshes; }
    bool getImportAssociativeMeshes() const { return m_importAssociativeMeshes; }
    bool getImportInvisibleInstances() const { return m_importInvisibleInstances; }
    bool getImportTemplateGeometries() const { return m_importTemplateGeometries; }
    bool getImportLights() const { return m_importLights; }
    bool getImportCameras() const { return m_importCameras; }
    bool getImportVariants() const { return m_importVariants; }
    bool getImportReferencedFiles() const { return m_importReferencedFiles; }
    bool getImportCoordSystems() const { return m_importCoordSystems; }
    bool getOptimizeMaterials() const { return m_optimizeMaterials; }
    SmartReferenceBehavior getSmartReferenceBehavior() const { return m_smartReferenceBehavior; }
    bool getImportAsSmartReference() const { return m_importAsSmartReference; }

    // Commits the record: one call-log line with every field, and the record
    // becomes the last written one for its type name.
    void write();

    // The record last written for typeName; false when there is none.
    static bool lastWritten(const std::string &typeName, lmImportOptions &out);
    static void clearWritten();

    // Geometry and tessellation.
    bool m_mergeGeometries = true;
    bool m_keepSurfaceData = true;
    bool m_createGroupsForLayers = true;
    bool m_removeEmptyGroups = true;
    bool m_unshareNodes = false;
    double m_chordDeviation = 0.075;
    double m_normalTolerance = 10.0;
    double m_maxChordLength = 200.0;
    bool m_stitching = true;
    double m_stitchingTolerance = 0.1;
    bool m_importSurfaces = true;
    bool m_importInvisibleSurfaces = false;
    bool m_unifySurfaceNormals = true;
    bool m_importCurves = false;
    bool m_importInvisibleCurves = false;
    int m_importMeshLODs = 2;
    int m_jtToolkit = 0;
    bool m_importEmptyLayers = false;

    // Legacy Rhino loader.
    bool m_useLegacyRhinoLoader = false;
    bool m_importNurbs = true;

    // Legacy JT loader.
    bool m_jtUsePlugin = false;
    bool m_jtActiveLayerFilter = true;
    int m_jtLoadBreps = 0;

private:
    std::string m_typeName;
    bool m_save;

    bool m_importMeshes = true;
    bool m_importInvisibleMeshes = false;
    bool m_importAssociativeMeshes = false;
    bool m_importInvisibleInstances = false;
    bool m_importTemplateGeometries = false;
    bool m_importLights = false;
    bool m_importCameras = false;
    bool m_importVariants = false;
    bool m_importReferencedFiles = true;
    bool m_importCoordSystems = false;
    bool m_optimizeMaterials = true;
    SmartReferenceBehavior m_smartReferenceBehavior = KeepReferences;
    bool m_importAsSmartReference = false;
};

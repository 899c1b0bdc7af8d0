#pragma once

#include "lmCADFileTypes.h"
#include "lmHostApi.h"

// Static switches of the host's file I/O.
class LM_HOST_API lmFileIO
{
public:
    // CAD format pages.
    // Chooses the legacy 3dm loader instead of the regular Rhino reader.
    static void setUseLegacyRhinoLoader(bool on);
    static bool getUseLegacyRhinoLoader();
    // Chooses the legacy JT loader instead of the regular JT reader.
    static void setUseLegacyJtLoader(bool on);

    // File I/O, OSB / VPB.
    static void enableVerifyGeometry(bool on);
    static void enableOptimizeGeometry(bool on);
    static void enableOptimizeTransparencies(bool on);
    static void setShowFileIOProgress(bool on);
    static void setImportCreateReferences(bool on);
    static void setImportMergeMaterials(bool on);
    static void setMaxParallelImportTasks(int tasks);
    // The format converted CAD files are written in.
    static void setConverterOutputFormat(lmCADFileTypes::FileType type);
    static void setReaderCRCTest(bool on);
    static void setWriterCRCTest(bool on);
    static void enableIncrementalSave(bool on);
    // 0 keeps every increment.
    static void setIncrementalSaveLimit(unsigned int limit);
    static void setExecuteEmbeddedScript(bool on);
    static void setShowPreviewHint(bool on);
};

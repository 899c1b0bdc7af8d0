#include "lmFileIO.h"

#include "lmCallLog.h"
#include "lmHostState.h"

// CAD format pages.

namespace {

struct LegacyLoaders
{
    bool rhino = false;
    bool jt = false;
};

LegacyLoaders &legacyLoaders()
{
    return lmHostState<LegacyLoaders>();
}

} // namespace

void lmFileIO::setUseLegacyRhinoLoader(bool on)
{
    lmCallLog::record("lmFileIO::setUseLegacyRhinoLoader", on);
    legacyLoaders().rhino = on;
}

bool lmFileIO::getUseLegacyRhinoLoader()
{
    return legacyLoaders().rhino;
}

void lmFileIO::setUseLegacyJtLoader(bool on)
{
    lmCallLog::record("lmFileIO::setUseLegacyJtLoader", on);
    legacyLoaders().jt = on;
}

// File I/O, OSB / VPB.

void lmFileIO::enableVerifyGeometry(bool on) { lmCallLog::record("lmFileIO::enableVerifyGeometry", on); }
void lmFileIO::enableOptimizeGeometry(bool on) { lmCallLog::record("lmFileIO::enableOptimizeGeometry", on); }
void lmFileIO::enableOptimizeTransparencies(bool on) { lmCallLog::record("lmFileIO::enableOptimizeTransparencies", on); }
void lmFileIO::setShowFileIOProgress(bool on) { lmCallLog::record("lmFileIO::setShowFileIOProgress", on); }
void lmFileIO::setImportCreateReferences(bool on) { lmCallLog::record("lmFileIO::setImportCreateReferences", on); }
void lmFileIO::setImportMergeMaterials(bool on) { lmCallLog::record("lmFileIO::setImportMergeMaterials", on); }
void lmFileIO::setMaxParallelImportTasks(int tasks) { lmCallLog::record("lmFileIO::setMaxParallelImportTasks", tasks); }

void lmFileIO::setConverterOutputFormat(lmCADFileTypes::FileType type)
{
    lmCallLog::record("lmFileIO::setConverterOutputFormat", type);
}

void lmFileIO::setReaderCRCTest(bool on) { lmCallLog::record("lmFileIO::setReaderCRCTest", on); }
void lmFileIO::setWriterCRCTest(bool on) { lmCallLog::record("lmFileIO::setWriterCRCTest", on); }
void lmFileIO::enableIncrementalSave(bool on) { lmCallLog::record("lmFileIO::enableIncrementalSave", on); }
void lmFileIO::setIncrementalSaveLimit(unsigned int limit) { lmCallLog::record("lmFileIO::setIncrementalSaveLimit", limit); }
void lmFileIO::setExecuteEmbeddedScript(bool on) { lmCallLog::record("lmFileIO::setExecuteEmbeddedScript", on); }
void lmFileIO::setShowPreviewHint(bool on) { lmCallLog::record("lmFileIO::setShowPreviewHint", on); }

#include "lmFileIO.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"

// CAD format pages.

namespace {

struct LegacyLoaders
{
    bool rhino = false;
    bool jt = false;
};

LegacyLoaders &legacyLoaders()
{
    static LegacyLoaders loaders;
    return loaders;
}

const bool kLegacyLoadersReset = [] {
    lmHostSettings::addResetHook([] { legacyLoaders() = LegacyLoaders(); });
    return true;
}();

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

#include "OpenSGFileIO.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"

struct OpenSGFileIOReset
{
    OpenSGFileIOReset()
    {
        lmHostSettings::addResetHook([] { OpenSGFileIO::the() = OpenSGFileIO(); });
    }
};

namespace {
const OpenSGFileIOReset registerReset;
}

OpenSGFileIO &OpenSGFileIO::the()
{
    static OpenSGFileIO writer;
    return writer;
}

void OpenSGFileIO::setCompressionType(int type)
{
    lmCallLog::record("OpenSGFileIO::setCompressionType", type);
    m_compressionType = type;
}

void OpenSGFileIO::setNewFormat(bool on)
{
    lmCallLog::record("OpenSGFileIO::setNewFormat", on);
    m_newFormat = on;
}

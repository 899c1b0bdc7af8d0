#pragma once

#include "lmCADFileTypes.h"
#include "lmHostApi.h"

#include <string>
#include <vector>

// The host's shared registry of CAD file types: extensions (lower case,
// without the dot) mapped to file types, and the set of types the installed
// readers and writers support.
class LM_HOST_API lmCADFileTypeRegistry
{
public:
    static bool isSupported(lmCADFileTypes::FileType type);

    // Every type the extension stands for, in table order (one extension may
    // stand for two types, "prt" for NX and ProEngineer).
    static std::vector<lmCADFileTypes::FileType> typesOf(const std::string &extension);

    // Drops a type, as a host without that reader would; a host reset brings
    // the full table back.
    static void removeType(lmCADFileTypes::FileType type);
};

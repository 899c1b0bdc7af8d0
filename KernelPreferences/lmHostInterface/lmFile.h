#pragma once

#include "lmHostApi.h"

#include <string>

// File-system helpers of the host. Paths are UTF-8.
class LM_HOST_API lmFile
{
public:
    // True when a file or directory exists at path.
    static bool exists(const std::string &path);

    // The path in the host's separator convention: every separator becomes
    // '/', whatever the platform, so stored paths read the same everywhere.
    // Nothing else changes (no cleaning, no resolving).
    static std::string convertSeparators(const std::string &path);
};

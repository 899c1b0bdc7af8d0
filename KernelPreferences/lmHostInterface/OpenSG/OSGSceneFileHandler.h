#pragma once

#include "lmHostApi.h"

#include <map>
#include <string>

namespace osg {

// Loader registry of the scene-graph library; only the per-suffix option
// strings are used by the preferences.
class LM_HOST_API SceneFileHandler
{
public:
    static SceneFileHandler &the();

    // Replaces the options of every loader registered for suffix.
    bool setOptions(const char *suffix, const char *options);
    // The options last set for suffix, or nullptr when none were set.
    const char *getOptions(const char *suffix);

    void clearOptions();

private:
    SceneFileHandler() = default;
    std::map<std::string, std::string> m_options;
};

} // namespace osg

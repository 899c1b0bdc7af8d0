#include "OpenSG/OSGSceneFileHandler.h"

#include "lmCallLog.h"

namespace osg {

SceneFileHandler &SceneFileHandler::the()
{
    static SceneFileHandler handler;
    return handler;
}

bool SceneFileHandler::setOptions(const char *suffix, const char *options)
{
    if (!suffix || !options)
        return false;
    lmCallLog::record("osg::SceneFileHandler::setOptions", suffix, options);
    m_options[suffix] = options;
    return true;
}

const char *SceneFileHandler::getOptions(const char *suffix)
{
    if (!suffix)
        return nullptr;
    auto it = m_options.find(suffix);
    return it == m_options.end() ? nullptr : it->second.c_str();
}

void SceneFileHandler::clearOptions()
{
    m_options.clear();
}

} // namespace osg

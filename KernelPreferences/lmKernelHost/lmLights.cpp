#include "lmLights.h"

#include "lmCallLog.h"

// Render options.

void lmLights::changeLightType(osg::NodePtr node, const char *typeName)
{
    lmCallLog::record("lmLights::changeLightType", node ? node->getName().c_str() : nullptr, typeName);
}

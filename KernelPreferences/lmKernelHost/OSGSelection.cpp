#include "OpenSG/OSGSelection.h"

#include "lmCallLog.h"

namespace osg {

void Selection::setForceTransparentObjectSelection(bool force)
{
    lmCallLog::record("osg::Selection::setForceTransparentObjectSelection", force);
}

} // namespace osg

#include "lmSpacemouse.h"

#include "lmCallLog.h"

void lmSpacemouse::init()
{
    lmCallLog::record("lmSpacemouse::init");
}

void lmSpacemouse::terminate()
{
    lmCallLog::record("lmSpacemouse::terminate");
}

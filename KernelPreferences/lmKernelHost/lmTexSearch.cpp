#include "lmTexSearch.h"

#include "lmCallLog.h"

void lmTexSearch::set()
{
    lmCallLog::record("lmTexSearch::set");
}

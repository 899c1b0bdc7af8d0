#include "lmFileIO.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"

// CAD format pages.

// File I/O, OSB / VPB.

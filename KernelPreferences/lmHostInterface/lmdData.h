#pragma once

#include "lmHostApi.h"

// Base of the host's value records that services take and hand out.
class LM_HOST_API lmdData
{
public:
    virtual ~lmdData() = default;
};

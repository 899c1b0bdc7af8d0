#pragma once

#include "lmHostApi.h"

// The host's running web server (see lmController::getWebInterface).
class LM_HOST_API lmWebInterface
{
public:
    lmWebInterface();
    ~lmWebInterface();

    void setDebugMode(bool on);
    bool getDebugMode() const;

private:
    bool m_debugMode = false;
};

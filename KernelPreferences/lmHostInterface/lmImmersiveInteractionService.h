#pragma once

#include "lmKernelServiceFactory.h"

// The host's immersive interaction service: what a headset session starts with.
class LM_HOST_API lmImmersiveInteractionService : public lmKernelService
{
    Q_OBJECT

public:
    explicit lmImmersiveInteractionService(QObject *parent = nullptr);
    ~lmImmersiveInteractionService() override;

    // 0: teleport onto geometry, 1: onto the ground plane.
    void setTeleportGroundMode(int mode);
    void setTeleportRange(float range);
    // 0: controllers, 1: hands.
    void setDefaultControllerVisualization(int visualization);
    void setAutoCreateCollisionObjects(bool on);
    void setShowTooltipsOnStart(bool on);
};

#pragma once

#include "lmKernelServiceFactory.h"
#include "lmdFoveatedQuality.h"
#include "lmdStarVRRenderSettings.h"

// The host's head-mounted-display service: eye tracking, foveated rendering
// and the native settings of StarVR headsets.
class LM_HOST_API lmHMDService : public lmKernelService
{
    Q_OBJECT

public:
    explicit lmHMDService(QObject *parent = nullptr);
    ~lmHMDService() override;

    // Requests eye tracking; the headset may not honour the request.
    void setEyeTrackingEnabled(bool on);
    bool isEyeTrackingActive() const;

    void setFoveatedRenderingEnabled(bool on);
    void setFovealRegionSize(float size);
    void setFoveatedQualityPreset(int preset);
    void setFoveatedCustomQuality(const lmdFoveatedQuality &quality);
    // The ring qualities a preset stands for.
    lmdFoveatedQuality getFoveatedPresetQuality(int preset) const;
    // Whether the graphics driver offers the shading-rate extension that
    // foveated rendering needs.
    bool isShadingRateImageSupported() const;

    lmdStarVRRenderSettings getStarVRRenderSettings() const;
    void setStarVRRenderSettings(const lmdStarVRRenderSettings &settings);
};

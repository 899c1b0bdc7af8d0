#pragma once

#include "lmdData.h"

// Native rendering settings of StarVR headsets.
class LM_HOST_API lmdStarVRRenderSettings : public lmdData
{
public:
    lmdStarVRRenderSettings();

    void setUseNativeFoveatedRendering(bool on) { m_useNativeFoveatedRendering = on; }
    void setFoveatedFovFactor(float factor) { m_foveatedFovFactor = factor; }
    void setFoveatedResolutionScale(float scale) { m_foveatedResolutionScale = scale; }
    void setNonFoveatedResolutionScale(float scale) { m_nonFoveatedResolutionScale = scale; }
    void setFrontViewResolutionScale(float scale) { m_frontViewResolutionScale = scale; }
    void setSideViewResolutionScale(float scale) { m_sideViewResolutionScale = scale; }
    void setUseSingleTexture(bool on) { m_useSingleTexture = on; }

    bool getUseNativeFoveatedRendering() const { return m_useNativeFoveatedRendering; }
    float getFoveatedFovFactor() const { return m_foveatedFovFactor; }
    float getFoveatedResolutionScale() const { return m_foveatedResolutionScale; }
    float getNonFoveatedResolutionScale() const { return m_nonFoveatedResolutionScale; }
    float getFrontViewResolutionScale() const { return m_frontViewResolutionScale; }
    float getSideViewResolutionScale() const { return m_sideViewResolutionScale; }
    bool getUseSingleTexture() const { return m_useSingleTexture; }

private:
    bool m_useNativeFoveatedRendering;
    float m_foveatedFovFactor;
    float m_foveatedResolutionScale;
    float m_nonFoveatedResolutionScale;
    float m_frontViewResolutionScale;
    float m_sideViewResolutionScale;
    bool m_useSingleTexture;
};

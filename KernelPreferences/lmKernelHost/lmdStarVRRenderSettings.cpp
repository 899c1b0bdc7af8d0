#include "lmdStarVRRenderSettings.h"

lmdStarVRRenderSettings::lmdStarVRRenderSettings()
    : m_useNativeFoveatedRendering(false),
      m_foveatedFovFactor(0.35f),
      m_foveatedResolutionScale(0.6f),
      m_nonFoveatedResolutionScale(0.4f),
      m_frontViewResolutionScale(1.0f),
      m_sideViewResolutionScale(1.0f),
      m_useSingleTexture(false)
{
}

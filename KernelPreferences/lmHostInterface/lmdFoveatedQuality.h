#pragma once

#include "lmRenderTypes.h"
#include "lmdData.h"

// Shading quality of the three foveation rings, from the gaze point outwards.
class LM_HOST_API lmdFoveatedQuality : public lmdData
{
public:
    // Native shading in every ring.
    lmdFoveatedQuality();
    lmdFoveatedQuality(lmRenderTypes::ShadingQuality inner, lmRenderTypes::ShadingQuality middle,
                       lmRenderTypes::ShadingQuality periphery);

    lmRenderTypes::ShadingQuality inner() const { return m_inner; }
    lmRenderTypes::ShadingQuality middle() const { return m_middle; }
    lmRenderTypes::ShadingQuality periphery() const { return m_periphery; }

    // Multisampling samples the realtime antialiasing must provide: the
    // largest per-pixel sample count among the rings, 1 when none supersamples.
    int getMinimumMultisamplingSamples() const;

    bool operator==(const lmdFoveatedQuality &other) const;
    bool operator!=(const lmdFoveatedQuality &other) const { return !(*this == other); }

private:
    lmRenderTypes::ShadingQuality m_inner;
    lmRenderTypes::ShadingQuality m_middle;
    lmRenderTypes::ShadingQuality m_periphery;
};

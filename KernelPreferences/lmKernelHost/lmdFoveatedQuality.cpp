#include "lmdFoveatedQuality.h"

#include <algorithm>

namespace {

// Samples per pixel of one ring; coarse shading counts as one.
int samplesPerPixel(lmRenderTypes::ShadingQuality quality)
{
    switch (quality) {
    case lmRenderTypes::TwoSamples:
        return 2;
    case lmRenderTypes::FourSamples:
        return 4;
    case lmRenderTypes::EightSamples:
        return 8;
    default:
        return 1;
    }
}

} // namespace

lmdFoveatedQuality::lmdFoveatedQuality()
    : lmdFoveatedQuality(lmRenderTypes::OneSample, lmRenderTypes::OneSample, lmRenderTypes::OneSample)
{
}

lmdFoveatedQuality::lmdFoveatedQuality(lmRenderTypes::ShadingQuality inner, lmRenderTypes::ShadingQuality middle,
                                       lmRenderTypes::ShadingQuality periphery)
    : m_inner(inner), m_middle(middle), m_periphery(periphery)
{
}

int lmdFoveatedQuality::getMinimumMultisamplingSamples() const
{
    return std::max({samplesPerPixel(m_inner), samplesPerPixel(m_middle), samplesPerPixel(m_periphery)});
}

bool lmdFoveatedQuality::operator==(const lmdFoveatedQuality &other) const
{
    return m_inner == other.m_inner && m_middle == other.m_middle && m_periphery == other.m_periphery;
}

#pragma once

// Rendering enumerations shared by the host's render services.
namespace lmRenderTypes {

// Shading rate of one foveation ring: coarse shading below one sample per
// pixel, supersampling above.
enum ShadingQuality : int {
    OneSample = 0,
    OneSamplePer4Pixels = 1,
    OneSamplePer16Pixels = 2,
    TwoSamples = 3,
    FourSamples = 4,
    EightSamples = 5,
};

} // namespace lmRenderTypes

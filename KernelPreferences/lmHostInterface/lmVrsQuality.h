#pragma once

// Shading rate of variable-rate shading: how many samples are shaded per pixel.
enum lmVrsQuality : int
{
    lmVrsQuality1Sample = 0,
    lmVrsQuality2Samples = 1,
    lmVrsQuality4Samples = 2,
    lmVrsQuality8Samples = 3,
};

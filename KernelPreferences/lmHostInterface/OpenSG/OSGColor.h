#pragma once

#include "lmHostApi.h"

namespace osg {

// RGB colour with float components, as the scene-graph library exposes it.
class LM_HOST_API Color3f
{
public:
    typedef float ValueType;

    Color3f() = default;
    Color3f(float r, float g, float b) : m_rgb{r, g, b} {}

    float red() const { return m_rgb[0]; }
    float green() const { return m_rgb[1]; }
    float blue() const { return m_rgb[2]; }

    void setValuesRGB(float r, float g, float b)
    {
        m_rgb[0] = r;
        m_rgb[1] = g;
        m_rgb[2] = b;
    }
    void getValuesRGB(float &r, float &g, float &b) const
    {
        r = m_rgb[0];
        g = m_rgb[1];
        b = m_rgb[2];
    }

    const float *getValuesRGB() const { return m_rgb; }

    bool operator==(const Color3f &other) const
    {
        return m_rgb[0] == other.m_rgb[0] && m_rgb[1] == other.m_rgb[1] && m_rgb[2] == other.m_rgb[2];
    }
    bool operator!=(const Color3f &other) const { return !(*this == other); }

private:
    float m_rgb[3] = {0.0f, 0.0f, 0.0f};
};

} // namespace osg

#pragma once

#include "OpenSG/OSGColor.h"

#include <QString>

#include <boost/any.hpp>

#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

// Preference values of every storable type, biased towards the awkward ones:
// NaN, infinities, extreme integers, empty and very long strings and lists,
// colours outside 0..1.
class lmRandomValues
{
public:
    explicit lmRandomValues(std::uint32_t seed) : m_engine(seed) {}

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_engine); }
    bool chance(double p) { return std::bernoulli_distribution(p)(m_engine); }

    float anyFloat()
    {
        static const float special[] = {std::numeric_limits<float>::quiet_NaN(),
                                        std::numeric_limits<float>::infinity(),
                                        -std::numeric_limits<float>::infinity(),
                                        std::numeric_limits<float>::max(),
                                        std::numeric_limits<float>::lowest(),
                                        std::numeric_limits<float>::denorm_min(),
                                        0.0f,
                                        -0.0f,
                                        -1.0f,
                                        1e-30f};
        if (chance(0.5))
            return special[pick(10)];
        return std::uniform_real_distribution<float>(-1e6f, 1e6f)(m_engine);
    }

    double anyDouble()
    {
        if (chance(0.3))
            return std::numeric_limits<double>::quiet_NaN();
        if (chance(0.2))
            return chance(0.5) ? std::numeric_limits<double>::infinity() : std::numeric_limits<double>::max();
        return std::uniform_real_distribution<double>(-1e9, 1e9)(m_engine);
    }

    int anyInt()
    {
        static const int special[] = {std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), -1, 0, 1, 2, 3,
                                      6, 2015, 99999};
        if (chance(0.7))
            return special[pick(10)];
        return int(m_engine());
    }

    std::string anyString()
    {
        switch (pick(5)) {
        case 0:
            return std::string();
        case 1:
            return std::string(std::size_t(100000), 'x');
        case 2:
            return "LUMO";
        case 3:
            return "a,b=\"c\"\\\n\t\xff\xfe";
        default:
            return std::to_string(anyInt());
        }
    }

    osg::Color3f anyColor() { return osg::Color3f(anyFloat(), anyFloat(), anyFloat()); }

    template <class T, class Make>
    std::vector<T> anyList(Make make)
    {
        const std::size_t size = chance(0.2) ? 5000 : std::size_t(pick(4));
        std::vector<T> list;
        list.reserve(size);
        for (std::size_t i = 0; i < size; ++i)
            list.push_back(make());
        return list;
    }

    // A value of a random one of the eleven types.
    boost::any anyValue()
    {
        switch (pick(11)) {
        case 0:
            return anyInt();
        case 1:
            return static_cast<unsigned int>(anyInt());
        case 2:
            return anyFloat();
        case 3:
            return anyDouble();
        case 4:
            return chance(0.5);
        case 5:
            return anyString();
        case 6:
            return QString::fromUtf8(anyString().c_str());
        case 7:
            return anyColor();
        case 8:
            return anyList<float>([this] { return anyFloat(); });
        case 9:
            return anyList<osg::Color3f>([this] { return anyColor(); });
        default:
            return anyList<std::string>([this] { return anyString(); });
        }
    }

private:
    std::mt19937 m_engine;
};

// A value of the default's type that differs from it and that only an exact
// round trip keeps: digits beyond any spin box's decimals, integers beyond
// any combo's items or spin box's range, text that is not UTF-8, colours
// outside 0..1. An empty value for a value of no preference type.
inline boost::any lmAwkwardNonDefault(const boost::any &defaultValue)
{
    const std::type_info &type = defaultValue.type();
    if (type == typeid(bool))
        return !boost::any_cast<bool>(defaultValue);
    if (type == typeid(int))
        return boost::any_cast<int>(defaultValue) + 100003;
    if (type == typeid(unsigned int))
        return boost::any_cast<unsigned int>(defaultValue) + 100003u;
    if (type == typeid(float))
        return boost::any_cast<float>(defaultValue) + 2500.123f;
    if (type == typeid(double))
        return boost::any_cast<double>(defaultValue) + 1234.56789012345;
    if (type == typeid(std::string))
        return boost::any_cast<std::string>(defaultValue) + " x,1\xff";
    if (type == typeid(QString))
        return boost::any_cast<QString>(defaultValue) + QStringLiteral(" \u00e9/\u2603");
    if (type == typeid(osg::Color3f))
        return osg::Color3f(0.1234567f, 1.7654321f, -0.25f);
    if (type == typeid(std::vector<float>)) {
        std::vector<float> list = boost::any_cast<std::vector<float>>(defaultValue);
        list.push_back(2500.123f);
        return list;
    }
    if (type == typeid(std::vector<osg::Color3f>)) {
        std::vector<osg::Color3f> list = boost::any_cast<std::vector<osg::Color3f>>(defaultValue);
        list.push_back(osg::Color3f(0.1234567f, 1.7654321f, -0.25f));
        return list;
    }
    if (type == typeid(std::vector<std::string>)) {
        std::vector<std::string> list = boost::any_cast<std::vector<std::string>>(defaultValue);
        list.push_back("x,1\xff");
        return list;
    }
    return boost::any();
}

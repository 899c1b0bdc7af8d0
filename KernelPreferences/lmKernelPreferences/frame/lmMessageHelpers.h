#pragma once

#include "lmMessage.h"
#include "OpenSG/OSGColor.h"

#include <QString>

#include <boost/any.hpp>

#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

// The value types a preference key may hold.
template <class T>
struct lmIsPreferenceType
    : std::integral_constant<bool,
                             std::is_same<T, int>::value || std::is_same<T, unsigned int>::value
                                 || std::is_same<T, float>::value || std::is_same<T, double>::value
                                 || std::is_same<T, bool>::value || std::is_same<T, std::string>::value
                                 || std::is_same<T, QString>::value || std::is_same<T, osg::Color3f>::value
                                 || std::is_same<T, std::vector<float>>::value
                                 || std::is_same<T, std::vector<osg::Color3f>>::value
                                 || std::is_same<T, std::vector<std::string>>::value>
{
};

// Types are compared by their runtime names: the store is shared between the
// host and plug-ins that each carry their own type information.
inline bool lmHoldsType(const boost::any &value, const std::type_info &type)
{
    return std::strcmp(value.type().name(), type.name()) == 0;
}

// Calls visit with the value held, as the one of the eleven value types it
// holds; false (and no call) for an empty value or one of another type.
template <class F>
bool lmVisitValue(const boost::any &value, F &&visit)
{
    if (value.empty())
        return false;
    bool seen = false;
    auto as = [&](auto *typed) {
        using T = std::remove_pointer_t<decltype(typed)>;
        if (seen || !lmHoldsType(value, typeid(T)))
            return;
        seen = true;
        visit(*boost::unsafe_any_cast<T>(&value));
    };
    as((int *)nullptr);
    as((unsigned int *)nullptr);
    as((float *)nullptr);
    as((double *)nullptr);
    as((bool *)nullptr);
    as((std::string *)nullptr);
    as((QString *)nullptr);
    as((osg::Color3f *)nullptr);
    as((std::vector<float> *)nullptr);
    as((std::vector<osg::Color3f> *)nullptr);
    as((std::vector<std::string> *)nullptr);
    return seen;
}

// Typed read. A missing key returns false silently; a key of another type
// prints a message and the call stack and returns false; out is then untouched.
template <class T>
bool getFromMessage(const lmMessage &store, const std::string &key, T &out)
{
    static_assert(lmIsPreferenceType<T>::value, "not a preference value type");
    const boost::any &value = store.get(key);
    if (value.empty())
        return false;
    if (!lmHoldsType(value, typeid(T))) {
        std::fprintf(stderr, "getFromMessage : Attribute '%s' has wrong type (is:'%s' != req:'%s')!\n", key.c_str(),
                     value.type().name(), typeid(T).name());
        lmMessage::printBT();
        return false;
    }
    out = *boost::unsafe_any_cast<T>(&value);
    return true;
}

// Typed write; true when the store now holds a different value than before.
// Floating values compare with ==, so NaN over NaN counts as a change.
template <class T>
bool setToMessage(lmMessage &store, const std::string &key, const T &value, bool overwrite)
{
    static_assert(lmIsPreferenceType<T>::value, "not a preference value type");
    const boost::any &held = store.get(key);
    if (held.empty()) {
        store.set(key, boost::any(value), true);
        return true;
    }
    if (!overwrite)
        return false;
    if (lmHoldsType(held, typeid(T)) && *boost::unsafe_any_cast<T>(&held) == value)
        return false;
    store.set(key, boost::any(value), true);
    return true;
}

#pragma once

// Store access shared by the file I/O page tests.
#include "../categories/lmPageTestSupport.h"

#include <string>

// True when key holds exactly this type and value.
template <class T>
bool holds(const std::string &key, const T &expected)
{
    const boost::any &value = lmPreferences::getData().get(key);
    return !value.empty() && lmHoldsType(value, typeid(T)) && *boost::unsafe_any_cast<T>(&value) == expected;
}

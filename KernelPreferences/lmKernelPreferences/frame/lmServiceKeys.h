#pragma once

#include "lmKeyTable.h"
#include "lmPageBindings.h"
#include "lmPreferencesService.h"

#include <boost/any.hpp>

#include <QString>

// Typed keys of a category that keeps its values through the host's
// preference service (int, float and bool keys). The service answers a read
// it cannot serve with the default it is given: the key's own.

inline int lmServiceValue(const lmPreferencesService &prefs, const lmTypedKey<int> &key)
{
    return prefs.getInt(key.name, key.defaultValue);
}
inline float lmServiceValue(const lmPreferencesService &prefs, const lmTypedKey<float> &key)
{
    return prefs.getFloat(key.name, key.defaultValue);
}
inline bool lmServiceValue(const lmPreferencesService &prefs, const lmTypedKey<bool> &key)
{
    return prefs.getBool(key.name, key.defaultValue);
}

// True when the store now holds a different value.
inline bool lmServiceWrite(lmPreferencesService &prefs, const char *key, const boost::any &value, bool overwrite)
{
    if (const int *number = boost::any_cast<int>(&value))
        return prefs.setInt(key, *number, overwrite);
    if (const float *real = boost::any_cast<float>(&value))
        return prefs.setFloat(key, *real, overwrite);
    if (const bool *flag = boost::any_cast<bool>(&value))
        return prefs.setBool(key, *flag, overwrite);
    return false;
}

inline void lmServiceWriteDefaults(lmPreferencesService &prefs, const lmKeyTable &keys, bool overwrite)
{
    for (const lmPreferenceKey &row : keys.rows())
        if (row.makeDefault)
            lmServiceWrite(prefs, row.key.c_str(), row.makeDefault(), overwrite);
}

inline void lmServiceRemove(lmPreferencesService &prefs, const lmKeyTable &keys)
{
    for (const lmPreferenceKey &row : keys.rows())
        prefs.remove(QString::fromStdString(row.key));
}

// Controls bound through the service: every key loads, missing ones as
// their defaults.
template <>
struct lmBoundStore<lmPreferencesService>
{
    template <class T>
    static bool read(const lmPreferencesService &prefs, const lmTypedKey<T> &key, T &out)
    {
        out = lmServiceValue(prefs, key);
        return true;
    }
    template <class T>
    static bool write(lmPreferencesService &prefs, const lmTypedKey<T> &key, const T &value)
    {
        return lmServiceWrite(prefs, key.name, boost::any(value), true);
    }
    template <class T>
    static void writePlain(lmPreferencesService &prefs, const lmTypedKey<T> &key, const T &value)
    {
        write(prefs, key, value);
    }
};

using lmServiceBindings = lmBindingsOf<lmPreferencesService>;

#pragma once

#include "lmMessage.h"
#include "lmMessageHelpers.h"
#include "lmTypedKey.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <typeinfo>
#include <vector>

// One row of a category's key table: the persisted key, its value type and
// how its default is made. Most rows are typed keys with a fixed default; a
// few defaults depend on the host's edition, and a few keys are only removed.
struct lmPreferenceKey
{
    template <class T>
    lmPreferenceKey(const lmTypedKey<T> &typed)
        : key(typed.name), type(&typeid(T)), makeDefault([value = typed.defaultValue] { return boost::any(value); })
    {
    }
    lmPreferenceKey(std::string key, const std::type_info *type, std::function<boost::any()> makeDefault)
        : key(std::move(key)), type(type), makeDefault(std::move(makeDefault))
    {
    }

    std::string key;
    const std::type_info *type;
    std::function<boost::any()> makeDefault; // empty: the category writes no default
};

template <class T>
lmTypedKey<T> lmKey(const char *key, const T &defaultValue)
{
    return {key, defaultValue};
}

// A default computed each time defaults are written.
template <class T, class F>
lmPreferenceKey lmKeyComputed(const char *key, F makeDefault)
{
    static_assert(lmIsPreferenceType<T>::value, "not a preference value type");
    return {key, &typeid(T), [makeDefault] { return boost::any(T(makeDefault())); }};
}

// A key the category owns but never gives a default.
template <class T>
lmPreferenceKey lmKeyWithoutDefault(const char *key)
{
    static_assert(lmIsPreferenceType<T>::value, "not a preference value type");
    return {key, &typeid(T), {}};
}

// The keys of one category in the order in which their defaults are written.
class lmKeyTable
{
public:
    lmKeyTable(std::initializer_list<lmPreferenceKey> rows) : m_rows(rows) {}

    void writeDefaults(lmMessage &store, bool overwrite) const
    {
        for (const lmPreferenceKey &row : m_rows)
            if (row.makeDefault)
                store.set(row.key, row.makeDefault(), overwrite);
    }

    void removeFrom(lmMessage &store) const
    {
        for (const lmPreferenceKey &row : m_rows)
            store.remove(row.key);
    }

    const std::vector<lmPreferenceKey> &rows() const { return m_rows; }

private:
    std::vector<lmPreferenceKey> m_rows;
};

#pragma once

#include "lmMessage.h"
#include "lmMessageHelpers.h"

#include <boost/any.hpp>

// A preference key with its value type and default, declared once per page:
//     const lmTypedKey<float> kFov{"Camera fov", 45.0f};
// Every read and write through it uses that type. It converts to the key's
// name for the host's change marks (isChanged(kFov)).
template <class T>
struct lmTypedKey
{
    static_assert(lmIsPreferenceType<T>::value, "not a preference value type");
    using Value = T;

    const char *name;
    T defaultValue;

    operator const char *() const { return name; }

    // false on a missing or mistyped key; out is then untouched.
    bool read(const lmMessage &store, T &out) const { return getFromMessage(store, name, out); }
    // true when the store now holds a different value.
    bool write(lmMessage &store, const T &value) const { return setToMessage(store, name, value, true); }
    // A write that does not ask whether the value changed.
    void writePlain(lmMessage &store, const T &value) const { store.set(name, boost::any(value), true); }
    void writeDefault(lmMessage &store, bool overwrite) const { store.set(name, boost::any(defaultValue), overwrite); }
};

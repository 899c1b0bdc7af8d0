#pragma once

#include "lmMessageHelpers.h"
#include "lmPreferences.h"

#include <QAbstractButton>

#include <string>

// Helpers of pages that store without change tracking.

// A plain write: the key always counts as changed.
template <class T>
void lmStorePlain(const std::string &key, const T &value)
{
    static_assert(lmIsPreferenceType<T>::value, "not a preference value type");
    lmPreferences::getData().set(key, boost::any(value), true);
}

// Checks the button from a bool key; a key that does not read leaves it as it is.
inline void lmCheckFromStore(QAbstractButton *button, const std::string &key)
{
    bool value = false;
    if (getFromMessage(lmPreferences::getData(), key, value))
        button->setChecked(value);
}

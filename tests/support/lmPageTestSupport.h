#pragma once

// Helpers of the few page tests written in C++: the host's start-up and
// accept passes, values written as a loaded store holds them, and the calls
// of one hook.
#include "lmCallLog.h"
#include "lmMessageHelpers.h"
#include "lmPreferences.h"
#include "lmPreferencesCategory.h"
#include "lmPreferencesHost.h"

#include <QStringList>

#include <string>
#include <type_traits>

// Defaults written, initial apply done and the page filled, as at start-up;
// the call log then starts empty.
// Categories on the preference service take no store.
template <class Category>
void startPage(Category &category)
{
    if constexpr (std::is_base_of<lmPreferencesCategory, Category>::value)
        category.setDefault(false);
    else
        category.setDefault(lmPreferences::getData(), false);
    category.apply();
    category.updateGUI();
    lmCallLog::clear();
}

// What the host does when the dialog is accepted.
template <class Category>
void acceptPage(Category &category)
{
    lmPreferencesHost::resetUnchanged();
    category.storeGUI();
    category.apply();
}

inline void setStored(const std::string &key, const boost::any &value)
{
    lmPreferences::getData().set(key, value, true);
}

// The calls one apply makes.
template <class Category>
QStringList applyLog(Category &category)
{
    lmCallLog::clear();
    category.apply();
    return lmCallLog::lines();
}

// The calls one accepted dialog makes.
template <class Category>
QStringList acceptLog(Category &category)
{
    lmCallLog::clear();
    acceptPage(category);
    return lmCallLog::lines();
}

#pragma once

// Helpers shared by the page tests: the host's start-up and accept passes,
// values written as a loaded store holds them, a printable store, the
// wrong-type reports and the calls of one hook.
#include "lmCallLog.h"
#include "lmMessageHelpers.h"
#include "lmPreferences.h"
#include "lmPreferencesCategory.h"
#include "lmPreferencesHost.h"

#include <QMap>
#include <QRegularExpression>
#include <QStringList>

#include <string>
#include <type_traits>
#include <vector>

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

// True when key holds exactly this type and value.
template <class T>
bool holds(const std::string &key, const T &expected)
{
    const boost::any &value = lmPreferences::getData().get(key);
    return !value.empty() && lmHoldsType(value, typeid(T)) && *boost::unsafe_any_cast<T>(&value) == expected;
}

inline void setStored(const std::string &key, const boost::any &value)
{
    lmPreferences::getData().set(key, value, true);
}

// The keys the last storeGUI marked unchanged, of the first category.
inline std::vector<std::string> unchangedKeys()
{
    return lmPreferencesHost::unchangedKeys(lmPreferencesHost::categories().front());
}

// "key = type value" for every key of the store, in key order.
inline QStringList storeDump()
{
    QStringList lines;
    for (const auto &entry : lmPreferences::getData().values()) {
        const boost::any &value = entry.second;
        std::string text = std::string("other ") + value.type().name();
        lmVisitValue(value, [&text](const auto &held) {
            using T = std::decay_t<decltype(held)>;
            const char *name = std::is_same<T, bool>::value           ? "bool "
                               : std::is_same<T, int>::value          ? "int "
                               : std::is_same<T, unsigned int>::value ? "uint "
                               : std::is_same<T, float>::value        ? "float "
                               : std::is_same<T, double>::value       ? "double "
                               : std::is_same<T, std::string>::value  ? "string "
                               : std::is_same<T, QString>::value      ? "qstring "
                                                                      : nullptr;
            if (name)
                text = name + lmLogText(held);
        });
        lines << QString::fromStdString(entry.first + " = " + text);
    }
    return lines;
}

// "key xN" for every key the wrong-type report names in printed, in key order.
inline QStringList wrongTypeReports(const QString &printed)
{
    static const QRegularExpression report(QStringLiteral("getFromMessage : Attribute '([^']*)' has wrong type"));
    QMap<QString, int> counts;
    for (auto match = report.globalMatch(printed); match.hasNext();)
        ++counts[match.next().captured(1)];
    QStringList lines;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        lines << QStringLiteral("%1 x%2").arg(it.key()).arg(it.value());
    return lines;
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

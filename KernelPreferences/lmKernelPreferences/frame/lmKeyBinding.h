#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

// Which preference key a page control shows and stores: a dynamic property
// on the control, set in the page's form where the key is fixed and in the
// page's code where it is computed. Its value is a QString for a control
// that holds one key, a QStringList for one that feeds several (both lists of
// a background table, say). The pages themselves never read it; the host
// does, to find the control of a key.
constexpr char kPreferenceKeyProperty[] = "lmPreferenceKey";

// The keys a control holds; empty for a control bound to none.
inline QStringList lmBoundKeys(const QObject *control)
{
    if (!control)
        return {};
    const QVariant value = control->property(kPreferenceKeyProperty);
    QStringList keys = value.userType() == QMetaType::QString ? QStringList{value.toString()} : value.toStringList();
    keys.removeAll(QString());
    return keys;
}

// Binds a control whose key the page computes at run time.
inline void lmBindKeys(QObject *control, const QStringList &keys)
{
    control->setProperty(kPreferenceKeyProperty, keys.size() == 1 ? QVariant(keys.first()) : QVariant(keys));
}

#pragma once

#include "lmMessageHelpers.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QMetaProperty>
#include <QVariant>
#include <QWidget>

#include <boost/any.hpp>

#include <map>
#include <string>

// The values updateGUI loaded into a page's controls. Controls round (spin
// box decimals), clamp (ranges) and cannot show every stored value (an index
// or item data without an item), so reading a control back need not give
// what was loaded. storeGUI asks for each key's value here: while the control
// still shows what updateGUI left in it, the loaded value comes back bit for
// bit, so an OK on an untouched page changes nothing; once the user (or a
// page slot) changed the control, the control's own value counts.
class lmLoadedValues
{
public:
    // What a control shows, compared between updateGUI and storeGUI.
    static QVariant shownBy(const QWidget *control)
    {
        if (auto combo = qobject_cast<const QComboBox *>(control))
            return QVariantList{combo->currentIndex(), combo->currentText(), combo->count()};
        if (auto edit = qobject_cast<const QLineEdit *>(control))
            return edit->text();
        if (auto button = qobject_cast<const QAbstractButton *>(control))
            return button->isChecked();
        const QMetaProperty user = control->metaObject()->userProperty();
        const QVariant value = user.isValid() ? user.read(control) : QVariant();
        // Exact text: QVariant compares floating values fuzzily.
        if (value.userType() == QMetaType::Double || value.userType() == QMetaType::Float)
            return QString::number(value.toDouble(), 'g', 17);
        return value;
    }

    // In updateGUI, after the control was set from value, read from key.
    template <class T>
    void loaded(const std::string &key, const QWidget *control, const T &value)
    {
        loaded(key, shownBy(control), value);
    }
    // The same for a control whose shown state the page describes itself.
    template <class T>
    void loaded(const std::string &key, const QVariant &shown, const T &value)
    {
        static_assert(lmIsPreferenceType<T>::value, "not a preference value type");
        m_entries[key] = Entry{boost::any(value), shown};
    }

    // At the start of updateGUI: a key that then does not read leaves its
    // control as it is, and storeGUI takes the control's value.
    void clear() { m_entries.clear(); }

    // In storeGUI: the value to write under key.
    template <class T>
    T value(const std::string &key, const QWidget *control, const T &fromControl) const
    {
        return value(key, shownBy(control), fromControl);
    }
    template <class T>
    T value(const std::string &key, const QVariant &shown, const T &fromControl) const
    {
        const auto it = m_entries.find(key);
        if (it == m_entries.end() || it->second.shown != shown)
            return fromControl;
        const T *loadedValue = boost::any_cast<T>(&it->second.value);
        return loadedValue ? *loadedValue : fromControl;
    }

private:
    struct Entry
    {
        boost::any value;
        QVariant shown;
    };
    std::map<std::string, Entry> m_entries;
};

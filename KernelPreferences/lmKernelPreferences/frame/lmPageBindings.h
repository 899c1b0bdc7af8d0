#pragma once

#include "lmComboSelect.h"
#include "lmKeyBinding.h"
#include "lmLoadedValues.h"
#include "lmTypedKey.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <functional>
#include <string>
#include <type_traits>
#include <vector>

class QLMSlider;

// A number in a line edit: format 'g', six significant digits.
inline QString lmNumberText(double value)
{
    return QString::number(value, 'g', 6);
}

// How bound keys reach their values: typed reads and writes of the store
// itself. A category that keeps its values elsewhere specialises it.
template <class Store>
struct lmBoundStore
{
    template <class T>
    static bool read(const Store &store, const lmTypedKey<T> &key, T &out)
    {
        return key.read(store, out);
    }
    template <class T>
    static bool write(Store &store, const lmTypedKey<T> &key, const T &value)
    {
        return key.write(store, value);
    }
    template <class T>
    static void writePlain(Store &store, const lmTypedKey<T> &key, const T &value)
    {
        key.writePlain(store, value);
    }
};

// A page's controls bound to its typed keys, in the order updateGUI loads
// them and storeGUI stores them. Each binding shows a stored value in its
// control and reads it back. What updateGUI loaded is remembered
// (lmLoadedValues), so a control the user left alone stores back exactly the
// value it was loaded from. Binding a control also names its key on it
// (lmPreferenceKey) for the host. Store is what the keys are read from and
// written to: the store itself (lmPageBindings) or a host service in front
// of it.
template <class Store>
class lmBindingsOf
{
    struct Same
    {
        template <class T>
        T operator()(const T &value) const
        {
            return value;
        }
    };

public:
    // How storeGUI writes the keys bound from here on: tracked (a value equal
    // to the stored one marks its key unchanged, the default) or plain (the
    // key counts as changed whatever its value).
    enum Writes { Tracked, Plain };
    void writeFromHere(Writes writes) { m_writes = writes; }

    // Any control: show puts a value into it, read takes one out of it, and
    // toStore makes the value to store of the one the control holds (a
    // page's rule that forces a value, say).
    template <class T, class Control, class Show, class Read, class ToStore = Same>
    void bind(const lmTypedKey<T> &key, Control *control, Show show, Read read, ToStore toStore = {})
    {
        add(key, control, show, read, toStore, true);
    }
    // The same for a key whose page rule stores what the control shows even
    // when it could not show the loaded value (an item-less combo stores 0).
    template <class T, class Control, class Show, class Read>
    void bindShown(const lmTypedKey<T> &key, Control *control, Show show, Read read)
    {
        add(key, control, show, read, Same{}, false);
    }

    // A check box or button.
    void bind(const lmTypedKey<bool> &key, QAbstractButton *button)
    {
        bind(key, button, [](QAbstractButton *b, bool on) { b->setChecked(on); },
             [](const QAbstractButton *b) { return b->isChecked(); });
    }
    // A checkable group box.
    void bind(const lmTypedKey<bool> &key, QGroupBox *box)
    {
        bind(key, box, [](QGroupBox *b, bool on) { b->setChecked(on); },
             [](const QGroupBox *b) { return b->isChecked(); });
    }
    // A combo whose index is the stored value.
    void bind(const lmTypedKey<int> &key, QComboBox *combo, lmIfNoItem ifNone)
    {
        bind(key, combo, [ifNone](QComboBox *c, int index) { lmSelectIndex(c, index, ifNone); },
             [](const QComboBox *c) { return c->currentIndex(); });
    }
    // A combo whose items carry the stored values as their data.
    template <class T>
    void bindData(const lmTypedKey<T> &key, QComboBox *combo, lmIfNoItem ifNone)
    {
        bind(key, combo, [ifNone](QComboBox *c, const T &value) { lmSelectData(c, toVariant(value), ifNone); },
             [](const QComboBox *c) { return fromVariant<T>(c->currentData()); });
    }
    // A number in a line edit; text that is no number stores 0.
    template <class T, std::enable_if_t<std::is_floating_point<T>::value, int> = 0>
    void bind(const lmTypedKey<T> &key, QLineEdit *edit)
    {
        bind(key, edit, [](QLineEdit *e, T value) { e->setText(lmNumberText(value)); },
             [](const QLineEdit *e) { return T(e->text().toDouble()); });
    }
    void bind(const lmTypedKey<float> &key, QLineEdit *edit)
    {
        bind(key, edit, [](QLineEdit *e, float value) { e->setText(lmNumberText(value)); },
             [](const QLineEdit *e) { return e->text().toFloat(); });
    }
    void bind(const lmTypedKey<QString> &key, QLineEdit *edit)
    {
        bind(key, edit, [](QLineEdit *e, const QString &text) { e->setText(text); },
             [](const QLineEdit *e) { return e->text(); });
    }
    void bind(const lmTypedKey<std::string> &key, QLineEdit *edit)
    {
        bind(key, edit, [](QLineEdit *e, const std::string &text) { e->setText(QString::fromStdString(text)); },
             [](const QLineEdit *e) { return e->text().toStdString(); });
    }
    template <class T>
    void bind(const lmTypedKey<T> &key, QSpinBox *spin)
    {
        bind(key, spin, [](QSpinBox *s, T value) { s->setValue(int(value)); },
             [](const QSpinBox *s) { return T(s->value()); });
    }
    // A double spin box, the host's wheel included.
    template <class T>
    void bind(const lmTypedKey<T> &key, QDoubleSpinBox *spin)
    {
        bind(key, spin, [](QDoubleSpinBox *s, T value) { s->setValue(double(value)); },
             [](const QDoubleSpinBox *s) { return T(s->value()); });
    }
    template <class T>
    void bind(const lmTypedKey<T> &key, QSlider *slider)
    {
        bind(key, slider, [](QSlider *s, T value) { s->setValue(int(value)); },
             [](const QSlider *s) { return T(s->value()); });
    }
    // The host's slider (QLMSlider.h must be included to bind one).
    template <class T, class Slider, std::enable_if_t<std::is_same<Slider, QLMSlider>::value, int> = 0>
    void bind(const lmTypedKey<T> &key, Slider *slider)
    {
        bind(key, slider, [](Slider *s, T value) { s->setValue(double(value)); },
             [](const Slider *s) { return T(s->value()); });
    }

    // updateGUI: each key that reads sets its control; the others keep theirs.
    // Blocked: the controls do not signal the values they are given.
    enum Signals { Emitted, Blocked };
    void load(const Store &store, Signals signalling = Emitted)
    {
        m_loaded.clear();
        for (const Binding &binding : m_bindings) {
            const QSignalBlocker blocker(signalling == Blocked ? binding.control : nullptr);
            binding.load(store);
        }
    }
    // storeGUI: every control's value under its key; the tracked keys whose
    // value did not change go to unchanged.
    template <class Unchanged>
    void store(Store &store, Unchanged unchanged) const
    {
        for (const Binding &binding : m_bindings)
            if (!binding.store(store, binding.tracked))
                unchanged(binding.key);
    }

    // For what a page loads and stores itself beside its bindings.
    lmLoadedValues &loaded() { return m_loaded; }

private:
    template <class T, class Control, class Show, class Read, class ToStore>
    void add(const lmTypedKey<T> &key, Control *control, Show show, Read read, ToStore toStore, bool remember)
    {
        nameKey(control, key.name);
        const char *name = key.name;
        m_bindings.push_back(Binding{
            name, control, m_writes == Tracked,
            [this, key, control, show, remember](const Store &store) {
                T value{};
                if (!lmBoundStore<Store>::read(store, key, value))
                    return;
                show(control, value);
                if (!remember)
                    return;
                // A control without a shown state of its own (a colour
                // picker) gives back exactly what it was set to.
                const QVariant shown = lmLoadedValues::shownBy(control);
                if (shown.isValid())
                    m_loaded.loaded(key.name, shown, value);
            },
            [this, key, control, read, toStore](Store &store, bool tracked) {
                const T value = toStore(m_loaded.value(key.name, control, T(read(control))));
                if (tracked)
                    return lmBoundStore<Store>::write(store, key, value);
                lmBoundStore<Store>::writePlain(store, key, value);
                return true;
            }});
    }

    struct Binding
    {
        const char *key;
        QObject *control;
        bool tracked;
        std::function<void(const Store &)> load;
        std::function<bool(Store &, bool)> store;
    };

    static void nameKey(QObject *control, const char *key)
    {
        QStringList keys = lmBoundKeys(control);
        if (!keys.contains(QLatin1String(key)))
            keys << QString::fromLatin1(key);
        lmBindKeys(control, keys);
    }

    template <class T>
    static QVariant toVariant(const T &value)
    {
        if constexpr (std::is_same<T, std::string>::value)
            return QString::fromStdString(value);
        else
            return QVariant::fromValue(value);
    }
    template <class T>
    static T fromVariant(const QVariant &data)
    {
        if constexpr (std::is_same<T, std::string>::value)
            return data.toString().toStdString();
        else
            return data.value<T>();
    }

    std::vector<Binding> m_bindings;
    Writes m_writes = Tracked;
    lmLoadedValues m_loaded;
};

using lmPageBindings = lmBindingsOf<lmMessage>;

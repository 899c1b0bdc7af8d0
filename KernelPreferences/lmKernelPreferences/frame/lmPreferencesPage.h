#pragma once

#include "lmKeyTable.h"
#include "lmPageBindings.h"
#include "lmPreferences.h"

#include <QObject>
#include <QWidget>

#include <memory>

// The common part of a category with one page: it owns the page widget,
// writes the defaults of the page's key table, and on destruction removes
// those keys, withdraws the page and deletes it. Categories derive from
// QObject first and from this base second, as from lmPreferences itself;
// the base adds no virtual hooks of its own.
template <class Page>
class lmPreferencesPage : public lmPreferences
{
public:
    ~lmPreferencesPage() override
    {
        keys.removeFrom(getData());
        subPreferencesGUI(m_page.get());
        // The category's own part is gone by now: no slot of it may run
        // while the page is taken apart.
        for (QObject *child : m_page->template findChildren<QObject *>())
            QObject::disconnect(child, nullptr, m_category, nullptr);
        m_page.reset();
    }

    void setDefault(lmMessage &, bool overwrite) override { keys.writeDefaults(getData(), overwrite); }

    Page *page() const { return m_page.get(); }

protected:
    // category: the derived object's QObject part, already constructed.
    lmPreferencesPage(QObject *category, const QString &group, const QString &pageName, const lmKeyTable &keyTable)
        : lmPreferences(group, pageName), keys(keyTable), m_category(category), m_page(std::make_unique<Page>())
    {
    }

    // A tracked write: a value equal to the stored one marks its key unchanged.
    template <class T>
    void storeTracked(const lmTypedKey<T> &key, const T &value)
    {
        if (!key.write(getData(), value))
            addUnchanged(key.name);
    }
    // A plain write: the key counts as changed whatever its value.
    template <class T>
    void storePlain(const lmTypedKey<T> &key, const T &value)
    {
        key.writePlain(getData(), value);
    }

    // updateGUI and storeGUI of the bound controls.
    void loadBound() { bindings.load(getData()); }
    void storeBound()
    {
        bindings.store(getData(), [this](const char *key) { addUnchanged(key); });
    }

    const lmKeyTable &keys;
    lmPageBindings bindings;

private:
    QObject *m_category;
    std::unique_ptr<Page> m_page;
};

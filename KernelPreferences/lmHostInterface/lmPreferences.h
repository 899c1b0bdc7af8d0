#pragma once

#include "lmHostApi.h"
#include "lmMessage.h"

#include <QString>

#include <set>
#include <string>

class QWidget;

// Host base class of a preferences category: one entry (group and page) of
// the preferences dialog whose values live in the shared store.
class LM_HOST_API lmPreferences
{
public:
    // An empty page makes the group itself the page.
    lmPreferences(const QString &group, const QString &page);
    virtual ~lmPreferences();

    // Write the defaults into getData(); the first argument is the host's.
    virtual void setDefault(lmMessage &hostData, bool overwrite) = 0;
    // Push the stored values into the running host.
    virtual void apply() = 0;
    // Store to page.
    virtual void updateGUI() = 0;
    // Page to store.
    virtual void storeGUI() = 0;

    virtual void preferencesNewScene(lmMessage &message);
    virtual void preferencesLoaded(lmMessage &message);
    virtual void preferencesInitialApply(lmMessage &message);

    // The host's preference store, shared by every category.
    static lmMessage &getData();

    void addPreferencesGUI(QWidget *widget);
    void subPreferencesGUI(QWidget *widget);

    const QString &group() const { return m_group; }
    const QString &page() const { return m_page; }

protected:
    bool isChanged(const char *key) const;
    void addUnchanged(const char *key);

private:
    friend class lmPreferencesHost;

    QString m_group;
    QString m_page;
    std::set<std::string> m_unchanged;
};

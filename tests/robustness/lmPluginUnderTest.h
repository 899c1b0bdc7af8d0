#pragma once

#include <QLibrary>
#include <QString>

#include <map>
#include <string>
#include <typeinfo>

// The real module, loaded as the host loads it, with the keys every category
// owns and their documented types, learnt from a pass over an empty store.
class lmPluginUnderTest
{
public:
    // Loads it into a freshly reset host and runs initPreferencesPlugin.
    bool load(QString *error);
    // Withdraws every category; call before the application goes away.
    bool unload();

    // Key -> type name of its default.
    const std::map<std::string, std::string> &documentedTypes() const { return m_types; }

private:
    void learnDocumentedTypes();

    QLibrary m_library;
    std::map<std::string, std::string> m_types;
};

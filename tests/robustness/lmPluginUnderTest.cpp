#include "lmPluginUnderTest.h"

#include "lmMessage.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

bool lmPluginUnderTest::load(QString *error)
{
    lmResetHost();
    // The pass that learns the defaults may raise a page's notice.
    lmDialogAnswerer dialogs;
    m_library.setFileName(QStringLiteral(LM_PLUGIN_PATH));
    auto entry = reinterpret_cast<void (*)()>(m_library.resolve("initPreferencesPlugin"));
    if (!entry) {
        *error = m_library.errorString();
        return false;
    }
    entry();
    learnDocumentedTypes();
    return true;
}

bool lmPluginUnderTest::unload()
{
    return m_library.unload();
}

void lmPluginUnderTest::learnDocumentedTypes()
{
    lmMessage scratch;
    lmMessage *store = lmPreferencesHost::swapStore(&scratch);
    lmPreferencesHost::setDefaultAll(true);
    lmPreferencesHost::swapStore(store);
    for (const auto &entry : scratch.values())
        m_types[entry.first] = entry.second.type().name();
}

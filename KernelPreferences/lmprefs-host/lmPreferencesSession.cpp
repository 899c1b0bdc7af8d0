#include "lmPreferencesSession.h"

#include "lmCallLog.h"
#include "lmDialogSuppressor.h"
#include "lmPreferences.h"

#include <QScopeGuard>

#include <cstdio>

namespace {

// Puts the real store back even when a category throws.
struct ScratchStore
{
    lmMessage scratch;
    lmMessage *real;
    ScratchStore() : real(lmPreferencesHost::swapStore(&scratch)) {}
    ~ScratchStore() { lmPreferencesHost::swapStore(real); }
};

} // namespace

lmPreferencesSession::lmPreferencesSession(const QString &storePath) : m_file(storePath)
{
    // Pages come and go with categories; what was learnt may belong to a
    // category that no longer exists.
    m_pagesListener = lmPreferencesHost::addPagesListener([this] { m_defaults.clear(); });
}

lmPreferencesSession::~lmPreferencesSession()
{
    lmPreferencesHost::removePagesListener(m_pagesListener);
}

QStringList lmPreferencesSession::loadStore()
{
    m_file.load(lmPreferences::getData());
    return m_file.messages();
}

void lmPreferencesSession::startUp()
{
    lmPreferencesHost::setDefaultAll(false);
    // Now, before any window or timer of the host's exists, rather than
    // lazily from inside the dialog's event handling.
    learnDefaults();
    // Pages show the loaded values before the first apply: some applies read
    // their page (STL stores it back), and would otherwise push and store
    // what the form's designer chose instead of what the user saved.
    lmPreferencesHost::updateGUIAll();
    lmPreferencesHost::resetUnchanged();
    lmPreferencesHost::applyAll();
    lmPreferencesHost::resetUnchanged();
}

bool lmPreferencesSession::accept()
{
    lmPreferencesHost::storeGUIAll();
    for (const Category &category : lmPreferencesHost::categories())
        if (m_pushAllInFull || m_pushInFull.count(category.object()))
            lmPreferencesHost::resetUnchanged(category);
    lmPreferencesHost::applyAll();
    lmPreferencesHost::resetUnchanged();
    m_pushInFull.clear();
    m_pushAllInFull = false;
    beginEditing();
    return m_file.save(lmPreferences::getData());
}

void lmPreferencesSession::restoreDefaults(const Category &category)
{
    lmPreferencesHost::setDefault(category, true);
    lmPreferencesHost::updateGUI(category);
    m_pushInFull.insert(category.object());
}

void lmPreferencesSession::restoreAllDefaults()
{
    for (const Category &category : lmPreferencesHost::categories())
        restoreDefaults(category);
}

void lmPreferencesSession::setValue(const std::string &key, const boost::any &value)
{
    lmPreferences::getData().set(key, value, true);
    bool owned = false;
    for (const Category &category : lmPreferencesHost::categories())
        if (defaultsOf(category).contains(key)) {
            m_pushInFull.insert(category.object());
            owned = true;
        }
    m_pushAllInFull = m_pushAllInFull || !owned;
}

void lmPreferencesSession::beginEditing()
{
    m_snapshot = lmPreferences::getData();
    m_hasSnapshot = true;
    m_snapshotPushInFull = m_pushInFull;
    m_snapshotPushAllInFull = m_pushAllInFull;
}

void lmPreferencesSession::cancel()
{
    if (m_hasSnapshot)
        lmPreferences::getData() = m_snapshot;
    m_pushInFull = m_snapshotPushInFull;
    m_pushAllInFull = m_snapshotPushAllInFull;
    lmPreferencesHost::updateGUIAll();
}

void lmPreferencesSession::learn(const Category &category)
{
    const int logged = lmCallLog::size();
    lmMessage defaults;
    {
        const auto restore = qScopeGuard([this, wasLearning = m_learning] { m_learning = wasLearning; });
        m_learning = true;
        ScratchStore store;
        lmDialogSuppressor suppressor;
        lmPreferencesHost::setDefault(category, true);
        defaults = store.scratch;
    }
    if (lmCallLog::size() != logged)
        std::fprintf(stderr, "lmprefs-host: the category \"%s\" made host calls while writing its defaults\n",
                     qPrintable(category.path()));
    m_defaults[category.object()] = std::move(defaults);
}

void lmPreferencesSession::learnDefaults()
{
    m_defaults.clear();
    for (const Category &category : lmPreferencesHost::categories())
        learn(category);
}

const lmMessage &lmPreferencesSession::defaultsOf(const Category &category)
{
    auto it = m_defaults.find(category.object());
    if (it == m_defaults.end()) {
        learn(category);
        it = m_defaults.find(category.object());
    }
    return it->second;
}

bool lmPreferencesSession::differsFromDefaults(const Category &category)
{
    const lmMessage &store = lmPreferences::getData();
    for (const auto &entry : defaultsOf(category).values())
        if (!lmStoreDocument::sameValue(store.get(entry.first), entry.second))
            return true;
    return false;
}

std::vector<lmPreferencesSession::Difference> lmPreferencesSession::differences()
{
    std::map<std::string, Difference> sorted;
    const lmMessage &store = lmPreferences::getData();
    for (const Category &category : lmPreferencesHost::categories())
        for (const auto &entry : defaultsOf(category).values()) {
            const boost::any &value = store.get(entry.first);
            if (!lmStoreDocument::sameValue(value, entry.second))
                sorted[entry.first] = Difference{entry.first, value, entry.second};
        }
    std::vector<Difference> result;
    for (auto &entry : sorted)
        result.push_back(std::move(entry.second));
    return result;
}

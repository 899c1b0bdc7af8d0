#include "lmPreferencesSession.h"

#include "lmCallLog.h"
#include "lmDialogSuppressor.h"
#include "lmPreferences.h"

#include <QScopeGuard>

#include <algorithm>

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

// A look at what a page would store: into a copy of the store, with modal
// dialogs dismissed and the call log paused, since it is the host's own
// business and no user action.
struct PageProbe : ScratchStore
{
    lmDialogSuppressor suppressor;
    bool wasRecording = lmCallLog::isRecording();
    PageProbe()
    {
        scratch = *real;
        lmCallLog::setRecording(false);
    }
    ~PageProbe() { lmCallLog::setRecording(wasRecording); }
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
    m_loadResult = m_file.load(lmPreferences::getData());
    m_loadMessages = m_file.messages();
    m_base = lmPreferences::getData();
    return m_loadMessages;
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
    // Defaults the file lacked are not this session's changes: another
    // instance's saved value for such a key wins at the next save.
    m_base = lmPreferences::getData();
}

bool lmPreferencesSession::accept()
{
    commit();
    return save();
}

void lmPreferencesSession::commit()
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
}

bool lmPreferencesSession::save()
{
    lmMessage merged;
    if (!m_file.saveChanges(lmPreferences::getData(), m_base, merged)) {
        m_error = m_file.errorString();
        return false;
    }
    m_error.clear();
    std::vector<std::string> theirs;
    const lmMessage &store = lmPreferences::getData();
    for (const auto &entry : merged.values())
        if (!lmStoreDocument::sameValue(store.get(entry.first), entry.second))
            theirs.push_back(entry.first);
    m_base = merged;
    takeValues(merged, theirs);
    return true;
}

bool lmPreferencesSession::saveAs(const QString &path)
{
    lmStoreFile other(path);
    if (!other.save(lmPreferences::getData())) {
        m_error = other.errorString();
        return false;
    }
    m_error.clear();
    m_file = other;
    m_base = lmPreferences::getData();
    return true;
}

std::vector<std::string> lmPreferencesSession::takeOutsideChanges()
{
    lmMessage disk;
    if (m_file.path().isEmpty() || !m_file.canSave() || !lmStoreFile::readFile(m_file.path(), disk, nullptr))
        return {};
    std::map<const void *, bool> edited;
    std::vector<std::string> taken;
    for (const auto &entry : disk.values()) {
        if (lmStoreDocument::sameValue(entry.second, m_base.get(entry.first)))
            continue;
        bool onEditedPage = false;
        for (const Category &category : lmPreferencesHost::categories())
            if (defaultsOf(category).contains(entry.first)) {
                auto it = edited.find(category.object());
                if (it == edited.end())
                    it = edited.emplace(category.object(), !pendingKeys(category).empty()).first;
                onEditedPage = onEditedPage || it->second;
            }
        // Left for the save, which keeps what this session did not change.
        if (onEditedPage)
            continue;
        m_base.set(entry.first, entry.second, true);
        taken.push_back(entry.first);
    }
    takeValues(disk, taken);
    return taken;
}

void lmPreferencesSession::takeValues(const lmMessage &values, const std::vector<std::string> &keys)
{
    if (keys.empty())
        return;
    lmMessage &store = lmPreferences::getData();
    for (const std::string &key : keys) {
        store.set(key, values.get(key), true);
        // Cancel returns to them too: they are the file's, not an edit.
        m_snapshot.set(key, values.get(key), true);
    }
    for (const Category &category : lmPreferencesHost::categories()) {
        const lmMessage &defaults = defaultsOf(category);
        if (std::any_of(keys.begin(), keys.end(), [&](const std::string &key) { return defaults.contains(key); })) {
            lmPreferencesHost::updateGUI(category);
            // Not the user's edits: what the page now shows is where edits
            // start from.
            if (m_pageBaselines.count(category.object()))
                m_pageBaselines[category.object()] = pageValues(category);
            // The running host has not seen them yet.
            m_pushInFull.insert(category.object());
            m_snapshotPushInFull.insert(category.object());
        }
    }
}

void lmPreferencesSession::showDefaultOnPage(const Category &category, const std::string &key)
{
    const boost::any defaultValue = defaultsOf(category).get(key);
    if (defaultValue.empty())
        return;
    {
        PageProbe store;
        // The page as it is, then the default for this key alone, back onto
        // the page.
        lmPreferencesHost::storeGUI(category);
        store.scratch.set(key, defaultValue, true);
        lmPreferencesHost::updateGUI(category);
    }
    lmPreferencesHost::resetUnchanged(category);
}

bool lmPreferencesSession::hasUncommittedChanges() const
{
    if (!m_hasSnapshot)
        return false;
    const lmMessage &store = lmPreferences::getData();
    if (store.size() != m_snapshot.size())
        return true;
    for (const auto &entry : store.values())
        if (!lmStoreDocument::sameValue(entry.second, m_snapshot.get(entry.first)))
            return true;
    return false;
}

lmMessage lmPreferencesSession::pageValues(const Category &category)
{
    lmMessage values;
    const lmMessage &defaults = defaultsOf(category);
    {
        const auto restore = qScopeGuard([this, wasLearning = m_learning] { m_learning = wasLearning; });
        m_learning = true;
        PageProbe store;
        lmPreferencesHost::storeGUI(category);
        for (const auto &entry : defaults.values())
            values.set(entry.first, store.scratch.get(entry.first), true);
    }
    // Storing marks keys unchanged; those marks belong to the next accept.
    lmPreferencesHost::resetUnchanged(category);
    return values;
}

void lmPreferencesSession::rememberPages()
{
    m_pageBaselines.clear();
    for (const Category &category : lmPreferencesHost::categories())
        m_pageBaselines[category.object()] = pageValues(category);
}

std::vector<std::string> lmPreferencesSession::pendingKeys(const Category &category)
{
    const lmMessage now = pageValues(category);
    const auto baseline = m_pageBaselines.find(category.object());
    const lmMessage &before = baseline != m_pageBaselines.end() ? baseline->second : lmPreferences::getData();
    std::vector<std::string> pending;
    for (const auto &entry : now.values())
        if (!lmStoreDocument::sameValue(entry.second, before.get(entry.first)))
            pending.push_back(entry.first);
    return pending;
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

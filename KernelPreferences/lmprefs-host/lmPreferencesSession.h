#pragma once

#include "lmMessage.h"
#include "lmPreferencesHost.h"
#include "lmStoreFile.h"

#include <QString>
#include <QStringList>

#include <boost/any.hpp>

#include <map>
#include <set>
#include <string>
#include <vector>

// What the host does with the categories between loading the plug-in and
// quitting: start-up, OK/Apply, Cancel, Restore Defaults, persistence, and
// knowing which keys each category owns and what their defaults are.
class lmPreferencesSession
{
public:
    using Category = lmPreferencesHost::Category;

    // An empty path keeps nothing between runs.
    explicit lmPreferencesSession(const QString &storePath = QString());
    ~lmPreferencesSession();

    lmPreferencesSession(const lmPreferencesSession &) = delete;
    lmPreferencesSession &operator=(const lmPreferencesSession &) = delete;

    lmStoreFile &storeFile() { return m_file; }

    // Before the categories exist: the stored values, which then win over
    // the defaults. Returns what happened, one line each.
    QStringList loadStore();
    lmStoreFile::LoadResult loadResult() const { return m_loadResult; }
    QStringList loadMessages() const { return m_loadMessages; }

    // After the categories exist: defaults for keys the store lacks, what
    // each category's defaults are, pages from the store, then the initial
    // apply with every key counting as changed.
    void startUp();

    // OK and Apply: commit(), then save(). False when the save failed
    // (errorString()); the values stay in memory and in the pages.
    bool accept();
    // Pages to store, apply, unchanged sets reset.
    void commit();
    // The keys this session changed, onto the file as it is on disk now;
    // what another instance saved meanwhile comes back into the store and
    // onto the pages.
    bool save();
    // The whole store into another file, which is then the one kept.
    bool saveAs(const QString &path);
    QString errorString() const { return m_error; }

    // Values another instance saved since this session last read or wrote
    // the file: taken into the store and onto the page of every category
    // whose page holds no pending edit. Returns the keys taken.
    std::vector<std::string> takeOutsideChanges();

    // What each page shows now becomes what later edits are told from: when
    // the dialog opens and after OK, Apply and Cancel.
    void rememberPages();
    // Keys whose value on the page differs from what it showed when last
    // remembered (without that, from the store): the user's edits not yet
    // applied. Found by letting the category store its page into a copy.
    std::vector<std::string> pendingKeys(const Category &category);
    // The key's default onto the page, as a pending edit: the store and the
    // page's other edits stay as they are, and Cancel undoes it.
    void showDefaultOnPage(const Category &category, const std::string &key);
    // The store holds values that OK or Apply has not yet applied and saved
    // (Restore Defaults writes the store directly).
    bool hasUncommittedChanges() const;

    // Defaults into the store and onto the page; a restored category pushes
    // every key at the next accept, since the store already holds the values
    // its page then shows.
    void restoreDefaults(const Category &category);
    void restoreAllDefaults();

    // A value written behind the pages (the pages are updated after it):
    // the category that owns the key pushes every key at the next accept;
    // when no category owns it, all of them do.
    void setValue(const std::string &key, const boost::any &value);

    // Cancel returns the store to what it held at the last begin or accept.
    void beginEditing();
    void cancel();

    // The keys a category owns with their defaults, learnt by letting it
    // write into an empty scratch store. Modal dialogs a category opens while
    // writing its defaults are dismissed unseen.
    const lmMessage &defaultsOf(const Category &category);
    // Learns (again) the defaults of every category.
    void learnDefaults();
    // True while a category writes its defaults into the scratch store: a
    // dialog it opens then runs an event loop, and whatever that loop
    // delivers must not read or write the store.
    bool isLearning() const { return m_learning; }
    bool differsFromDefaults(const Category &category);

    struct Difference
    {
        std::string key;
        boost::any value; // empty when the key is missing from the store
        boost::any defaultValue;
    };
    // Sorted by key.
    std::vector<Difference> differences();

private:
    void learn(const Category &category);
    // The category's keys as its page would store them now.
    lmMessage pageValues(const Category &category);
    // Values that arrived from the disk: into the store, the pages and the
    // next apply.
    void takeValues(const lmMessage &values, const std::vector<std::string> &keys);

    lmStoreFile m_file;
    lmStoreFile::LoadResult m_loadResult = lmStoreFile::NoFile;
    QStringList m_loadMessages;
    QString m_error;
    // What the file held when this session last read or wrote it: a key
    // whose value differs from it is this session's change.
    lmMessage m_base;
    std::map<const void *, lmMessage> m_pageBaselines;
    lmMessage m_snapshot;
    bool m_hasSnapshot = false;
    // Categories whose every key counts as changed at the next accept.
    std::set<const void *> m_pushInFull;
    bool m_pushAllInFull = false;
    std::set<const void *> m_snapshotPushInFull;
    bool m_snapshotPushAllInFull = false;
    std::map<const void *, lmMessage> m_defaults;
    bool m_learning = false;
    int m_pagesListener = 0;
};

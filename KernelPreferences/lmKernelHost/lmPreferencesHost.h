#pragma once

#include "lmHostApi.h"

#include <QString>

#include <functional>
#include <string>
#include <vector>

class QWidget;
class lmMessage;
class lmPreferences;
class lmPreferencesCategory;

// The stand-in host's side of the preferences dialog: the categories in
// creation order, the pages in the order they were added, and the hook
// passes that the host drives.
class LM_HOST_API lmPreferencesHost
{
public:
    // Where a category's page sits in the dialog.
    struct Place
    {
        QString group;
        QString page; // empty: the group is the page

        // "group/page", or "group" for a top-level page.
        QString path() const { return page.isEmpty() ? group : group + QLatin1Char('/') + page; }
    };

    // A living category: exactly one of the two pointers is set.
    struct Category : Place
    {
        lmPreferences *preferences = nullptr;
        lmPreferencesCategory *category = nullptr;

        // The category object, whichever base it has.
        const void *object() const
        {
            return preferences ? static_cast<const void *>(preferences) : static_cast<const void *>(category);
        }
    };

    struct Page : Place
    {
        QWidget *widget = nullptr;
        Category owner;
    };

    static std::vector<Category> categories();
    static std::vector<Page> pages();
    static bool hasPage(const QWidget *widget);

    // Hooks of one category, and of all in creation order.
    static void setDefault(const Category &category, bool overwrite);
    static void apply(const Category &category);
    static void updateGUI(const Category &category);
    static void storeGUI(const Category &category);
    static void newScene(const Category &category);

    static void setDefaultAll(bool overwrite);
    static void applyAll();
    static void updateGUIAll();
    static void storeGUIAll();
    static void newSceneAll();

    // Every key counts as changed again.
    static void resetUnchanged();
    static void resetUnchanged(const Category &category);
    static std::vector<std::string> unchangedKeys(const Category &category);

    // Makes store the one getData() returns; returns the previous one.
    static lmMessage *swapStore(lmMessage *store);

    // Keys looked up in the host's own store while it held no value under
    // them, in the order first asked for: keys a category reads but gives no
    // default.
    static std::vector<std::string> keysReadWithoutValue();

    // Called after a page is added or withdrawn.
    static int addPagesListener(std::function<void()> listener);
    static void removePagesListener(int id);

private:
    friend class lmMessage;
    friend class lmPreferences;
    friend class lmPreferencesCategory;

    static void noteReadWithoutValue(const lmMessage &store, const std::string &key);

    static void registerCategory(const Category &category);
    static void unregisterCategory(const void *object);
    static void addPage(const Page &page);
    static void removePage(const QWidget *widget);
};

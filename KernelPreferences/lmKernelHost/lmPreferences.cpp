#include "lmPreferences.h"

#include "lmHostSettings.h"
#include "lmPreferencesCategory.h"
#include "lmPreferencesHost.h"

#include <QWidget>

#include <algorithm>
#include <map>

namespace {

struct Registry
{
    std::vector<lmPreferencesHost::Category> categories;
    std::vector<lmPreferencesHost::Page> pages;
    std::map<int, std::function<void()>> pagesListeners;
    int nextListener = 1;
    std::vector<std::string> readWithoutValue;
};

Registry &registry()
{
    static Registry r;
    return r;
}

lmMessage &hostStore()
{
    static lmMessage store;
    return store;
}

lmMessage *&currentStore()
{
    static lmMessage *current = &hostStore();
    return current;
}

const bool kReadsWithoutValueReset = [] {
    lmHostSettings::addResetHook([] { registry().readWithoutValue.clear(); });
    return true;
}();

// Runs a hook on whichever base the category has; most hooks share a name.
template <class OnPreferences, class OnCategory>
void dispatch(const lmPreferencesHost::Category &category, OnPreferences onPreferences, OnCategory onCategory)
{
    if (category.preferences)
        onPreferences(*category.preferences);
    else if (category.category)
        onCategory(*category.category);
}

template <class OnEither>
void dispatch(const lmPreferencesHost::Category &category, OnEither onEither)
{
    dispatch(category, onEither, onEither);
}

// In creation order, over a copy: a hook may create or destroy categories.
template <class Hook>
void forEachCategory(Hook hook)
{
    for (const lmPreferencesHost::Category &category : lmPreferencesHost::categories())
        hook(category);
}

void notifyPagesChanged()
{
    const auto listeners = registry().pagesListeners;
    for (const auto &entry : listeners)
        entry.second();
}

} // namespace

// lmPreferences

lmPreferences::lmPreferences(const QString &group, const QString &page) : m_group(group), m_page(page)
{
    lmPreferencesHost::Category category;
    category.preferences = this;
    category.group = group;
    category.page = page;
    lmPreferencesHost::registerCategory(category);
}

lmPreferences::~lmPreferences()
{
    lmPreferencesHost::unregisterCategory(this);
}

void lmPreferences::preferencesNewScene(lmMessage &) {}

void lmPreferences::preferencesLoaded(lmMessage &)
{
    updateGUI();
}

void lmPreferences::preferencesInitialApply(lmMessage &)
{
    apply();
}

lmMessage &lmPreferences::getData()
{
    return *currentStore();
}

void lmPreferences::addPreferencesGUI(QWidget *widget)
{
    if (!widget || lmPreferencesHost::hasPage(widget))
        return;
    lmPreferencesHost::Page page;
    page.group = m_group;
    page.page = m_page;
    page.widget = widget;
    page.owner.preferences = this;
    page.owner.group = m_group;
    page.owner.page = m_page;
    lmPreferencesHost::addPage(page);
}

void lmPreferences::subPreferencesGUI(QWidget *widget)
{
    lmPreferencesHost::removePage(widget);
}

bool lmPreferences::isChanged(const char *key) const
{
    return m_unchanged.count(key) == 0;
}

void lmPreferences::addUnchanged(const char *key)
{
    m_unchanged.insert(key);
}

// lmPreferencesCategory

lmPreferencesCategory::lmPreferencesCategory(const QString &name) : QWidget(nullptr), m_name(name)
{
    lmPreferencesHost::Category category;
    category.category = this;
    category.group = name;
    lmPreferencesHost::registerCategory(category);
}

lmPreferencesCategory::~lmPreferencesCategory()
{
    lmPreferencesHost::removePage(this);
    lmPreferencesHost::unregisterCategory(this);
}

void lmPreferencesCategory::newScene() {}

void lmPreferencesCategory::registerCategory()
{
    if (lmPreferencesHost::hasPage(this))
        return;
    lmPreferencesHost::Page page;
    page.group = m_name;
    page.widget = this;
    page.owner.category = this;
    page.owner.group = m_name;
    lmPreferencesHost::addPage(page);
}

bool lmPreferencesCategory::isChanged(const QString &key) const
{
    return !m_unchanged.contains(key);
}

void lmPreferencesCategory::addUnchanged(const QString &key)
{
    m_unchanged.insert(key);
}

// lmPreferencesHost

std::vector<lmPreferencesHost::Category> lmPreferencesHost::categories()
{
    return registry().categories;
}

std::vector<lmPreferencesHost::Page> lmPreferencesHost::pages()
{
    return registry().pages;
}

bool lmPreferencesHost::hasPage(const QWidget *widget)
{
    const auto &pages = registry().pages;
    return std::any_of(pages.begin(), pages.end(), [widget](const Page &p) { return p.widget == widget; });
}

void lmPreferencesHost::setDefault(const Category &category, bool overwrite)
{
    dispatch(
        category, [overwrite](lmPreferences &p) { p.setDefault(lmPreferences::getData(), overwrite); },
        [overwrite](lmPreferencesCategory &c) { c.setDefault(overwrite); });
}

void lmPreferencesHost::apply(const Category &category)
{
    dispatch(category, [](auto &c) { c.apply(); });
}

void lmPreferencesHost::updateGUI(const Category &category)
{
    dispatch(category, [](auto &c) { c.updateGUI(); });
}

void lmPreferencesHost::storeGUI(const Category &category)
{
    dispatch(category, [](auto &c) { c.storeGUI(); });
}

void lmPreferencesHost::newScene(const Category &category)
{
    dispatch(
        category, [](lmPreferences &p) { p.preferencesNewScene(lmPreferences::getData()); },
        [](lmPreferencesCategory &c) { c.newScene(); });
}

void lmPreferencesHost::setDefaultAll(bool overwrite)
{
    forEachCategory([overwrite](const Category &category) { setDefault(category, overwrite); });
}

void lmPreferencesHost::applyAll() { forEachCategory(apply); }
void lmPreferencesHost::updateGUIAll() { forEachCategory(updateGUI); }
void lmPreferencesHost::storeGUIAll() { forEachCategory(storeGUI); }
void lmPreferencesHost::newSceneAll() { forEachCategory(newScene); }

void lmPreferencesHost::resetUnchanged()
{
    for (const Category &category : registry().categories)
        resetUnchanged(category);
}

void lmPreferencesHost::resetUnchanged(const Category &category)
{
    dispatch(category, [](auto &c) { c.m_unchanged.clear(); });
}

std::vector<std::string> lmPreferencesHost::unchangedKeys(const Category &category)
{
    std::vector<std::string> keys;
    if (category.preferences)
        keys.assign(category.preferences->m_unchanged.begin(), category.preferences->m_unchanged.end());
    else if (category.category)
        for (const QString &key : category.category->m_unchanged)
            keys.push_back(key.toStdString());
    std::sort(keys.begin(), keys.end());
    return keys;
}

lmMessage *lmPreferencesHost::swapStore(lmMessage *store)
{
    lmMessage *previous = currentStore();
    currentStore() = store;
    return previous;
}

std::vector<std::string> lmPreferencesHost::keysReadWithoutValue()
{
    return registry().readWithoutValue;
}

void lmPreferencesHost::noteReadWithoutValue(const lmMessage &store, const std::string &key)
{
    // Scratch stores and the messages categories build for host commands
    // say nothing about the host's keys.
    if (&store != &hostStore())
        return;
    auto &keys = registry().readWithoutValue;
    if (std::find(keys.begin(), keys.end(), key) == keys.end())
        keys.push_back(key);
}

int lmPreferencesHost::addPagesListener(std::function<void()> listener)
{
    const int id = registry().nextListener++;
    registry().pagesListeners.emplace(id, std::move(listener));
    return id;
}

void lmPreferencesHost::removePagesListener(int id)
{
    registry().pagesListeners.erase(id);
}

void lmPreferencesHost::registerCategory(const Category &category)
{
    registry().categories.push_back(category);
}

void lmPreferencesHost::unregisterCategory(const void *object)
{
    auto &categories = registry().categories;
    categories.erase(std::remove_if(categories.begin(), categories.end(),
                                    [object](const Category &c) { return c.object() == object; }),
                     categories.end());
    auto &pages = registry().pages;
    pages.erase(std::remove_if(pages.begin(), pages.end(),
                               [object](const Page &p) { return p.owner.object() == object; }),
                pages.end());
}

void lmPreferencesHost::addPage(const Page &page)
{
    registry().pages.push_back(page);
    notifyPagesChanged();
}

void lmPreferencesHost::removePage(const QWidget *widget)
{
    auto &pages = registry().pages;
    const auto end = std::remove_if(pages.begin(), pages.end(), [widget](const Page &p) { return p.widget == widget; });
    if (end == pages.end())
        return;
    pages.erase(end, pages.end());
    notifyPagesChanged();
}

// Each category destroyed on its own, among the keys of all the others: it
// takes exactly its own keys (and the few it removes without writing them)
// out of the store and withdraws its page while the page still exists.
#include "lmCategoryRows.h"
#include "lmMessage.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QPointer>
#include <QtTest>

#include <functional>
#include <memory>
#include <set>

namespace {

// Keys a category's destructor removes although it never writes them.
std::set<std::string> removedUnwritten(const QString &page)
{
    if (page == "FileIO")
        return {"FileIO create uber materials"};
    if (page == "Kova")
        return {"KovaFileIO kova bin path"};
    if (page == "Render Options")
        return {"RenderOptions local lights", "RenderOptions use back buffer"};
    return {};
}

std::set<std::string> keysOf(const lmMessage &store)
{
    const std::vector<std::string> keys = store.keys();
    return {keys.begin(), keys.end()};
}

QString join(const std::set<std::string> &keys)
{
    QStringList names;
    for (const std::string &key : keys)
        names << QString::fromStdString(key);
    return names.join(QStringLiteral(", "));
}

} // namespace

class tst_PageLifetime : public QObject
{
    Q_OBJECT

private:
    // Every category's defaults, each learnt from the category alone.
    std::vector<lmMessage> m_defaults;

private slots:
    void initTestCase()
    {
        // Either variable would keep the web interface's page out of the dialog.
        qunsetenv("LUMO_DISABLE_WEBINTERFACE");
        qunsetenv("ZEPH_LUMO_DISABLE_WEBINTERFACE");
        for (const lmCategoryRow &row : lmCategoryRows()) {
            lmResetHost();
            std::unique_ptr<QObject> category = row.make();
            lmMessage defaults;
            lmMessage *store = lmPreferencesHost::swapStore(&defaults);
            lmPreferencesHost::setDefaultAll(true);
            lmPreferencesHost::swapStore(store);
            m_defaults.push_back(defaults);
        }
    }

    void destroyedAloneTakesExactlyItsKeysAndWithdrawsItsPage_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < int(lmCategoryRows().size()); ++i)
            QTest::newRow(lmCategoryRows()[i].page) << i;
    }

    void destroyedAloneTakesExactlyItsKeysAndWithdrawsItsPage()
    {
        QFETCH(int, index);
        const lmCategoryRow &row = lmCategoryRows()[index];
        lmResetHost();
        lmMessage &store = lmPreferences::getData();
        // The store as every other category and the host leave it.
        for (const lmMessage &defaults : m_defaults)
            for (const std::string &key : defaults.keys())
                store.set(key, defaults.get(key), true);
        for (const std::string &key : removedUnwritten(row.page))
            store.set(key, boost::any(true), true);
        store.set("Host own key", boost::any(1), true);

        std::unique_ptr<QObject> category = row.make();
        lmPreferencesHost::setDefaultAll(false);
        const std::vector<lmPreferencesHost::Page> pages = lmPreferencesHost::pages();
        QPointer<QWidget> page = pages.empty() ? nullptr : pages.front().widget;
        QVERIFY(page);
        bool withdrawnWhileAlive = false;
        const int listener = lmPreferencesHost::addPagesListener([&] {
            if (page && !lmPreferencesHost::hasPage(page))
                withdrawnWhileAlive = true;
        });
        const std::set<std::string> before = keysOf(store);
        category.reset();
        lmPreferencesHost::removePagesListener(listener);

        const std::set<std::string> after = keysOf(store);
        std::set<std::string> removed, expected = removedUnwritten(row.page);
        for (const std::string &key : before)
            if (!after.count(key))
                removed.insert(key);
        for (const std::string &key : m_defaults[index].keys())
            expected.insert(key);
        QVERIFY2(removed == expected, qPrintable(QStringLiteral("removed %1\nexpected %2").arg(join(removed), join(expected))));
        QVERIFY2(withdrawnWhileAlive, "the page was not withdrawn before it was deleted");
        QVERIFY(!page);
        QVERIFY(lmPreferencesHost::pages().empty());
        QVERIFY(lmPreferencesHost::categories().empty());
    }
};

QTEST_MAIN(tst_PageLifetime)
#include "tst_pagelifetime.moc"

// Each category destroyed on its own, among the keys of all the others: it
// takes exactly its own keys (and the few it removes without writing them)
// out of the store and withdraws its page while the page still exists.
#include "categories/lmCameraPreferencesGUI.h"
#include "categories/lmDevicesPreferencesGUI.h"
#include "categories/lmHelpPreferencesGUI.h"
#include "categories/lmMainWindowPreferencesGUI.h"
#include "categories/lmMarkerPreferencesGUI.h"
#include "categories/lmNavigatorPreferencesGUI.h"
#include "categories/lmRenderOptionsPreferencesGUI.h"
#include "categories/lmVirtualRealityPreferencesGUI.h"
#include "categories/lmWebInterfacePreferencesGUI.h"
#include "fileio/lmCatiaV4FilePreferencesGUI.h"
#include "fileio/lmCatiaV5FilePreferencesGUI.h"
#include "fileio/lmDGNFilePreferencesGUI.h"
#include "fileio/lmDraftexFilePreferencesGUI.h"
#include "fileio/lmFabricorFilePreferencesGUI.h"
#include "fileio/lmFileIOPreferencesGUI.h"
#include "fileio/lmGenericCADFilePreferencesGUI.h"
#include "fileio/lmIgesFilePreferencesGUI.h"
#include "fileio/lmJtFilePreferencesGUI.h"
#include "fileio/lmKBXFilePreferencesGUI.h"
#include "fileio/lmKovaPreferencesGUI.h"
#include "fileio/lmNXFilePreferencesGUI.h"
#include "fileio/lmOsbPreferencesGUI.h"
#include "fileio/lmPLMXMLPreferencesGUI.h"
#include "fileio/lmProEngineerFilePreferencesGUI.h"
#include "fileio/lmRhinoFilePreferencesGUI.h"
#include "fileio/lmSolidEdgeFilePreferencesGUI.h"
#include "fileio/lmSolidWorksFilePreferencesGUI.h"
#include "fileio/lmStepFilePreferencesGUI.h"
#include "fileio/lmStlFilePreferencesGUI.h"
#include "fileio/lmTesselationPreferencesGUI.h"
#include "fileio/lmWireFilePreferencesGUI.h"
#include "fileio/lmWrlPreferencesGUI.h"
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

using Make = std::function<std::unique_ptr<QObject>()>;
template <class Category>
Make make()
{
    return [] { return std::unique_ptr<QObject>(new Category); };
}

struct Row
{
    const char *name;
    Make create;
    // Keys its destructor removes although the category never writes them.
    std::set<std::string> removedUnwritten;
};

const std::vector<Row> &rows()
{
    static const std::vector<Row> table = {
        {"Catia V4", make<lmCatiaV4FilePreferencesGUII>(), {}},
        {"Catia V5", make<lmCatiaV5FilePreferencesGUII>(), {}},
        {"Ondra", make<lmWireFilePreferencesGUII>(), {}},
        {"Iges", make<lmIgesFilePreferencesGUII>(), {}},
        {"NX", make<lmNXFilePreferencesGUII>(), {}},
        {"Step", make<lmStepFilePreferencesGUII>(), {}},
        {"Draftex", make<lmDraftexFilePreferencesGUII>(), {}},
        {"Fabricor", make<lmFabricorFilePreferencesGUII>(), {}},
        {"SolidWorks", make<lmSolidWorksFilePreferencesGUII>(), {}},
        {"SolidEdge", make<lmSolidEdgeFilePreferencesGUII>(), {}},
        {"STL", make<lmStlFilePreferencesGUII>(), {}},
        {"ProE / Creo", make<lmProEngineerFilePreferencesGUII>(), {}},
        {"JT", make<lmJtFilePreferencesGUII>(), {}},
        {"Rhino", make<lmRhinoFilePreferencesGUII>(), {}},
        {"Base CAD", make<lmGenericCADFilePreferencesGUII>(), {}},
        {"KBX", make<lmKBXFilePreferencesGUII>(), {}},
        {"DGN", make<lmDGNFilePreferencesGUII>(), {}},
        {"PLM XML", make<lmPLMXMLPreferencesGUII>(), {}},
        {"Camera", make<lmCameraPreferencesGUII>(), {}},
        {"Devices", make<lmDevicesPreferencesGUII>(), {}},
        {"FileIO", make<lmFileIOPreferencesGUII>(), {"FileIO create uber materials"}},
        {"MainWindow", make<lmMainWindowPreferencesGUII>(), {}},
        {"Selection", make<lmMarkerPreferencesGUII>(), {}},
        {"Kova", make<lmKovaPreferencesGUII>(), {"KovaFileIO kova bin path"}},
        {"Navigator", make<lmNavigatorPreferencesGUII>(), {}},
        {"OSB / VPB", make<lmOsbPreferencesGUII>(), {}},
        {"Render Options", make<lmRenderOptionsPreferencesGUII>(),
         {"RenderOptions local lights", "RenderOptions use back buffer"}},
        {"Tesselation", make<lmTesselationPreferencesGUII>(), {}},
        {"WebInterface", make<lmWebInterfacePreferencesGUII>(), {}},
        {"WRL", make<lmWrlPreferencesGUII>(), {}},
        {"Help", make<lmHelpPreferencesGUII>(), {}},
        {"Virtual Reality", make<lmVirtualRealityPreferencesGUII>(), {}},
    };
    return table;
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
        for (const Row &row : rows()) {
            lmResetHost();
            std::unique_ptr<QObject> category = row.create();
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
        for (int i = 0; i < int(rows().size()); ++i)
            QTest::newRow(rows()[i].name) << i;
    }

    void destroyedAloneTakesExactlyItsKeysAndWithdrawsItsPage()
    {
        QFETCH(int, index);
        const Row &row = rows()[index];
        lmResetHost();
        lmMessage &store = lmPreferences::getData();
        // The store as every other category and the host leave it.
        for (const lmMessage &defaults : m_defaults)
            for (const std::string &key : defaults.keys())
                store.set(key, defaults.get(key), true);
        for (const std::string &key : row.removedUnwritten)
            store.set(key, boost::any(true), true);
        store.set("Host own key", boost::any(1), true);

        std::unique_ptr<QObject> category = row.create();
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
        std::set<std::string> removed, expected = row.removedUnwritten;
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

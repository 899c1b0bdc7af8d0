// The plug-in module as the host sees it: one exported entry point that
// creates every category once, and an unload that leaves no key behind.
#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QLibrary>
#include <QProcess>
#include <QtTest>

namespace {

struct Row
{
    const char *group;
    const char *page;
};

// The dialog pages in creation order.
const std::vector<Row> kPages = {
    {"FileIO", "Catia V4"},
    {"FileIO", "Catia V5"},
    {"FileIO", "Ondra"},
    {"FileIO", "Iges"},
    {"FileIO", "NX"},
    {"FileIO", "Step"},
    {"FileIO", "Draftex"},
    {"FileIO", "Fabricor"},
    {"FileIO", "SolidWorks"},
    {"FileIO", "SolidEdge"},
    {"FileIO", "STL"},
    {"FileIO", "ProE / Creo"},
    {"FileIO", "JT"},
    {"FileIO", "Rhino"},
    {"FileIO", "Base CAD"},
    {"FileIO", "KBX"},
    {"FileIO", "DGN"},
    {"FileIO", "PLM XML"},
    {"Camera", ""},
    {"Devices", "Devices"},
    {"FileIO", "FileIO"},
    {"MainWindow", ""},
    {"Selection", ""},
    {"FileIO", "Kova"},
    {"Navigator", ""},
    {"FileIO", "OSB / VPB"},
    {"Render Options", ""},
    {"Import", "Tesselation"},
    {"WebInterface", ""},
    {"FileIO", "WRL"},
    {"Help", ""},
    {"Virtual Reality", ""},
};

QStringList pagePaths()
{
    QStringList paths;
    for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages())
        paths << (page.page.isEmpty() ? page.group : page.group + '/' + page.page);
    return paths;
}

QStringList expectedPaths(const std::function<bool(const Row &)> &keep)
{
    QStringList paths;
    for (const Row &row : kPages)
        if (keep(row))
            paths << (*row.page ? QStringLiteral("%1/%2").arg(row.group, row.page) : QString(row.group));
    return paths;
}

} // namespace

class tst_Module : public QObject
{
    Q_OBJECT

private:
    using Entry = void (*)();

    Entry load(QLibrary &library)
    {
        library.setFileName(QStringLiteral(LM_PLUGIN_PATH));
        if (!library.load())
            return nullptr;
        return reinterpret_cast<Entry>(library.resolve("initPreferencesPlugin"));
    }

private slots:
    // Applying the file I/O page writes the application's Qt settings.
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init() { lmResetHost(); }

    void exportsOnlyTheEntryPoint()
    {
        QProcess nm;
        nm.start(QStringLiteral("nm"), {"-D", "--defined-only", "--format=just-symbols", LM_PLUGIN_PATH});
        QVERIFY(nm.waitForFinished(-1));
        QCOMPARE(nm.exitCode(), 0);
        const QStringList symbols = QString::fromLatin1(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        QCOMPARE(symbols, QStringList({"initPreferencesPlugin"}));
    }

    void createsEachRowOnceAndRemovesEveryKeyOnUnload()
    {
        QLibrary library;
        Entry initPreferencesPlugin = load(library);
        QVERIFY2(initPreferencesPlugin, qPrintable(library.errorString()));

        initPreferencesPlugin();
        const std::size_t categories = lmPreferencesHost::categories().size();
        QCOMPARE(pagePaths(), expectedPaths([](const Row &) { return true; }));
        lmPreferencesHost::setDefaultAll(false);
        lmPreferencesHost::applyAll();
        lmPreferencesHost::updateGUIAll();
        const std::size_t keys = lmPreferences::getData().size();
        QVERIFY(keys > 0);

        initPreferencesPlugin();
        QCOMPARE(lmPreferencesHost::categories().size(), categories);
        QCOMPARE(pagePaths(), expectedPaths([](const Row &) { return true; }));
        QCOMPARE(lmPreferences::getData().size(), keys);

        // A key of the host's own survives the unload.
        lmPreferences::getData().set("Host own key", boost::any(1), true);
        QVERIFY(library.unload());
        QVERIFY(lmPreferencesHost::categories().empty());
        QVERIFY(lmPreferencesHost::pages().empty());
        QCOMPARE(lmPreferences::getData().keys(), std::vector<std::string>{"Host own key"});
    }

    void restrictedEditionHidesItsPages()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        QLibrary library;
        Entry initPreferencesPlugin = load(library);
        QVERIFY2(initPreferencesPlugin, qPrintable(library.errorString()));
        initPreferencesPlugin();
        const QStringList hidden = {"Camera", "Import/Tesselation", "WebInterface"};
        QCOMPARE(pagePaths(), expectedPaths([&hidden](const Row &row) {
                     const QString path = *row.page ? QStringLiteral("%1/%2").arg(row.group, row.page) : QString(row.group);
                     return !hidden.contains(path);
                 }));
        lmPreferencesHost::setDefaultAll(false);
        // The camera keys exist although its page is not shown.
        QVERIFY(lmPreferences::getData().contains("Camera fov"));
        QVERIFY(!lmPreferences::getData().contains("Optimizer Teselation Quality"));

        // The skipped row was never built, so a later call in another edition builds it.
        const std::size_t categories = lmPreferencesHost::categories().size();
        lmHostSettings::setEdition(lmHostSettings::Professional);
        initPreferencesPlugin();
        QCOMPARE(lmPreferencesHost::categories().size(), categories + 1);
        QVERIFY(pagePaths().contains("Import/Tesselation"));
        QVERIFY(!pagePaths().contains("Camera"));
        QVERIFY(library.unload());
        QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
    }
};

QTEST_MAIN(tst_Module)
#include "tst_module.moc"

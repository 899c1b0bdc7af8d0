// The plug-in module as the host sees it: one exported entry point that
// creates every category once, and an unload that leaves no key behind.
#include "lmHostSettings.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QLibrary>
#include <QProcess>
#include <QtTest>

namespace {

// The dialog pages in creation order.
const QStringList kPages = {
    "FileIO/Catia V4", "FileIO/Catia V5", "FileIO/Ondra", "FileIO/Iges", "FileIO/NX", "FileIO/Step",
    "FileIO/Draftex", "FileIO/Fabricor", "FileIO/SolidWorks", "FileIO/SolidEdge", "FileIO/STL", "FileIO/ProE / Creo",
    "FileIO/JT", "FileIO/Rhino", "FileIO/Base CAD", "FileIO/KBX", "FileIO/DGN", "FileIO/PLM XML", "Camera",
    "Devices/Devices", "FileIO/FileIO", "MainWindow", "Selection", "FileIO/Kova", "Navigator", "FileIO/OSB / VPB",
    "Render Options", "Import/Tesselation", "WebInterface", "FileIO/WRL", "Help", "Virtual Reality",
};

QStringList pagePaths()
{
    QStringList paths;
    for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages())
        paths << page.path();
    return paths;
}

QStringList pagesWithout(const QStringList &hidden)
{
    QStringList pages = kPages;
    for (const QString &page : hidden)
        pages.removeOne(page);
    return pages;
}

} // namespace

class tst_Module : public QObject
{
    Q_OBJECT

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
        QCOMPARE(QString::fromLatin1(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts),
                 QStringList({"initPreferencesPlugin"}));
    }

    // A second call creates nothing; a key of the host's own survives the unload.
    void createsEachRowOnceAndRemovesEveryKeyOnUnload()
    {
        QLibrary library;
        QVERIFY2(lmRunPluginEntry(library, QStringLiteral(LM_PLUGIN_PATH)), qPrintable(library.errorString()));
        const std::size_t categories = lmPreferencesHost::categories().size();
        QCOMPARE(pagePaths(), kPages);
        lmPreferencesHost::setDefaultAll(false);
        lmPreferencesHost::applyAll();
        lmPreferencesHost::updateGUIAll();
        const std::size_t keys = lmPreferences::getData().size();
        QVERIFY(keys > 0);
        reinterpret_cast<void (*)()>(library.resolve("initPreferencesPlugin"))();
        QCOMPARE(lmPreferencesHost::categories().size(), categories);
        QCOMPARE(pagePaths(), kPages);
        QCOMPARE(lmPreferences::getData().size(), keys);
        lmPreferences::getData().set("Host own key", boost::any(1), true);
        QVERIFY(library.unload());
        QVERIFY(lmPreferencesHost::categories().empty() && lmPreferencesHost::pages().empty());
        QCOMPARE(lmPreferences::getData().keys(), std::vector<std::string>{"Host own key"});
    }

    void restrictedEditionHidesItsPages()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        QLibrary library;
        QVERIFY2(lmRunPluginEntry(library, QStringLiteral(LM_PLUGIN_PATH)), qPrintable(library.errorString()));
        QCOMPARE(pagePaths(), pagesWithout({"Camera", "Import/Tesselation", "WebInterface"}));
        lmPreferencesHost::setDefaultAll(false);
        // The camera keys exist although its page is not shown.
        QVERIFY(lmPreferences::getData().contains("Camera fov"));
        QVERIFY(!lmPreferences::getData().contains("Optimizer Teselation Quality"));
        // The skipped row was never built, so a later call in another edition builds it.
        const std::size_t categories = lmPreferencesHost::categories().size();
        lmHostSettings::setEdition(lmHostSettings::Professional);
        reinterpret_cast<void (*)()>(library.resolve("initPreferencesPlugin"))();
        QCOMPARE(lmPreferencesHost::categories().size(), categories + 1);
        QVERIFY(pagePaths().contains("Import/Tesselation") && !pagePaths().contains("Camera"));
        QVERIFY(library.unload());
        QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
    }
};

QTEST_MAIN(tst_Module)
#include "tst_module.moc"

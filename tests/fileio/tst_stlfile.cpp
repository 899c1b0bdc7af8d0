// The STL page: the export format kept in the store (also by apply) and the
// source-reference behaviour pinned to 1.
#include "fileio/lmStlFilePreferencesGUI.h"
#include "lmFileTypeTestSupport.h"
#include "lmHostSettings.h"
#include "lmTestSupport.h"

namespace {

const char *const kExport = "STLOptions export";
const char *const kSourceReference = "STLOptions import source reference behavior";

void start(lmStlFilePreferencesGUII &stl)
{
    stl.setDefault(lmPreferences::getData(), false);
    stl.apply();
    stl.updateGUI();
    lmCallLog::clear();
}

} // namespace

class tst_StlFile : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void freshStoreExportsText()
    {
        lmStlFilePreferencesGUII stl;
        start(stl);
        QCOMPARE(stl.page()->m_stlExportFormat->currentText(), QStringLiteral("Ascii"));
        QCOMPARE(stored(kExport, -1), 0);
        QCOMPARE(stored(kSourceReference, -1), 1);
    }

    void sourceReferenceStaysPinned()
    {
        lmMessage &store = lmPreferences::getData();
        store.set(kExport, boost::any(1), true);
        store.set(kSourceReference, boost::any(4), true);
        lmStlFilePreferencesGUII stl;
        stl.setDefault(store, false);
        QCOMPARE(stored(kExport, -1), 1);
        QCOMPARE(stored(kSourceReference, -1), 1);

        stl.updateGUI();
        QCOMPARE(stl.page()->m_stlExportFormat->currentText(), QStringLiteral("Binary"));
        store.set(kSourceReference, boost::any(0), true);
        stl.storeGUI();
        QCOMPARE(stored(kSourceReference, -1), 1);
        store.set(kSourceReference, boost::any(3), true);
        stl.apply();
        QCOMPARE(stored(kSourceReference, -1), 1);
    }

    void applyStoresThePagesChoice()
    {
        lmStlFilePreferencesGUII stl;
        start(stl);
        const QStringList before = storeDump();
        stl.page()->m_stlExportFormat->setCurrentIndex(1);
        // Hidden common controls never reach the store.
        stl.page()->m_tesselationSettings->setChordDeviation(1.5);
        stl.page()->_cbImportCurves->setCurrentIndex(2);
        stl.apply();
        QCOMPARE(stored(kExport, -1), 1);
        QStringList expected = before;
        expected.replaceInStrings("STLOptions export = int 0", "STLOptions export = int 1");
        QCOMPARE(storeDump(), expected);
        QCOMPARE(lmCallLog::lines(), QStringList{recordLine("STL")});
    }

    void wrongTypedExportLeavesTheCombo()
    {
        lmStlFilePreferencesGUII stl;
        start(stl);
        stl.page()->m_stlExportFormat->setCurrentIndex(1);
        lmPreferences::getData().set(kExport, boost::any(0.0), true);
        lmStderrCapture capture;
        stl.updateGUI();
        QVERIFY(capture.text().contains("'STLOptions export' has wrong type"));
        QCOMPARE(stl.page()->m_stlExportFormat->currentIndex(), 1);
    }
};

QTEST_MAIN(tst_StlFile)
#include "tst_stlfile.moc"

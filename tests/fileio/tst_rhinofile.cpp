// The Rhino page: the legacy loader switch, its two options, the enabling
// rule, and the second "Rhino" record written after the common one.
#include "fileio/lmRhinoFilePreferencesGUI.h"
#include "lmFileTypeTestSupport.h"
#include "lmHostSettings.h"
#include "lmTestSupport.h"

namespace {

void start(lmRhinoFilePreferencesGUII &rhino)
{
    rhino.setDefault(lmPreferences::getData(), false);
    rhino.apply();
    rhino.updateGUI();
    lmCallLog::clear();
}

} // namespace

class tst_RhinoFile : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void legacyRecordFollowsTheCommonOne()
    {
        lmRhinoFilePreferencesGUII rhino;
        start(rhino);
        lmFileTypePreferencesGUIW *p = rhino.page();
        p->m_useLegacyRhinoLoader->setChecked(true);
        p->m_rhinoMergeGeometries->setChecked(false);
        p->m_rhinoImportNurbs->setChecked(false);
        rhino.storeGUI();
        rhino.apply();
        // The merge key is shared with the common options.
        QCOMPARE(lmCallLog::lines(),
                 QStringList({recordLine("Rhino", {{"mergeGeometries", "false"}}),
                              "lmFileIO::setUseLegacyRhinoLoader(true)",
                              recordLine("Rhino", {{"mergeGeometries", "false"},
                                                   {"useLegacyRhinoLoader", "true"},
                                                   {"importNurbs", "false"}})}));
        lmImportOptions record("", false, false);
        QVERIFY(lmImportOptions::lastWritten("Rhino", record));
        QVERIFY(record.m_useLegacyRhinoLoader);
        QVERIFY(!record.m_importNurbs);
    }

    void legacyOptionsAreEnabledOnlyWithTheLegacyLoader()
    {
        lmRhinoFilePreferencesGUII rhino;
        start(rhino);
        lmFileTypePreferencesGUIW *p = rhino.page();
        QVERIFY(!p->m_rhinoMergeGeometries->isEnabled());
        QVERIFY(!p->m_rhinoImportNurbs->isEnabled());
        QVERIFY(p->_advanced_settings->isEnabled());
        QVERIFY(!shown(p, p->_file_specific_options));

        const QStringList before = storeDump();
        p->m_useLegacyRhinoLoader->setChecked(true);
        QVERIFY(p->m_rhinoMergeGeometries->isEnabled());
        QVERIFY(p->m_rhinoImportNurbs->isEnabled());
        QVERIFY(!p->_advanced_settings->isEnabled());
        QVERIFY(!shown(p, p->_file_specific_options));
        // Toggling alone writes nothing.
        QCOMPARE(storeDump(), before);

        lmPreferences::getData().set("RhinoOptions USEPLUGIN", boost::any(false), true);
        rhino.updateGUI();
        QVERIFY(!p->m_rhinoImportNurbs->isEnabled());
        QVERIFY(p->_advanced_settings->isEnabled());
    }

    void disabledLegacyOptionsAreStillWritten()
    {
        lmRhinoFilePreferencesGUII rhino;
        start(rhino);
        lmPreferences::getData().set("RhinoOptions import nurbs", boost::any(false), true);
        lmPreferences::getData().remove("RhinoOptions USEPLUGIN");
        rhino.updateGUI();
        QVERIFY(!rhino.page()->m_useLegacyRhinoLoader->isChecked());
        QVERIFY(!rhino.page()->m_rhinoImportNurbs->isChecked());
        rhino.apply();
        QCOMPARE(lmCallLog::lines(), QStringList({recordLine("Rhino"), "lmFileIO::setUseLegacyRhinoLoader(false)",
                                                  recordLine("Rhino", {{"importNurbs", "false"}})}));
    }

    void mergeSwitchOfTheEnabledPageWins()
    {
        lmRhinoFilePreferencesGUII rhino;
        start(rhino);
        lmFileTypePreferencesGUIW *p = rhino.page();
        // Regular reader: the common switch decides, the disabled legacy box is stale.
        p->m_tesselationSettings->mergeGeometries()->setChecked(false);
        rhino.storeGUI();
        QCOMPARE(stored("RhinoOptions merge geometries", true), false);
        rhino.updateGUI();
        QVERIFY(!p->m_rhinoMergeGeometries->isChecked());

        // Legacy loader: its own box decides.
        p->m_useLegacyRhinoLoader->setChecked(true);
        p->m_rhinoMergeGeometries->setChecked(true);
        rhino.storeGUI();
        QCOMPARE(stored("RhinoOptions merge geometries", false), true);
    }
};

QTEST_MAIN(tst_RhinoFile)
#include "tst_rhinofile.moc"

// The format pages with options of their own: the KBX option string, the
// Rhino legacy loader and its second record, the JT legacy loader and its
// edition rule, and the STL export format with its pinned key.
#include "fileio/lmJtFilePreferencesGUI.h"
#include "fileio/lmKBXFilePreferencesGUI.h"
#include "fileio/lmRhinoFilePreferencesGUI.h"
#include "fileio/lmStlFilePreferencesGUI.h"
#include "lmFileTypeTestSupport.h"
#include "lmHostSettings.h"
#include "lmTestSupport.h"
#include "OpenSG/OSGSceneFileHandler.h"

namespace {

QString kbxLine(const QString &options)
{
    return QStringLiteral("osg::SceneFileHandler::setOptions(\"kbx\", \"%1\")").arg(options);
}

} // namespace

class tst_CadFormatOptions : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void kbxOptionString_data()
    {
        QTest::addColumn<int>("version");
        QTest::addColumn<int>("format");
        QTest::addColumn<bool>("colors");
        QTest::addColumn<QString>("options");
        const QString binary = ",kbx_format=binary,kbx_export_vertex_colors=false";
        QTest::newRow("defaults") << 0 << 0 << false << "kbx_version=KBX2016" + binary;
        for (int version : {2011, 2012, 2013, 2014, 2016})
            QTest::addRow("%d", version) << version << 0 << false
                                         << QStringLiteral("kbx_version=KBX%1").arg(version) + binary;
        QTest::newRow("2015 has no name") << 2015 << 0 << false << "kbx_version=" + binary;
        QTest::newRow("unknown version") << 1999 << 0 << false << "kbx_version=" + binary;
        QTest::newRow("format 1") << 0 << 1 << true
                                  << "kbx_version=KBX2016,kbx_format=ascii,kbx_export_vertex_colors=true";
        QTest::newRow("format 2") << 2012 << 2 << false
                                  << "kbx_version=KBX2012,kbx_format=ascii,kbx_export_vertex_colors=false";
    }

    void kbxOptionString()
    {
        QFETCH(int, version);
        QFETCH(int, format);
        QFETCH(bool, colors);
        QFETCH(QString, options);
        lmKBXFilePreferencesGUII kbx;
        startPage(kbx);
        setStored("KbxOptions version", version);
        setStored("KbxOptions format", format);
        setStored("KbxOptions export vertex colors", colors);
        kbx.apply();
        QCOMPARE(lmCallLog::lines(), QStringList({recordLine("KBX"), kbxLine(options)}));
        QCOMPARE(QString(osg::SceneFileHandler::the().getOptions("kbx")), options);
    }

    void kbxPageEditsReachTheLoader()
    {
        lmKBXFilePreferencesGUII kbx;
        startPage(kbx);
        QComboBox *versions = kbx.page()->_export_version;
        versions->setCurrentIndex(1); // "KBX 2014/2015"
        kbx.page()->_export_format->setCurrentIndex(1);
        kbx.page()->_export_vertex_colors->setChecked(true);
        kbx.storeGUI();
        QCOMPARE(stored("KbxOptions version", -1), 2014);
        kbx.apply();
        QCOMPARE(lmCallLog::lines().last(),
                 kbxLine("kbx_version=KBX2014,kbx_format=ascii,kbx_export_vertex_colors=true"));

        setStored("KbxOptions version", 2012);
        kbx.updateGUI();
        QCOMPARE(versions->currentText(), QStringLiteral("KBX 2012"));
        // No item stores 2015: the combo is left without a selection.
        setStored("KbxOptions version", 2015);
        kbx.updateGUI();
        QCOMPARE(versions->currentIndex(), -1);
    }

    void rhinoWritesTheCommonRecordThenItsOwn()
    {
        lmRhinoFilePreferencesGUII rhino;
        startPage(rhino);
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

        // With the regular reader the legacy options stay stored and written.
        setStored("RhinoOptions USEPLUGIN", false);
        QCOMPARE(applyLog(rhino).last(), recordLine("Rhino", {{"mergeGeometries", "false"}, {"importNurbs", "false"}}));
    }

    void rhinoLegacyOptionsFollowTheLegacySwitch()
    {
        lmRhinoFilePreferencesGUII rhino;
        startPage(rhino);
        lmFileTypePreferencesGUIW *p = rhino.page();
        auto state = [p] {
            return QList<bool>{p->m_rhinoMergeGeometries->isEnabled(), p->m_rhinoImportNurbs->isEnabled(),
                               p->_advanced_settings->isEnabled(), shown(p, p->_file_specific_options)};
        };
        QCOMPARE(state(), QList<bool>({false, false, true, false}));
        const QStringList before = storeDump();
        p->m_useLegacyRhinoLoader->setChecked(true);
        QCOMPARE(state(), QList<bool>({true, true, false, false}));
        QCOMPARE(storeDump(), before); // toggling alone writes nothing

        setStored("RhinoOptions USEPLUGIN", false);
        rhino.updateGUI();
        QCOMPARE(state(), QList<bool>({false, false, true, false}));

        // The merge key is shared with the common switch; the legacy boxes are
        // stored last, also while disabled, so their choices stay stored.
        p->m_tesselationSettings->mergeGeometries()->setChecked(false);
        p->m_rhinoImportNurbs->setChecked(false);
        rhino.storeGUI();
        QCOMPARE(stored("RhinoOptions merge geometries", false), true);
        QCOMPARE(stored("RhinoOptions import nurbs", true), false);
        p->m_rhinoMergeGeometries->setChecked(false);
        p->m_tesselationSettings->mergeGeometries()->setChecked(true);
        rhino.storeGUI();
        QCOMPARE(stored("RhinoOptions merge geometries", true), false);
    }

    void jtLegacySettingsReachTheRecordAndTheLoaderSwitch()
    {
        lmJtFilePreferencesGUII jt;
        startPage(jt);
        lmFileTypePreferencesGUIW *p = jt.page();
        const QList<QWidget *> legacy = {p->m_legacyJtActiveLayerfilter, p->_brepsLabel, p->m_legacyJtbreps};
        for (QWidget *widget : legacy)
            QVERIFY(!widget->isEnabled());
        QTest::mouseClick(p->_useLegacyJtLoader, Qt::LeftButton, {}, QPoint(4, p->_useLegacyJtLoader->height() / 2));
        for (QWidget *widget : legacy)
            QVERIFY(widget->isEnabled());

        p->m_legacyJtActiveLayerfilter->setChecked(false);
        p->m_legacyJtbreps->setCurrentIndex(2);
        p->m_jtToolkit->setCurrentIndex(1);
        jt.storeGUI();
        jt.apply();
        QCOMPARE(lmCallLog::lines(),
                 QStringList({recordLine("JT", {{"jtToolkit", "1"}}),
                              recordLine("JT", {{"jtToolkit", "1"}, {"jtUsePlugin", "true"},
                                                {"jtActiveLayerFilter", "false"}, {"jtLoadBreps", "2"}}),
                              "lmFileIO::setUseLegacyJtLoader(true)"}));

        // Disabled again by a loaded store, yet still written.
        setStored("JTOptions USEPLUGIN", false);
        jt.updateGUI();
        for (QWidget *widget : legacy)
            QVERIFY(!widget->isEnabled());
        QCOMPARE(applyLog(jt).at(1),
                 recordLine("JT", {{"jtToolkit", "1"}, {"jtActiveLayerFilter", "false"}, {"jtLoadBreps", "2"}}));
    }

    void jtBrepComboOnlyInTheProfessionalEdition_data()
    {
        QTest::addColumn<int>("edition");
        QTest::newRow("professional") << int(lmHostSettings::Professional);
        QTest::newRow("design") << int(lmHostSettings::Design);
        QTest::newRow("essentials") << int(lmHostSettings::Essentials);
    }

    void jtBrepComboOnlyInTheProfessionalEdition()
    {
        QFETCH(int, edition);
        lmHostSettings::setEdition(lmHostSettings::Edition(edition));
        lmJtFilePreferencesGUII jt;
        startPage(jt);
        lmFileTypePreferencesGUIW *p = jt.page();
        const bool professional = edition == lmHostSettings::Professional;
        QCOMPARE(shown(p, p->m_legacyJtbreps), professional);
        QCOMPARE(shown(p, p->_brepsLabel), professional);
        QVERIFY(shown(p, p->m_legacyJtActiveLayerfilter));
        // The stored B-rep handling is applied in every edition.
        setStored("JTOptions LOADBREPS", 3);
        jt.apply();
        QCOMPARE(lmCallLog::lines().at(1), recordLine("JT", {{"jtLoadBreps", "3"}}));
    }

    void stlKeepsTheExportFormatAndPinsSourceReferences()
    {
        setStored("STLOptions export", 1);
        setStored("STLOptions import source reference behavior", 4);
        lmStlFilePreferencesGUII stl;
        stl.setDefault(lmPreferences::getData(), false);
        QCOMPARE(stored("STLOptions export", -1), 1);
        QCOMPARE(stored("STLOptions import source reference behavior", -1), 1);
        stl.updateGUI();
        QCOMPARE(stl.page()->m_stlExportFormat->currentText(), QStringLiteral("Binary"));

        setStored("STLOptions import source reference behavior", 0);
        stl.storeGUI();
        QCOMPARE(stored("STLOptions import source reference behavior", -1), 1);

        // Apply stores the page's choice; hidden common controls never reach the store.
        setStored("STLOptions import source reference behavior", 3);
        stl.page()->m_stlExportFormat->setCurrentIndex(0);
        stl.page()->m_tesselationSettings->setChordDeviation(1.5);
        stl.page()->_cbImportCurves->setCurrentIndex(2);
        QStringList expected = storeDump();
        expected.replaceInStrings("STLOptions export = int 1", "STLOptions export = int 0");
        expected.replaceInStrings("reference behavior = int 3", "reference behavior = int 1");
        lmCallLog::clear();
        stl.apply();
        QCOMPARE(storeDump(), expected);
        QCOMPARE(lmCallLog::lines(), QStringList{recordLine("STL")});

        // A wrong-typed key leaves the combo as it was.
        setStored("STLOptions export", 0.0);
        stl.page()->m_stlExportFormat->setCurrentIndex(1);
        lmStderrCapture capture;
        stl.updateGUI();
        QCOMPARE(wrongTypeReports(capture.text()), QStringList("STLOptions export x1"));
        QCOMPARE(stl.page()->m_stlExportFormat->currentIndex(), 1);
    }
};

QTEST_MAIN(tst_CadFormatOptions)
#include "tst_cadformatoptions.moc"

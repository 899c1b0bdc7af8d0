// The JT page: the legacy loader switch and its options in the "JT" record,
// the loader choice pushed to the host, and the edition rule of the B-rep combo.
#include "fileio/lmJtFilePreferencesGUI.h"
#include "lmFileTypeTestSupport.h"
#include "lmHostSettings.h"
#include "lmTestSupport.h"

namespace {

void start(lmJtFilePreferencesGUII &jt)
{
    jt.setDefault(lmPreferences::getData(), false);
    jt.apply();
    jt.updateGUI();
    lmCallLog::clear();
}

} // namespace

class tst_JtFile : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void legacySettingsReachTheRecordAndTheLoaderSwitch()
    {
        lmJtFilePreferencesGUII jt;
        start(jt);
        lmFileTypePreferencesGUIW *p = jt.page();
        p->_useLegacyJtLoader->setChecked(true);
        p->m_legacyJtActiveLayerfilter->setChecked(false);
        p->m_legacyJtbreps->setCurrentIndex(2);
        p->m_meshLODs->setCurrentIndex(0);
        p->m_jtToolkit->setCurrentIndex(1);
        jt.storeGUI();
        jt.apply();
        const QMap<QString, QString> common = {{"importMeshLODs", "0"}, {"jtToolkit", "1"}};
        QMap<QString, QString> legacy = common;
        legacy.insert("jtUsePlugin", "true");
        legacy.insert("jtActiveLayerFilter", "false");
        legacy.insert("jtLoadBreps", "2");
        QCOMPARE(lmCallLog::lines(), QStringList({recordLine("JT", common), recordLine("JT", legacy),
                                                  "lmFileIO::setUseLegacyJtLoader(true)"}));
    }

    void toggleEnablesTheLegacyWidgets()
    {
        lmJtFilePreferencesGUII jt;
        start(jt);
        lmFileTypePreferencesGUIW *p = jt.page();
        const QList<QWidget *> legacy = {p->m_legacyJtActiveLayerfilter, p->_brepsLabel, p->m_legacyJtbreps};
        for (QWidget *widget : legacy)
            QVERIFY(!widget->isEnabled());
        QTest::mouseClick(p->_useLegacyJtLoader, Qt::LeftButton, {}, QPoint(4, p->_useLegacyJtLoader->height() / 2));
        QVERIFY(p->_useLegacyJtLoader->isChecked());
        for (QWidget *widget : legacy)
            QVERIFY(widget->isEnabled());

        lmPreferences::getData().set("JTOptions USEPLUGIN", boost::any(false), true);
        jt.updateGUI();
        for (QWidget *widget : legacy)
            QVERIFY(!widget->isEnabled());
        // Disabled, yet stored and written.
        lmPreferences::getData().set("JTOptions ACTIVELAYERFILTER", boost::any(false), true);
        jt.apply();
        QCOMPARE(lmCallLog::lines().at(1), recordLine("JT", {{"jtActiveLayerFilter", "false"}}));
    }

    void brepCombo_data()
    {
        QTest::addColumn<int>("edition");
        QTest::addColumn<bool>("shown");
        QTest::newRow("professional") << int(lmHostSettings::Professional) << true;
        QTest::newRow("design") << int(lmHostSettings::Design) << false;
        QTest::newRow("essentials") << int(lmHostSettings::Essentials) << false;
        QTest::newRow("restricted") << int(lmHostSettings::Restricted) << false;
    }
    void brepCombo()
    {
        QFETCH(int, edition);
        QFETCH(bool, shown);
        lmHostSettings::setEdition(lmHostSettings::Edition(edition));
        lmJtFilePreferencesGUII jt;
        start(jt);
        lmFileTypePreferencesGUIW *p = jt.page();
        QCOMPARE(::shown(p, p->m_legacyJtbreps), shown);
        QCOMPARE(::shown(p, p->_brepsLabel), shown);
        QVERIFY(::shown(p, p->m_legacyJtActiveLayerfilter));

        // The stored B-rep handling is applied in every edition.
        lmPreferences::getData().set("JTOptions LOADBREPS", boost::any(3), true);
        jt.apply();
        const QString keepSurfaceData = edition == lmHostSettings::Restricted ? "false" : "true";
        QCOMPARE(lmCallLog::lines().at(1),
                 recordLine("JT", {{"jtLoadBreps", "3"}, {"keepSurfaceData", keepSurfaceData}}));
    }

    void wrongTypedKeysFallBack()
    {
        lmJtFilePreferencesGUII jt;
        start(jt);
        jt.page()->m_legacyJtbreps->setCurrentIndex(1);
        lmPreferences::getData().set("JTOptions LOADBREPS", boost::any(true), true);
        lmPreferences::getData().set("JTOptions USEPLUGIN", boost::any(1), true);
        lmStderrCapture capture;
        jt.updateGUI();
        jt.apply();
        QCOMPARE(capture.text().count("'JTOptions LOADBREPS' has wrong type"), 2);
        QCOMPARE(jt.page()->m_legacyJtbreps->currentIndex(), 1);
        QCOMPARE(lmCallLog::lines(), QStringList({recordLine("JT"), recordLine("JT"),
                                                  "lmFileIO::setUseLegacyJtLoader(false)"}));
    }
};

QTEST_MAIN(tst_JtFile)
#include "tst_jtfile.moc"

// The Kova page: edition defaults, the "kb" option string with its fixed
// items, unit names stored in lower case, and the location chooser.
#include "fileio/lmKovaPreferencesGUI.h"
#include "lmPageTestSupport.h"
#include "lmHostSettings.h"
#include "lmTestSupport.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

QString kbLine(const QString &options)
{
    return QStringLiteral("osg::SceneFileHandler::setOptions(\"kb\", \"%1\")").arg(options);
}

const char *const kDefaultOptions = "multitextureEnvCombiner=false,forceGrayscaleShadowTexture=true,"
                                    "autoLoadShadowGeometry=true,shadowGeometry=false,shadowMerge=true,"
                                    "useLocalMaterialLibrary=true,units=millimeter,importunits=millimeter";

} // namespace

class tst_Kova : public QObject
{
    Q_OBJECT

private:
    void start(lmKovaPreferencesGUII &kova)
    {
        kova.setDefault(lmPreferences::getData(), false);
        kova.updateGUI();
        lmCallLog::clear();
    }

    QString applied(lmKovaPreferencesGUII &kova)
    {
        lmCallLog::clear();
        kova.apply();
        return lmCallLog::lines().join('\n');
    }

private slots:
    // The file dialog remembers its last folder in the Qt settings.
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init() { lmResetHost(); }

    void defaultsGiveTheReferenceString()
    {
        lmKovaPreferencesGUII kova;
        kova.setDefault(lmPreferences::getData(), true);
        QCOMPARE(applied(kova), kbLine(kDefaultOptions));
    }

    void essentialsDefaults()
    {
        lmHostSettings::setEdition(lmHostSettings::Essentials);
        lmKovaPreferencesGUII kova;
        kova.setDefault(lmPreferences::getData(), true);
        QVERIFY(holds("KovaFileIO force grayscale shadow texture", false));
        QVERIFY(holds("KovaFileIO local material library", false));
        QCOMPARE(applied(kova),
                 kbLine("multitextureEnvCombiner=false,forceGrayscaleShadowTexture=false,autoLoadShadowGeometry=true,"
                        "shadowGeometry=false,shadowMerge=true,useLocalMaterialLibrary=false,units=millimeter,"
                        "importunits=millimeter"));
    }

    void pageChoicesReachTheStringOnlyWhereTheReaderTakesThem()
    {
        lmKovaPreferencesGUII kova;
        start(kova);
        lmKovaPreferencesGUIW *page = kova.page();
        // The reader's env-combiner and shadow switches are fixed.
        page->_env_combiner->setChecked(true);
        page->_autoload_shadow_geometry->setChecked(false);
        page->_shadow_geometry->setChecked(true);
        page->_shadow_merge->setChecked(false);
        kova.storeGUI();
        QVERIFY(holds("KovaFileIO multitexture env combiner", true));
        QVERIFY(holds("KovaFileIO autoload shadow geometry", false));
        QVERIFY(holds("KovaFileIO shadow geometry", true));
        QVERIFY(holds("KovaFileIO shadow merge", false));
        QCOMPARE(applied(kova), kbLine(kDefaultOptions));

        page->_grayscale_texture->setChecked(false);
        page->_use_local_material_library->setChecked(false);
        page->_kova_location->setText(QStringLiteral("/opt/k\u00f6va"));
        page->_export_units->setCurrentText("Inch");
        page->_import_units->setCurrentText("KovaUnits");
        kova.storeGUI();
        QVERIFY(holds("KovaFileIO kova location", QStringLiteral("/opt/k\u00f6va")));
        QVERIFY(holds("KovaFileIO units", std::string("inch")));
        QVERIFY(holds("KovaFileIO import units", std::string("kovaunits")));
        QCOMPARE(applied(kova),
                 kbLine("multitextureEnvCombiner=false,forceGrayscaleShadowTexture=false,"
                        "kovaLocation=\\\"/opt/k\u00f6va\\\",autoLoadShadowGeometry=true,shadowGeometry=false,"
                        "shadowMerge=true,useLocalMaterialLibrary=false,units=inch,importunits=kovaunits"));
    }

    void storedUnitNamesSelectTheirItems()
    {
        lmKovaPreferencesGUII kova;
        start(kova);
        lmKovaPreferencesGUIW *page = kova.page();
        setStored("KovaFileIO units", std::string("meter"));
        setStored("KovaFileIO import units", std::string("ignore"));
        kova.updateGUI();
        QCOMPARE(page->_export_units->currentText(), QStringLiteral("Meter"));
        QCOMPARE(page->_import_units->currentText(), QStringLiteral("Ignore"));

        // Names are lower case: anything else is not a unit of the combo.
        setStored("KovaFileIO units", std::string("Yard"));
        setStored("KovaFileIO import units", std::string("parsec"));
        kova.updateGUI();
        QCOMPARE(page->_export_units->currentText(), QStringLiteral("Meter"));
        QCOMPARE(page->_import_units->currentText(), QStringLiteral("Ignore"));

        // Missing units fall back to the reader's "ignore".
        lmPreferences::getData().remove("KovaFileIO units");
        lmPreferences::getData().remove("KovaFileIO import units");
        QVERIFY(applied(kova).endsWith(",units=ignore,importunits=ignore\")"));
    }

    void locationChooserConvertsOrKeeps()
    {
        QTemporaryDir root;
        QVERIFY(root.isValid());
        const QString chosen = QDir(root.path()).canonicalPath() + "/kova\\dir";
        QVERIFY(QDir().mkpath(chosen));

        lmKovaPreferencesGUII kova;
        start(kova);
        QLineEdit *location = kova.page()->_kova_location;
        lmDialogAnswerer answerer({lmDialogAnswerer::chooseDirectory(chosen), lmDialogAnswerer::reject()});
        QTest::mouseClick(kova.page()->_set_kova_location, Qt::LeftButton);
        QCOMPARE(location->text(), QDir(root.path()).canonicalPath() + "/kova/dir");
        QCOMPARE(answerer.seen()[0].title, QStringLiteral("Set Kova Location"));
        // Only storing the page writes the store.
        QVERIFY(holds("KovaFileIO kova location", QString()));

        QTest::mouseClick(kova.page()->_set_kova_location, Qt::LeftButton);
        QCOMPARE(answerer.count(), 2);
        QCOMPARE(location->text(), QDir(root.path()).canonicalPath() + "/kova/dir");
    }

    void wrongTypedKeysFallBack()
    {
        lmKovaPreferencesGUII kova;
        start(kova);
        setStored("KovaFileIO kova location", std::string("/opt/kova"));
        setStored("KovaFileIO import units", QStringLiteral("inch"));
        kova.page()->_kova_location->setText("typed");
        lmStderrCapture capture;
        kova.updateGUI();
        const QString string = applied(kova);
        QCOMPARE(wrongTypeReports(capture.text()),
                 QStringList({"KovaFileIO import units x2", "KovaFileIO kova location x2"}));
        QCOMPARE(kova.page()->_kova_location->text(), QStringLiteral("typed"));
        QVERIFY(!string.contains("kovaLocation"));
        QVERIFY(string.endsWith(",units=millimeter,importunits=ignore\")"));
    }
};

QTEST_MAIN(tst_Kova)
#include "tst_kova.moc"

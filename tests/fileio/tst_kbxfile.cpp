// The KBX page's export options: the combos as the user sees them and the
// option string the KBX loader receives on every apply.
#include "fileio/lmKBXFilePreferencesGUI.h"
#include "lmFileTypeTestSupport.h"
#include "lmHostSettings.h"
#include "lmTestSupport.h"
#include "OpenSG/OSGSceneFileHandler.h"

namespace {

void start(lmKBXFilePreferencesGUII &kbx)
{
    kbx.setDefault(lmPreferences::getData(), false);
    kbx.apply();
    kbx.updateGUI();
    lmCallLog::clear();
}

QString optionsLine(const QString &options)
{
    return QStringLiteral("osg::SceneFileHandler::setOptions(\"kbx\", \"%1\")").arg(options);
}

} // namespace

class tst_KbxFile : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void optionString_data()
    {
        QTest::addColumn<int>("version");
        QTest::addColumn<int>("format");
        QTest::addColumn<bool>("vertexColors");
        QTest::addColumn<QString>("options");
        QTest::newRow("defaults") << 0 << 0 << false << "kbx_version=KBX2016,kbx_format=binary,kbx_export_vertex_colors=false";
        QTest::newRow("2011") << 2011 << 0 << false << "kbx_version=KBX2011,kbx_format=binary,kbx_export_vertex_colors=false";
        QTest::newRow("2012") << 2012 << 0 << false << "kbx_version=KBX2012,kbx_format=binary,kbx_export_vertex_colors=false";
        QTest::newRow("2013") << 2013 << 0 << false << "kbx_version=KBX2013,kbx_format=binary,kbx_export_vertex_colors=false";
        QTest::newRow("2014") << 2014 << 0 << false << "kbx_version=KBX2014,kbx_format=binary,kbx_export_vertex_colors=false";
        QTest::newRow("2015 has no name") << 2015 << 0 << false << "kbx_version=,kbx_format=binary,kbx_export_vertex_colors=false";
        QTest::newRow("2016") << 2016 << 0 << false << "kbx_version=KBX2016,kbx_format=binary,kbx_export_vertex_colors=false";
        QTest::newRow("unknown version") << 1999 << 0 << false << "kbx_version=,kbx_format=binary,kbx_export_vertex_colors=false";
        QTest::newRow("ascii") << 0 << 1 << false << "kbx_version=KBX2016,kbx_format=ascii,kbx_export_vertex_colors=false";
        QTest::newRow("format 2 is ascii") << 0 << 2 << false << "kbx_version=KBX2016,kbx_format=ascii,kbx_export_vertex_colors=false";
        QTest::newRow("negative format is ascii") << 2012 << -1 << true << "kbx_version=KBX2012,kbx_format=ascii,kbx_export_vertex_colors=true";
    }
    void optionString()
    {
        QFETCH(int, version);
        QFETCH(int, format);
        QFETCH(bool, vertexColors);
        QFETCH(QString, options);
        lmKBXFilePreferencesGUII kbx;
        start(kbx);
        lmMessage &store = lmPreferences::getData();
        store.set("KbxOptions version", boost::any(version), true);
        store.set("KbxOptions format", boost::any(format), true);
        store.set("KbxOptions export vertex colors", boost::any(vertexColors), true);
        kbx.apply();
        QCOMPARE(lmCallLog::lines(), QStringList({recordLine("KBX"), optionsLine(options)}));
        QCOMPARE(QString(osg::SceneFileHandler::the().getOptions("kbx")), options);
    }

    void pageEditsReachTheLoader()
    {
        lmKBXFilePreferencesGUII kbx;
        start(kbx);
        QComboBox *versions = kbx.page()->_export_version;
        QCOMPARE(versions->count(), 5);
        const QStringList texts = {"KBX 2016/2017", "KBX 2014/2015", "KBX 2013", "KBX 2012", "KBX 2011"};
        const QList<int> data = {0, 2014, 2013, 2012, 2011};
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(versions->itemText(i), texts[i]);
            QCOMPARE(versions->itemData(i).toInt(), data[i]);
        }
        QCOMPARE(versions->currentIndex(), 0);

        versions->setCurrentIndex(1);
        kbx.page()->_export_format->setCurrentIndex(1);
        kbx.page()->_export_vertex_colors->setChecked(true);
        kbx.storeGUI();
        QCOMPARE(stored("KbxOptions version", -1), 2014);
        QCOMPARE(stored("KbxOptions format", -1), 1);
        QCOMPARE(stored("KbxOptions export vertex colors", false), true);
        kbx.apply();
        QCOMPARE(lmCallLog::lines().last(),
                 optionsLine("kbx_version=KBX2014,kbx_format=ascii,kbx_export_vertex_colors=true"));

        lmMessage &store = lmPreferences::getData();
        store.set("KbxOptions version", boost::any(2012), true);
        kbx.updateGUI();
        QCOMPARE(versions->currentText(), QStringLiteral("KBX 2012"));
        // No item stores 2015: the combo is left without a selection.
        store.set("KbxOptions version", boost::any(2015), true);
        kbx.updateGUI();
        QCOMPARE(versions->currentIndex(), -1);

        // A wrong-typed flag leaves the box as it was.
        store.set("KbxOptions export vertex colors", boost::any(1), true);
        lmStderrCapture capture;
        kbx.updateGUI();
        QVERIFY(capture.text().contains("'KbxOptions export vertex colors' has wrong type"));
        QVERIFY(kbx.page()->_export_vertex_colors->isChecked());
    }
};

QTEST_MAIN(tst_KbxFile)
#include "tst_kbxfile.moc"

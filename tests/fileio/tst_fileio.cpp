// The general file I/O page: every key pushed on apply, the texture search
// path table, the conversion folder and its environment variable, and the
// import dialog's Qt setting.
#include "fileio/lmFileIOPreferencesGUI.h"
#include "lmPageTestSupport.h"
#include "lmHostSettings.h"
#include "lmTestSupport.h"

#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const char *const kTmpDirVariable = "LUMO_FILEIO_TMP_DIR";
const char *const kPaths = "texture search paths";

QStringList tableTexts(const QTableWidget *table)
{
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row)
        texts << table->item(row, 0)->text();
    return texts;
}

QVariant closeOnSuccessSetting()
{
    return QSettings().value(QStringLiteral("importDialog/closeOnSuccess"));
}

// An apply on a default store; the tmp-path step leaves no line.
const QStringList kDefaultApply = {
    "lmTexSearch::set()",
    "lmFileIO::enableVerifyGeometry(true)",
    "lmFileIO::enableOptimizeGeometry(false)",
    "lmFileIO::enableOptimizeTransparencies(false)",
    "lmFileIO::setShowFileIOProgress(true)",
    "lmController::setShowImportOptions(true)",
    "lmFileIO::setImportCreateReferences(true)",
    "lmFileIO::setImportMergeMaterials(false)",
    "lmController::setImportOptionsCenterInOrigin(false)",
    "lmController::setImportOptionsPutOnGround(false)",
    "lmFileIO::setMaxParallelImportTasks(4)",
    "lmFileIO::setConverterOutputFormat(6)",
};

} // namespace

class tst_FileIO : public QObject
{
    Q_OBJECT

private:
    QByteArray m_savedTmpDir;
    bool m_tmpDirWasSet = false;

    void start(lmFileIOPreferencesGUII &fileIO)
    {
        fileIO.setDefault(lmPreferences::getData(), false);
        fileIO.updateGUI();
        lmCallLog::clear();
    }

    void setPaths(lmFileIOPreferencesGUII &fileIO, const std::vector<std::string> &paths)
    {
        setStored(kPaths, paths);
        fileIO.updateGUI();
    }

private slots:
    void initTestCase()
    {
        // Keep the user's own settings out of reach.
        QStandardPaths::setTestModeEnabled(true);
        QCoreApplication::setOrganizationName(QStringLiteral("lmKernelPreferencesTests"));
        QCoreApplication::setApplicationName(QStringLiteral("tst_fileio"));
        m_tmpDirWasSet = qEnvironmentVariableIsSet(kTmpDirVariable);
        m_savedTmpDir = qgetenv(kTmpDirVariable);
    }

    void init()
    {
        lmResetHost();
        QSettings().clear();
        qunsetenv(kTmpDirVariable);
    }

    void cleanupTestCase()
    {
        QSettings().clear();
        if (m_tmpDirWasSet)
            qputenv(kTmpDirVariable, m_savedTmpDir);
        else
            qunsetenv(kTmpDirVariable);
    }

    void defaultsArePushedAndSetTheEnvironmentAndSetting()
    {
        lmFileIOPreferencesGUII fileIO;
        fileIO.setDefault(lmPreferences::getData(), true);
        fileIO.apply();
        QCOMPARE(lmCallLog::lines(), kDefaultApply);
        QVERIFY(qEnvironmentVariableIsSet(kTmpDirVariable));
        QVERIFY(qgetenv(kTmpDirVariable).isEmpty());
        QCOMPARE(closeOnSuccessSetting(), QVariant(true));
        QVERIFY(lmHostSettings::errorLog().isEmpty());
    }

    void everyControlIsStoredAndPushed()
    {
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        lmFileIOPreferencesGUIW *page = fileIO.page();
        for (QCheckBox *box : {page->_verify_geometry, page->_optimize_geometry, page->_showImportDialog,
                               page->_closeDialogOnSuccessfulImport, page->_importMergeMaterials,
                               page->_importCenterInOrigin, page->_importPutOnGround})
            box->toggle();
        page->_texture_compression_mode->setCurrentIndex(2);
        page->_texture_compression_size->setCurrentText("1024");
        page->_max_procs->setValue(7);
        page->_referenceBehavior->setCurrentIndex(0);
        page->m_converterOutputFormat->setCurrentIndex(1);

        lmPreferencesHost::resetUnchanged();
        fileIO.storeGUI();
        QVERIFY(holds("Loader compress texture mode", 2));
        QVERIFY(holds("Loader compress texture size", 1024));
        QVERIFY(holds("FileIO dialog reference behavior", 0));
        QVERIFY(holds("FileIO converter output format", std::string("LUMO")));
        QVERIFY(!lmPreferences::getData().contains(kPaths));
        // Nothing is change-tracked.
        QVERIFY(unchangedKeys().empty());

        fileIO.apply();
        QCOMPARE(lmCallLog::lines(), withCalls(kDefaultApply, {"lmFileIO::enableVerifyGeometry(false)",
                                                               "lmFileIO::enableOptimizeGeometry(true)",
                                                               "lmController::setShowImportOptions(false)",
                                                               "lmFileIO::setImportCreateReferences(false)",
                                                               "lmFileIO::setImportMergeMaterials(true)",
                                                               "lmController::setImportOptionsCenterInOrigin(true)",
                                                               "lmController::setImportOptionsPutOnGround(true)",
                                                               "lmFileIO::setMaxParallelImportTasks(7)",
                                                               "lmFileIO::setConverterOutputFormat(10)"}));
        QCOMPARE(closeOnSuccessSetting(), QVariant(false));
    }

    void formatAndReferenceValuesMapExactly()
    {
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        const struct
        {
            const char *format;
            int reference;
            int formatIndex;
            const char *formatCall;
            const char *referenceCall;
        } cases[] = {
            {"LUMO", 1, 1, "lmFileIO::setConverterOutputFormat(10)", "lmFileIO::setImportCreateReferences(true)"},
            {"lumo", 2, 0, "lmFileIO::setConverterOutputFormat(6)", "lmFileIO::setImportCreateReferences(false)"},
            {"LUMO ", 0, 0, "lmFileIO::setConverterOutputFormat(6)", "lmFileIO::setImportCreateReferences(false)"},
        };
        for (const auto &c : cases) {
            setStored("FileIO converter output format", std::string(c.format));
            setStored("FileIO dialog reference behavior", c.reference);
            fileIO.updateGUI();
            QCOMPARE(fileIO.page()->m_converterOutputFormat->currentIndex(), c.formatIndex);
            QCOMPARE(fileIO.page()->_referenceBehavior->currentIndex(), c.reference == 1 ? 1 : 0);
            QCOMPARE(applyLog(fileIO).value(11), QString(c.formatCall));
            QCOMPARE(lmCallLog::lines().value(6), QString(c.referenceCall));
        }
    }

    void texturePathTableRoundTrip()
    {
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        setPaths(fileIO, {"/tex/b", "/tex/\xc3\xa4", "/tex/a"});
        QTableWidget *table = fileIO.page()->_texturepaths;
        QCOMPARE(tableTexts(table), QStringList({"/tex/a", "/tex/b", QStringLiteral("/tex/\u00e4")}));
        QCOMPARE(table->item(0, 0)->flags(), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        fileIO.storeGUI();
        QVERIFY(holds(kPaths, std::vector<std::string>{"/tex/a", "/tex/b", "/tex/\xc3\xa4"}));

        // An update replaces the rows; an empty table removes the key.
        setPaths(fileIO, {"/only"});
        QCOMPARE(tableTexts(table), QStringList({"/only"}));
        table->setRowCount(0);
        fileIO.storeGUI();
        QVERIFY(!lmPreferences::getData().contains(kPaths));
    }

    void addingPathsRefusesExactDuplicates()
    {
        QTemporaryDir root;
        const QString lower = QDir(root.path()).canonicalPath() + "/tex";
        QVERIFY(QDir().mkpath(lower));
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        setPaths(fileIO, {(QDir(root.path()).canonicalPath() + "/TEX").toStdString()}); // differs in case only
        QTableWidget *table = fileIO.page()->_texturepaths;

        lmDialogAnswerer answerer({lmDialogAnswerer::chooseDirectory(lower), lmDialogAnswerer::chooseDirectory(lower),
                                   lmDialogAnswerer::clickButton("OK"), lmDialogAnswerer::reject()});
        for (int click = 0; click < 3; ++click) // added, refused, cancelled
            QTest::mouseClick(fileIO.page()->_add_button, Qt::LeftButton);
        QCOMPARE(table->rowCount(), 2);
        QVERIFY(tableTexts(table).contains(lower));

        QCOMPARE(answerer.count(), 4);
        QCOMPARE(answerer.seen()[0].title, QStringLiteral("Select Texture Search Directory"));
        QCOMPARE(answerer.seen()[2].title, QStringLiteral("LUMO 2026"));
        QCOMPARE(answerer.seen()[2].text, QStringLiteral("Path already inserted!"));
        QCOMPARE(answerer.seen()[2].buttons, QStringList({"OK"}));
    }

    void deleteRemovesOnlyTheFirstSelectedRow()
    {
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        setPaths(fileIO, {"/a", "/b", "/c", "/d"});
        QTableWidget *table = fileIO.page()->_texturepaths;
        QTest::mouseClick(fileIO.page()->_sub_button, Qt::LeftButton); // nothing selected
        QCOMPARE(table->rowCount(), 4);

        for (int row : {1, 2, 3})
            table->selectionModel()->select(table->model()->index(row, 0), QItemSelectionModel::Select);
        QTest::mouseClick(fileIO.page()->_sub_button, Qt::LeftButton);
        QCOMPARE(tableTexts(table), QStringList({"/a", "/c", "/d"}));
    }

    void temporaryPathChooserAndEnvironment()
    {
        QTemporaryDir root;
        const QString existing = QDir(root.path()).canonicalPath() + QStringLiteral("/t\u00ebmp");
        QVERIFY(QDir().mkpath(existing));
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        QLineEdit *tmpPath = fileIO.page()->_tmp_path;

        lmDialogAnswerer answerer({lmDialogAnswerer::chooseDirectory(existing), lmDialogAnswerer::reject()});
        QTest::mouseClick(fileIO.page()->_tmp_path_button, Qt::LeftButton);
        QCOMPARE(tmpPath->text(), existing);
        QCOMPARE(answerer.seen()[0].title, QStringLiteral("Select Temporary File Path"));
        fileIO.apply();
        QCOMPARE(qgetenv(kTmpDirVariable), existing.toUtf8());
        QTest::mouseClick(fileIO.page()->_tmp_path_button, Qt::LeftButton); // cancelled: the field empties
        QCOMPARE(answerer.count(), 2);
        QVERIFY(tmpPath->text().isEmpty());

        // A folder that does not exist is kept as typed and only reported.
        qputenv(kTmpDirVariable, "/previous");
        const QString missing = root.path() + "/missing";
        tmpPath->setText(missing);
        fileIO.storeGUI();
        lmCallLog::clear();
        fileIO.apply();
        QCOMPARE(qgetenv(kTmpDirVariable), QByteArray("/previous"));
        QCOMPARE(lmHostSettings::errorLog(), QStringList({"FileIO preferences: tmp path doesn't exist!"}));
        QVERIFY(holds("FileIO tmp path", missing));
        QCOMPARE(lmCallLog::lines(), kDefaultApply);

        // The page, not the store, decides: an empty field empties the variable.
        tmpPath->clear();
        fileIO.apply();
        QVERIFY(qEnvironmentVariableIsSet(kTmpDirVariable));
        QVERIFY(qgetenv(kTmpDirVariable).isEmpty());
        QCOMPARE(lmHostSettings::errorLog().size(), 1);
    }

    void unreadableKeysAreSkippedAndLeaveTheSettingAlone()
    {
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        setStored("Loader verify geometry only", 1);
        setStored("FileIO converter output format", QStringLiteral("LUMO"));
        setStored("FileIO close dialog on successful import", std::string("true"));
        setStored("Loader compress texture size", 100); // not offered
        lmPreferences::getData().remove("BCADOptions max parallel tasks");
        fileIO.updateGUI();
        fileIO.apply();
        QCOMPARE(fileIO.page()->_texture_compression_size->currentText(), QStringLiteral("128"));
        QVERIFY(!closeOnSuccessSetting().isValid());
        QStringList expected = kDefaultApply;
        for (const char *skipped : {"lmFileIO::enableVerifyGeometry(true)", "lmFileIO::setMaxParallelImportTasks(4)",
                                    "lmFileIO::setConverterOutputFormat(6)"})
            expected.removeAll(skipped);
        QCOMPARE(lmCallLog::lines(), expected);
    }
};

QTEST_MAIN(tst_FileIO)
#include "tst_fileio.moc"

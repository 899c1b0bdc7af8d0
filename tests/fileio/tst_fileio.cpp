// The general file I/O page: every key pushed on apply, the texture search
// path table, the conversion folder and its environment variable, and the
// import dialog's Qt setting.
#include "fileio/lmFileIOPreferencesGUI.h"
#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmMessageHelpers.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const char *const kTmpDirVariable = "LUMO_FILEIO_TMP_DIR";
const char *const kPaths = "texture search paths";

template <class T>
bool holds(const char *key, const T &expected)
{
    const boost::any &value = lmPreferences::getData().get(key);
    return !value.empty() && lmHoldsType(value, typeid(T)) && *boost::unsafe_any_cast<T>(&value) == expected;
}

QStringList tableTexts(const QTableWidget *table)
{
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row)
        texts << (table->item(row, 0) ? table->item(row, 0)->text() : QStringLiteral("<none>"));
    return texts;
}

QVariant closeOnSuccessSetting()
{
    return QSettings().value(QStringLiteral("importDialog/closeOnSuccess"));
}

// The calls of an apply on a default store, with the tmp-path step (which
// leaves no call-log line) between progress and import dialog.
QStringList defaultApplyLines()
{
    return {
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
}

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

    void defaultsFillThePageAndApplyEverything()
    {
        lmFileIOPreferencesGUII fileIO;
        fileIO.setDefault(lmPreferences::getData(), true);
        QVERIFY(holds("Loader verify geometry only", true));
        QVERIFY(holds("Loader compress texture mode", 1));
        QVERIFY(holds("Loader compress texture size", 128));
        QVERIFY(holds("Loader optimize geometry", false));
        QVERIFY(holds("Loader parallel loading", false));
        QVERIFY(holds("FileIO tmp path", QString()));
        QVERIFY(holds("FileIO show dialog", true));
        QVERIFY(holds("FileIO close dialog on successful import", true));
        QVERIFY(holds("FileIO dialog reference behavior", 1));
        QVERIFY(holds("FileIO dialog merge materials", false));
        QVERIFY(holds("FileIO dialog center in origin", false));
        QVERIFY(holds("FileIO dialog put on ground", false));
        QVERIFY(holds("BCADOptions max parallel tasks", 4));
        QVERIFY(holds("FileIO converter output format", std::string("OpenSG")));
        QCOMPARE(lmPreferences::getData().size(), std::size_t(14)); // no texture paths default

        fileIO.updateGUI();
        lmFileIOPreferencesGUIW *page = fileIO.page();
        QVERIFY(page->_verify_geometry->isChecked());
        QVERIFY(!page->_optimize_geometry->isChecked());
        QCOMPARE(page->_texture_compression_mode->currentText(), QStringLiteral("Auto"));
        QCOMPARE(page->_texture_compression_size->currentText(), QStringLiteral("128"));
        QVERIFY(page->_texture_compression_size->findText("1024") >= 0);
        QCOMPARE(page->_max_procs->value(), 4);
        QVERIFY(page->_tmp_path->text().isEmpty());
        QVERIFY(page->_showImportDialog->isChecked());
        QVERIFY(page->_closeDialogOnSuccessfulImport->isChecked());
        QCOMPARE(page->_referenceBehavior->currentIndex(), 1);
        QCOMPARE(page->m_converterOutputFormat->currentText(), QStringLiteral("OpenSG"));
        QCOMPARE(page->_texturepaths->rowCount(), 0);
        QCOMPARE(page->_texturepaths->horizontalHeaderItem(0)->text(), QStringLiteral("Path"));
        QVERIFY(page->_texturepaths->isSortingEnabled());

        fileIO.apply();
        QCOMPARE(lmCallLog::lines(), defaultApplyLines());
        QVERIFY(qEnvironmentVariableIsSet(kTmpDirVariable));
        QVERIFY(qgetenv(kTmpDirVariable).isEmpty());
        QCOMPARE(closeOnSuccessSetting(), QVariant(true));
        QVERIFY(lmHostSettings::errorLog().isEmpty());

        const auto pages = lmPreferencesHost::pages();
        QCOMPARE(pages.size(), std::size_t(1));
        QCOMPARE(pages[0].group, QStringLiteral("FileIO"));
        QCOMPARE(pages[0].page, QStringLiteral("FileIO"));
    }

    void everyControlIsStoredAndPushed()
    {
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        lmFileIOPreferencesGUIW *page = fileIO.page();
        page->_verify_geometry->setChecked(false);
        page->_optimize_geometry->setChecked(true);
        page->_texture_compression_mode->setCurrentIndex(2);
        page->_texture_compression_size->setCurrentText("1024");
        page->_max_procs->setValue(7);
        page->_showImportDialog->setChecked(false);
        page->_closeDialogOnSuccessfulImport->setChecked(false);
        page->_referenceBehavior->setCurrentIndex(0);
        page->_importMergeMaterials->setChecked(true);
        page->_importCenterInOrigin->setChecked(true);
        page->_importPutOnGround->setChecked(true);
        page->m_converterOutputFormat->setCurrentIndex(1);

        lmPreferencesHost::resetUnchanged();
        fileIO.storeGUI();
        QVERIFY(holds("Loader verify geometry only", false));
        QVERIFY(holds("Loader optimize geometry", true));
        QVERIFY(holds("Loader compress texture mode", 2));
        QVERIFY(holds("Loader compress texture size", 1024));
        QVERIFY(holds("BCADOptions max parallel tasks", 7));
        QVERIFY(holds("FileIO show dialog", false));
        QVERIFY(holds("FileIO close dialog on successful import", false));
        QVERIFY(holds("FileIO dialog reference behavior", 0));
        QVERIFY(holds("FileIO dialog merge materials", true));
        QVERIFY(holds("FileIO dialog center in origin", true));
        QVERIFY(holds("FileIO dialog put on ground", true));
        QVERIFY(holds("FileIO converter output format", std::string("LUMO")));
        QVERIFY(holds("FileIO tmp path", QString()));
        QVERIFY(!lmPreferences::getData().contains(kPaths));
        // Nothing is change-tracked: an unchanged page still pushes everything.
        QVERIFY(lmPreferencesHost::unchangedKeys(lmPreferencesHost::categories().front()).empty());

        fileIO.apply();
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmTexSearch::set()",
                                         "lmFileIO::enableVerifyGeometry(false)",
                                         "lmFileIO::enableOptimizeGeometry(true)",
                                         "lmFileIO::enableOptimizeTransparencies(false)",
                                         "lmFileIO::setShowFileIOProgress(true)",
                                         "lmController::setShowImportOptions(false)",
                                         "lmFileIO::setImportCreateReferences(false)",
                                         "lmFileIO::setImportMergeMaterials(true)",
                                         "lmController::setImportOptionsCenterInOrigin(true)",
                                         "lmController::setImportOptionsPutOnGround(true)",
                                         "lmFileIO::setMaxParallelImportTasks(7)",
                                         "lmFileIO::setConverterOutputFormat(10)",
                                     }));
        QCOMPARE(closeOnSuccessSetting(), QVariant(false));
    }

    void formatAndReferenceValuesMapExactly()
    {
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        lmMessage &store = lmPreferences::getData();
        const struct
        {
            const char *format;
            int reference;
            int formatIndex;
            int referenceIndex;
            const char *lastLines[2];
        } cases[] = {
            {"LUMO", 1, 1, 1, {"lmFileIO::setMaxParallelImportTasks(4)", "lmFileIO::setConverterOutputFormat(10)"}},
            {"lumo", 2, 0, 0, {"lmFileIO::setMaxParallelImportTasks(4)", "lmFileIO::setConverterOutputFormat(6)"}},
            {"LUMO ", 0, 0, 0, {"lmFileIO::setMaxParallelImportTasks(4)", "lmFileIO::setConverterOutputFormat(6)"}},
        };
        for (const auto &c : cases) {
            store.set("FileIO converter output format", boost::any(std::string(c.format)), true);
            store.set("FileIO dialog reference behavior", boost::any(c.reference), true);
            fileIO.updateGUI();
            QCOMPARE(fileIO.page()->m_converterOutputFormat->currentIndex(), c.formatIndex);
            QCOMPARE(fileIO.page()->_referenceBehavior->currentIndex(), c.referenceIndex);
            lmCallLog::clear();
            fileIO.apply();
            const QStringList lines = lmCallLog::lines();
            QCOMPARE(lines.mid(lines.size() - 2), QStringList({c.lastLines[0], c.lastLines[1]}));
            QVERIFY(lines.contains(c.reference == 1 ? "lmFileIO::setImportCreateReferences(true)"
                                                    : "lmFileIO::setImportCreateReferences(false)"));
        }
    }

    void texturePathTableRoundTrip()
    {
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        lmMessage &store = lmPreferences::getData();
        store.set(kPaths, boost::any(std::vector<std::string>{"/tex/b", "/tex/\xc3\xa4", "/tex/a"}), true);
        fileIO.updateGUI();
        QTableWidget *table = fileIO.page()->_texturepaths;
        QCOMPARE(tableTexts(table), QStringList({"/tex/a", "/tex/b", QStringLiteral("/tex/\u00e4")}));
        QCOMPARE(table->rowHeight(0), 20);
        QCOMPARE(table->item(0, 0)->flags(), Qt::ItemIsSelectable | Qt::ItemIsEnabled);

        fileIO.storeGUI();
        QVERIFY(holds(kPaths, std::vector<std::string>{"/tex/a", "/tex/b", "/tex/\xc3\xa4"}));

        // An update replaces the rows rather than adding to them.
        store.set(kPaths, boost::any(std::vector<std::string>{"/only"}), true);
        fileIO.updateGUI();
        QCOMPARE(tableTexts(table), QStringList({"/only"}));

        // An empty table takes the key away instead of storing an empty list.
        table->setRowCount(0);
        fileIO.storeGUI();
        QVERIFY(!store.contains(kPaths));
        fileIO.updateGUI();
        QCOMPARE(table->rowCount(), 0);
    }

    void addingPathsRefusesExactDuplicates()
    {
        QTemporaryDir root;
        QVERIFY(root.isValid());
        const QString lower = QDir(root.path()).canonicalPath() + "/tex";
        QVERIFY(QDir().mkpath(lower));

        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        // A path differing in case only is another path.
        lmPreferences::getData().set(kPaths, boost::any(std::vector<std::string>{(root.path() + "/TEX").toStdString()}), true);
        fileIO.updateGUI();
        QTableWidget *table = fileIO.page()->_texturepaths;

        lmDialogAnswerer answerer({lmDialogAnswerer::chooseDirectory(lower), lmDialogAnswerer::chooseDirectory(lower),
                                   lmDialogAnswerer::clickButton("OK"), lmDialogAnswerer::reject()});
        QTest::mouseClick(fileIO.page()->_add_button, Qt::LeftButton);
        QCOMPARE(table->rowCount(), 2);
        const QStringList afterFirst = tableTexts(table);
        QVERIFY(afterFirst.contains(lower));

        QTest::mouseClick(fileIO.page()->_add_button, Qt::LeftButton);
        QCOMPARE(tableTexts(table), afterFirst);

        QTest::mouseClick(fileIO.page()->_add_button, Qt::LeftButton); // cancelled
        QCOMPARE(tableTexts(table), afterFirst);

        QCOMPARE(answerer.count(), 4);
        QCOMPARE(answerer.seen()[0].title, QStringLiteral("Select Texture Search Directory"));
        QCOMPARE(answerer.seen()[2].className, QStringLiteral("QMessageBox"));
        QCOMPARE(answerer.seen()[2].title, QStringLiteral("LUMO 2026"));
        QCOMPARE(answerer.seen()[2].text, QStringLiteral("Path already inserted!"));
        QCOMPARE(answerer.seen()[2].buttons, QStringList({"OK"}));
        QCOMPARE(answerer.seen()[3].title, QStringLiteral("Select Texture Search Directory"));
        QVERIFY(lmCallLog::lines().isEmpty());
    }

    void deleteRemovesOnlyTheFirstSelectedRow()
    {
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        lmPreferences::getData().set(kPaths, boost::any(std::vector<std::string>{"/a", "/b", "/c", "/d"}), true);
        fileIO.updateGUI();
        QTableWidget *table = fileIO.page()->_texturepaths;

        QTest::mouseClick(fileIO.page()->_sub_button, Qt::LeftButton); // nothing selected
        QCOMPARE(table->rowCount(), 4);

        for (int row : {1, 2, 3})
            table->selectionModel()->select(table->model()->index(row, 0), QItemSelectionModel::Select);
        QCOMPARE(table->selectedItems().size(), 3);
        QTest::mouseClick(fileIO.page()->_sub_button, Qt::LeftButton);
        QCOMPARE(tableTexts(table), QStringList({"/a", "/c", "/d"}));
    }

    void temporaryPathChooserAndEnvironment()
    {
        QTemporaryDir root;
        QVERIFY(root.isValid());
        const QString existing = QDir(root.path()).canonicalPath() + QStringLiteral("/t\u00ebmp");
        QVERIFY(QDir().mkpath(existing));

        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        QLineEdit *tmpPath = fileIO.page()->_tmp_path;

        {
            lmDialogAnswerer answerer({lmDialogAnswerer::chooseDirectory(existing), lmDialogAnswerer::reject()});
            QTest::mouseClick(fileIO.page()->_tmp_path_button, Qt::LeftButton);
            QCOMPARE(tmpPath->text(), existing);
            QCOMPARE(answerer.seen()[0].title, QStringLiteral("Select Temporary File Path"));
            fileIO.apply();
            QCOMPARE(qgetenv(kTmpDirVariable), existing.toUtf8());

            // Cancelling empties the field.
            QTest::mouseClick(fileIO.page()->_tmp_path_button, Qt::LeftButton);
            QCOMPARE(answerer.count(), 2);
            QVERIFY(tmpPath->text().isEmpty());
        }

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
        QCOMPARE(lmCallLog::lines(), defaultApplyLines());

        // The page, not the store, decides: an empty field clears the variable.
        tmpPath->clear();
        fileIO.apply();
        QVERIFY(qEnvironmentVariableIsSet(kTmpDirVariable));
        QVERIFY(qgetenv(kTmpDirVariable).isEmpty());
        QCOMPARE(lmHostSettings::errorLog().size(), 1);
    }

    void unreadableKeysAreSkipped()
    {
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        lmMessage &store = lmPreferences::getData();
        store.set("Loader verify geometry only", boost::any(1), true);
        store.set("FileIO converter output format", boost::any(QStringLiteral("LUMO")), true);
        store.set("FileIO close dialog on successful import", boost::any(std::string("true")), true);
        store.set("Loader compress texture size", boost::any(100), true); // not offered
        store.remove("BCADOptions max parallel tasks");
        lmFileIOPreferencesGUIW *page = fileIO.page();
        page->_verify_geometry->setChecked(false);
        page->_max_procs->setValue(9);

        lmStderrCapture capture;
        fileIO.updateGUI();
        fileIO.apply();
        const QString printed = capture.text();
        QCOMPARE(printed.count("getFromMessage : Attribute 'Loader verify geometry only' has wrong type"), 2);
        QCOMPARE(printed.count("getFromMessage : Attribute 'FileIO converter output format' has wrong type"), 2);
        QVERIFY(!page->_verify_geometry->isChecked());
        QCOMPARE(page->_max_procs->value(), 9);
        QCOMPARE(page->_texture_compression_size->currentText(), QStringLiteral("128"));
        QVERIFY(!closeOnSuccessSetting().isValid());

        QStringList expected = defaultApplyLines();
        expected.removeAll("lmFileIO::enableVerifyGeometry(true)");
        expected.removeAll("lmFileIO::setMaxParallelImportTasks(4)");
        expected.removeAll("lmFileIO::setConverterOutputFormat(6)");
        QCOMPARE(lmCallLog::lines(), expected);
    }

    void destructionRemovesEveryKeyIncludingRetiredOnes()
    {
        lmMessage &store = lmPreferences::getData();
        store.set("Host own key", boost::any(1), true);
        {
            lmFileIOPreferencesGUII fileIO;
            start(fileIO);
            store.set(kPaths, boost::any(std::vector<std::string>{"/a"}), true);
            store.set("FileIO create uber materials", boost::any(true), true);
        }
        QCOMPARE(store.keys(), std::vector<std::string>{"Host own key"});
        QVERIFY(lmPreferencesHost::pages().empty());
    }
};

QTEST_MAIN(tst_FileIO)
#include "tst_fileio.moc"

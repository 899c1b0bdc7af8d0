// The file pages' own rules: what apply pushes for stored values, File I/O's
// texture table, folders and import-dialog setting, OSB's compression
// mappings, migration and edition rules, Kova's units and folder, and the
// tessellation levels. Defaults, texts, wrong types, untouched OK, unload
// and control bindings are checked for every page by the invariant tests.
#include "fileio/lmFileIOPreferencesGUI.h"
#include "fileio/lmKovaPreferencesGUI.h"
#include "fileio/lmOsbPreferencesGUI.h"
#include "fileio/lmTesselationListViewItem.h"
#include "fileio/lmTesselationPreferencesGUI.h"
#include "fileio/lmWrlPreferencesGUI.h"
#include "lmHostSettings.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <memory>

namespace {

// Values put into the store before apply; an empty value removes the key.
using Stored = std::vector<std::pair<std::string, boost::any>>;

const char *const kTmpDirVariable = "LUMO_FILEIO_TMP_DIR";
const char *const kPaths = "texture search paths";
const char *const kQuality = "Optimizer Teselation Quality";

QString options(const QString &suffix, const QString &items)
{
    return QStringLiteral("osg::SceneFileHandler::setOptions(\"%1\", \"%2\")").arg(suffix, items);
}
QString osb(const QString &textures)
{
    return options("osb", "packIndices=false,unpack16BitIndices=true," + textures);
}
QString kb(const QString &location, bool grayscale, bool library, const QString &units, const QString &importUnits)
{
    const auto text = [](bool on) { return QString(on ? "true" : "false"); };
    return options("kb", QStringLiteral("multitextureEnvCombiner=false,forceGrayscaleShadowTexture=%1,%2"
                                        "autoLoadShadowGeometry=true,shadowGeometry=false,shadowMerge=true,"
                                        "useLocalMaterialLibrary=%3,units=%4,importunits=%5")
                             .arg(text(grayscale), location, text(library), units, importUnits));
}
QStringList wrl(const QString &items)
{
    return {options("wrl", items), options("vrml", items)};
}

// What apply pushes from a default store (the tmp-path step logs nothing).
const QMap<QString, QStringList> kDefaultApply{
    {"FileIO",
     {"lmTexSearch::set()", "lmFileIO::enableVerifyGeometry(true)", "lmFileIO::enableOptimizeGeometry(false)",
      "lmFileIO::enableOptimizeTransparencies(false)", "lmFileIO::setShowFileIOProgress(true)",
      "lmController::setShowImportOptions(true)", "lmFileIO::setImportCreateReferences(true)",
      "lmFileIO::setImportMergeMaterials(false)", "lmController::setImportOptionsCenterInOrigin(false)",
      "lmController::setImportOptionsPutOnGround(false)", "lmFileIO::setMaxParallelImportTasks(4)",
      "lmFileIO::setConverterOutputFormat(6)"}},
    {"OSB",
     {"OpenSGFileIO::setCompressionType(2)", "OpenSGFileIO::setNewFormat(true)", "lmFileIO::setReaderCRCTest(false)",
      "lmFileIO::setWriterCRCTest(false)", osb("inlineTextures=true,compressTextures=false"),
      "lmFileIO::enableIncrementalSave(true)", "lmFileIO::setIncrementalSaveLimit(5)",
      "lmFileIO::setExecuteEmbeddedScript(true)", "lmFileIO::setShowPreviewHint(true)", "write(\"LUMO\", 2, false)",
      "write(\"OpenSG\", 2, false)"}},
    {"Kova", {kb("", true, true, "millimeter", "millimeter")}},
    {"WRL", wrl("inlineTextures=false")},
    {"Tesselation", {}},
};

std::unique_ptr<lmPreferences> makePage(const QString &name)
{
    if (name == "FileIO")
        return std::make_unique<lmFileIOPreferencesGUII>();
    if (name == "OSB")
        return std::make_unique<lmOsbPreferencesGUII>();
    if (name == "Kova")
        return std::make_unique<lmKovaPreferencesGUII>();
    if (name == "WRL")
        return std::make_unique<lmWrlPreferencesGUII>();
    return std::make_unique<lmTesselationPreferencesGUII>();
}

// The page widget of the one category alive.
QWidget *pageWidget()
{
    return lmPreferencesHost::pages().front().widget;
}

// A call without its values: the operation, and for calls with several
// arguments the first one too (the suffix, the import format).
QString callOf(const QString &line)
{
    const int comma = line.indexOf(',');
    return line.left(comma >= 0 ? comma : line.indexOf('('));
}

// The calls one apply makes, an import-options commit reduced to the
// format and the two values the OSB page sets.
QStringList applied(lmPreferences &category)
{
    static const QRegularExpression write(
        R"(^lmImportOptions::write\(("\w+"), .*, smartReferenceBehavior=(\d+), importAsSmartReference=(\w+), .*\)$)");
    lmCallLog::clear();
    category.apply();
    QStringList lines = lmCallLog::lines();
    for (QString &line : lines) {
        const QRegularExpressionMatch match = write.match(line);
        if (match.hasMatch())
            line = QStringLiteral("write(%1, %2, %3)").arg(match.captured(1), match.captured(2), match.captured(3));
    }
    return lines;
}

// The first column's texts of a table or list, in row order.
QStringList column0(const QAbstractItemView *view)
{
    QStringList texts;
    for (int row = 0; row < view->model()->rowCount(); ++row)
        texts << view->model()->index(row, 0).data().toString();
    return texts;
}

QVariant closeOnSuccessSetting()
{
    return QSettings().value(QStringLiteral("importDialog/closeOnSuccess"));
}

template <class Category>
void start(Category &category)
{
    category.setDefault(lmPreferences::getData(), true);
    category.updateGUI();
    lmCallLog::clear();
}

} // namespace

Q_DECLARE_METATYPE(Stored)

class tst_FileIOPages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Keep the user's own settings out of reach.
        QStandardPaths::setTestModeEnabled(true);
        QCoreApplication::setOrganizationName(QStringLiteral("lmKernelPreferencesTests"));
        QCoreApplication::setApplicationName(QStringLiteral("tst_fileiopages"));
    }

    void init()
    {
        lmResetHost();
        QSettings().clear();
        qunsetenv(kTmpDirVariable);
    }

    void cleanupTestCase() { QSettings().clear(); }

    // Rows: a page, its edition, the values stored over its defaults, and how
    // the calls differ from a default apply: calls with other values (matched
    // by operation, or by operation and suffix or format) and calls skipped.
    void applyPushesTheStoredValuesInOrder_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<bool>("essentials");
        QTest::addColumn<Stored>("stored");
        QTest::addColumn<QStringList>("changed");
        QTest::addColumn<QStringList>("skipped");
        const QStringList none;
        for (const QString &page : kDefaultApply.keys())
            QTest::newRow(qPrintable(page + " defaults")) << page << false << Stored{} << none << none;

        QTest::newRow("FileIO every value") << "FileIO" << false
            << Stored{{"Loader verify geometry only", false}, {"Loader optimize geometry", true},
                      {"FileIO show dialog", false}, {"FileIO dialog reference behavior", 0},
                      {"FileIO dialog merge materials", true}, {"FileIO dialog center in origin", true},
                      {"FileIO dialog put on ground", true}, {"BCADOptions max parallel tasks", 7},
                      {"FileIO converter output format", std::string("LUMO")},
                      // stored for the host, never pushed
                      {"Loader compress texture mode", 2}, {"Loader parallel loading", true}}
            << QStringList{"lmFileIO::enableVerifyGeometry(false)", "lmFileIO::enableOptimizeGeometry(true)",
                           "lmController::setShowImportOptions(false)", "lmFileIO::setImportCreateReferences(false)",
                           "lmFileIO::setImportMergeMaterials(true)",
                           "lmController::setImportOptionsCenterInOrigin(true)",
                           "lmController::setImportOptionsPutOnGround(true)",
                           "lmFileIO::setMaxParallelImportTasks(7)", "lmFileIO::setConverterOutputFormat(10)"}
            << none;
        QTest::newRow("FileIO references 2, format lumo") << "FileIO" << false
            << Stored{{"FileIO dialog reference behavior", 2}, {"FileIO converter output format", std::string("lumo")}}
            << QStringList{"lmFileIO::setImportCreateReferences(false)"} << none;
        QTest::newRow("FileIO unreadable keys") << "FileIO" << false
            << Stored{{"Loader verify geometry only", 1}, {"FileIO show dialog", {}},
                      {"BCADOptions max parallel tasks", {}},
                      {"FileIO converter output format", QStringLiteral("LUMO")}}
            << none
            << QStringList{"lmFileIO::enableVerifyGeometry", "lmController::setShowImportOptions",
                           "lmFileIO::setMaxParallelImportTasks", "lmFileIO::setConverterOutputFormat"};

        QTest::newRow("OSB best, lossy, old format") << "OSB" << false
            << Stored{{"OsbFileIO compression type", 3}, {"OsbFileIO texture compression type", 2},
                      {"OsbFileIO compress quality", 75}, {"OsbFileIO old format", true},
                      {"OsbFileIO reader crc test", true}, {"OsbFileIO pack indices", false}}
            << QStringList{"OpenSGFileIO::setCompressionType(4)", "OpenSGFileIO::setNewFormat(false)",
                           "lmFileIO::setReaderCRCTest(true)",
                           osb("inlineTextures=true,compressTextures=true,texturesCompressionQuality=75,"
                               "texturesImageType=jpeg")}
            << none;
        QTest::newRow("OSB off, lossless, no inline") << "OSB" << false
            << Stored{{"OsbFileIO compression type", 0}, {"OsbFileIO texture compression type", 1},
                      {"OsbFileIO inline textures", false}}
            << QStringList{"OpenSGFileIO::setCompressionType(1)",
                           osb("inlineTextures=false,compressTextures=true,texturesCompressionQuality=85,"
                               "texturesImageType=png")}
            << none;
        QTest::newRow("OSB types beyond the combos") << "OSB" << false
            << Stored{{"OsbFileIO compression type", 4}, {"OsbFileIO texture compression type", 7}}
            << QStringList{"OpenSGFileIO::setCompressionType(5)",
                           osb("inlineTextures=true,compressTextures=true,texturesCompressionQuality=85,"
                               "texturesImageType=jpeg")}
            << none;
        QTest::newRow("OSB fast stored as 1, no texture type") << "OSB" << false
            << Stored{{"OsbFileIO compression type", 1}, {"OsbFileIO texture compression type", -1}} << none << none;
        QTest::newRow("OSB missing writer crc, project switches") << "OSB" << false
            << Stored{{"OsbFileIO reader crc test", true}, {"OsbFileIO writer crc test", {}},
                      {"VpbFileIO Incremental save enabled", {}},
                      {"VpbFileIO Maximal number of increments", 0u}, {"VpbFileIO execute embedded script", false},
                      {"VpbFileIO show thumbnail preview", false}}
            << QStringList{"lmFileIO::setReaderCRCTest(true)", "lmFileIO::setWriterCRCTest(true)",
                           "lmFileIO::setIncrementalSaveLimit(0)", "lmFileIO::setExecuteEmbeddedScript(false)",
                           "lmFileIO::setShowPreviewHint(false)"}
            << QStringList{"lmFileIO::enableIncrementalSave"};
        QTest::newRow("OSB import follows the LUMO keys") << "OSB" << false
            << Stored{{"LUMOOptions import smart reference behavior", 5}, {"LUMOOptions import create as smart", true}}
            << QStringList{"write(\"LUMO\", 3, true)", "write(\"OpenSG\", 3, true)"} << none;
        QTest::newRow("OSB unreadable behaviour removes references") << "OSB" << false
            << Stored{{"LUMOOptions import smart reference behavior", 2.0},
                      {"OpenSGOptions import smart reference behavior", 3}}
            << QStringList{"write(\"LUMO\", 3, false)", "write(\"OpenSG\", 3, false)"} << none;
        QTest::newRow("OSB essentials") << "OSB" << true
            << Stored{{"OsbFileIO compression type", 3}, {"OsbFileIO inline textures", false},
                      {"OsbFileIO reader crc test", false}, {"OsbFileIO writer crc test", false}}
            << QStringList{"lmFileIO::setReaderCRCTest(true)", "lmFileIO::setWriterCRCTest(true)"} << none;

        QTest::newRow("Kova essentials defaults") << "Kova" << true << Stored{}
            << QStringList{kb("", false, false, "millimeter", "millimeter")} << none;
        QTest::newRow("Kova fixed reader switches") << "Kova" << false
            << Stored{{"KovaFileIO multitexture env combiner", true}, {"KovaFileIO autoload shadow geometry", false},
                      {"KovaFileIO shadow geometry", true}, {"KovaFileIO shadow merge", false}}
            << none << none;
        QTest::newRow("Kova every item") << "Kova" << false
            << Stored{{"KovaFileIO kova location", QStringLiteral("/opt/k\u00f6va")},
                      {"KovaFileIO force grayscale shadow texture", false},
                      {"KovaFileIO local material library", false}, {"KovaFileIO units", std::string("inch")},
                      {"KovaFileIO import units", std::string("kovaunits")}}
            << QStringList{kb("kovaLocation=\\\"/opt/k\u00f6va\\\",", false, false, "inch", "kovaunits")} << none;
        QTest::newRow("Kova missing units") << "Kova" << false
            << Stored{{"KovaFileIO units", {}}, {"KovaFileIO import units", {}}}
            << QStringList{kb("", true, true, "ignore", "ignore")} << none;

        QTest::newRow("WRL catia") << "WRL" << false
            << Stored{{"WrlFileIO inline textures", true}, {"WrlFileIO reader optimization", 1}}
            << wrl("inlineTextures=true,optimizationCatia=true") << none;
        QTest::newRow("WRL pro engineer") << "WRL" << false << Stored{{"WrlFileIO reader optimization", 2}}
            << wrl("inlineTextures=false,optimizationProEngineer=true") << none;
        QTest::newRow("WRL optimisation beyond the combo") << "WRL" << false
            << Stored{{"WrlFileIO inline textures", true}, {"WrlFileIO reader optimization", 3}}
            << wrl("inlineTextures=true") << none;
    }

    void applyPushesTheStoredValuesInOrder()
    {
        QFETCH(QString, page);
        QFETCH(bool, essentials);
        QFETCH(Stored, stored);
        QFETCH(QStringList, changed);
        QFETCH(QStringList, skipped);
        if (essentials)
            lmHostSettings::setEdition(lmHostSettings::Essentials);
        const std::unique_ptr<lmPreferences> category = makePage(page);
        start(*category);
        for (const auto &entry : stored)
            entry.second.empty() ? lmPreferences::getData().remove(entry.first) : setStored(entry.first, entry.second);

        QStringList expected = kDefaultApply.value(page);
        for (const QString &line : changed) {
            const auto it = std::find_if(expected.begin(), expected.end(),
                                         [&](const QString &call) { return callOf(call) == callOf(line); });
            QVERIFY2(it != expected.end(), qPrintable(line));
            *it = line;
        }
        for (const QString &call : skipped)
            expected.erase(std::remove_if(expected.begin(), expected.end(),
                                          [&](const QString &line) { return callOf(line) == call; }),
                           expected.end());
        lmStderrCapture wrongTypeReports;
        QCOMPARE(applied(*category), expected);
    }

    // Rows: a page, values stored over its defaults, a combo and the item it
    // shows after an update, whichever item it showed before ("" keeps that).
    void updateShowsTheStoredChoice_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<Stored>("stored");
        QTest::addColumn<QString>("combo");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char *name, const char *page, const char *key, const boost::any &value,
                            const char *combo, const char *shown) {
            QTest::newRow(name) << page << Stored{{key, value}} << combo << shown;
        };
        row("size not offered", "FileIO", "Loader compress texture size", 100, "_texture_compression_size", "");
        row("LUMO and a blank", "FileIO", "FileIO converter output format", std::string("LUMO "),
            "m_converterOutputFormat", "OpenSG");
        row("references 2", "FileIO", "FileIO dialog reference behavior", 2, "_referenceBehavior",
            "Import Content Only");
        for (const auto &c : {std::make_pair(0, "Off"), std::make_pair(1, "Fast"), std::make_pair(2, "Fast"),
                              std::make_pair(4, "")})
            row(qPrintable(QStringLiteral("compression %1").arg(c.first)), "OSB", "OsbFileIO compression type", c.first,
                "_compression", c.second);
        row("remove references", "OSB", "LUMOOptions import smart reference behavior", 5, "m_importBehavior",
            "Remove References");
        row("units", "Kova", "KovaFileIO units", std::string("meter"), "_export_units", "Meter");
        row("units not lower case", "Kova", "KovaFileIO import units", std::string("Yard"), "_import_units", "");
        row("optimisation not offered", "WRL", "WrlFileIO reader optimization", 3, "_optimization", "");
    }

    void updateShowsTheStoredChoice()
    {
        QFETCH(QString, page);
        QFETCH(Stored, stored);
        QFETCH(QString, combo);
        QFETCH(QString, shown);
        const std::unique_ptr<lmPreferences> category = makePage(page);
        start(*category);
        auto *control = pageWidget()->findChild<QComboBox *>(combo);
        const int items = control->count();
        for (int before : {0, items - 1}) {
            control->setCurrentIndex(before);
            const QString was = control->currentText();
            setStored(stored[0].first, stored[0].second);
            category->updateGUI();
            QCOMPARE(control->currentText(), shown.isEmpty() ? was : shown);
            QCOMPARE(control->count(), items);
        }
    }

    // Rows: a page, a combo and the item chosen in it (or a check box and
    // "on"), and what the store then holds.
    void storeWritesTheChoice_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("choice");
        QTest::addColumn<QStringList>("held");
        QTest::newRow("size") << "FileIO" << "_texture_compression_size" << "1024"
                              << QStringList{"Loader compress texture size = int 1024"};
        const auto compression = [](const char *item, int type, const char *force) {
            QTest::newRow(item) << "OSB" << "_compression" << item
                                << QStringList{QStringLiteral("OsbFileIO compression type = int %1").arg(type),
                                               QStringLiteral("OsbFileIO force compression = bool ") + force};
        };
        compression("Off", 0, "true");
        compression("Fast", 1, "false");
        QTest::newRow("lossy") << "OSB" << "_image_type" << "Lossy"
                               << QStringList{"OsbFileIO texture compression type = int 2"};
        QTest::newRow("keep references") << "OSB" << "m_importBehavior" << "Keep References"
                                         << QStringList{"LUMOOptions import smart reference behavior = int 2",
                                                        "OpenSGOptions import smart reference behavior = int 2"};
        QTest::newRow("as smart") << "OSB" << "m_importAsSmart" << "on"
                                  << QStringList{"LUMOOptions import create as smart = bool true",
                                                 "OpenSGOptions import create as smart = bool true"};
        QTest::newRow("units") << "Kova" << "_export_units" << "Inch"
                               << QStringList{"KovaFileIO units = string \"inch\""};
        QTest::newRow("import units") << "Kova" << "_import_units" << "KovaUnits"
                                      << QStringList{"KovaFileIO import units = string \"kovaunits\""};
    }

    void storeWritesTheChoice()
    {
        QFETCH(QString, page);
        QFETCH(QString, control);
        QFETCH(QString, choice);
        QFETCH(QStringList, held);
        const std::unique_ptr<lmPreferences> category = makePage(page);
        start(*category);
        QWidget *widget = pageWidget()->findChild<QWidget *>(control);
        if (auto *combo = qobject_cast<QComboBox *>(widget))
            combo->setCurrentIndex(combo->findText(choice));
        else
            qobject_cast<QAbstractButton *>(widget)->setChecked(choice == "on");
        category->storeGUI();
        const QStringList store = storeDump();
        for (const QString &line : held)
            QVERIFY2(store.contains(line), qPrintable(line));
    }

    void fileIOTexturePathTable()
    {
        QTemporaryDir root;
        const QString added = QDir(root.path()).canonicalPath() + "/tex";
        QVERIFY(QDir().mkpath(added));
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        setStored(kPaths, std::vector<std::string>{"/tex/b", "/tex/\xc3\xa4", "/tex/a", added.toUpper().toStdString()});
        fileIO.updateGUI();
        QTableWidget *table = fileIO.page()->_texturepaths;
        QCOMPARE(column0(table), QStringList({added.toUpper(), "/tex/a", "/tex/b", QStringLiteral("/tex/\u00e4")}));
        QCOMPARE(table->item(0, 0)->flags(), Qt::ItemIsSelectable | Qt::ItemIsEnabled);

        // Added, refused as a duplicate (exactly, case counts), cancelled.
        lmDialogAnswerer answerer({lmDialogAnswerer::chooseDirectory(added), lmDialogAnswerer::chooseDirectory(added),
                                   lmDialogAnswerer::clickButton("OK"), lmDialogAnswerer::reject()});
        for (int click = 0; click < 3; ++click)
            QTest::mouseClick(fileIO.page()->_add_button, Qt::LeftButton);
        QStringList rows = column0(table);
        QCOMPARE(rows.size(), 5);
        QVERIFY(rows.contains(added));
        QCOMPARE(answerer.count(), 4);
        QCOMPARE(answerer.seen()[0].title, QStringLiteral("Select Texture Search Directory"));
        QCOMPARE(answerer.seen()[2].title, QStringLiteral("LUMO 2026"));
        QCOMPARE(answerer.seen()[2].text, QStringLiteral("Path already inserted!"));
        QCOMPARE(answerer.seen()[2].buttons, QStringList({"OK"}));

        // Delete takes the first selected row only.
        for (int row : {1, 2, 3})
            table->selectionModel()->select(table->model()->index(row, 0), QItemSelectionModel::Select);
        QTest::mouseClick(fileIO.page()->_sub_button, Qt::LeftButton);
        rows.removeAt(1);
        fileIO.storeGUI();
        std::vector<std::string> stored;
        for (const QString &row : rows)
            stored.push_back(row.toStdString());
        QVERIFY(holds(kPaths, stored));

        // An update without paths empties the table, and storing that removes the key.
        lmPreferences::getData().remove(kPaths);
        fileIO.updateGUI();
        setStored(kPaths, std::vector<std::string>{"/only"});
        fileIO.storeGUI();
        QVERIFY(!lmPreferences::getData().contains(kPaths));
    }

    // Apply's effects outside the call log: the conversion folder's
    // environment variable and the import dialog's Qt setting.
    void fileIOTemporaryPathAndCloseSetting()
    {
        QTemporaryDir root;
        const QString existing = QDir(root.path()).canonicalPath() + QStringLiteral("/t\u00ebmp");
        QVERIFY(QDir().mkpath(existing));
        lmFileIOPreferencesGUII fileIO;
        start(fileIO);
        QLineEdit *tmpPath = fileIO.page()->_tmp_path;
        lmDialogAnswerer answerer({lmDialogAnswerer::chooseDirectory(existing), lmDialogAnswerer::reject()});
        QTest::mouseClick(fileIO.page()->_tmp_path_button, Qt::LeftButton);
        QCOMPARE(answerer.seen()[0].title, QStringLiteral("Select Temporary File Path"));
        fileIO.apply();
        QCOMPARE(qgetenv(kTmpDirVariable), existing.toUtf8());
        QTest::mouseClick(fileIO.page()->_tmp_path_button, Qt::LeftButton); // cancelled: the field empties
        QCOMPARE(answerer.count(), 2);
        QVERIFY(tmpPath->text().isEmpty());

        // A folder that does not exist is kept as typed and only reported.
        qputenv(kTmpDirVariable, "/previous");
        tmpPath->setText(root.path() + "/missing");
        fileIO.storeGUI();
        fileIO.apply();
        QCOMPARE(qgetenv(kTmpDirVariable), QByteArray("/previous"));
        QCOMPARE(lmHostSettings::errorLog(), QStringList({"FileIO preferences: tmp path doesn't exist!"}));
        QVERIFY(holds("FileIO tmp path", root.path() + "/missing"));

        // The page, not the store, decides: an empty field empties the variable.
        tmpPath->clear();
        fileIO.apply();
        QVERIFY(qEnvironmentVariableIsSet(kTmpDirVariable) && qgetenv(kTmpDirVariable).isEmpty());
        QCOMPARE(lmHostSettings::errorLog().size(), 1);

        QCOMPARE(closeOnSuccessSetting(), QVariant(true));
        fileIO.page()->_closeDialogOnSuccessfulImport->setChecked(false);
        fileIO.storeGUI();
        QVERIFY(unchangedKeys().empty()); // nothing is change-tracked
        fileIO.apply();
        QCOMPARE(closeOnSuccessSetting(), QVariant(false));
        setStored("FileIO close dialog on successful import", std::string("true")); // unreadable: left alone
        fileIO.apply();
        QCOMPARE(closeOnSuccessSetting(), QVariant(false));
    }

    void osbQualityAndIncrementLimitFollowTheirSwitches()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        lmOsbPreferencesGUIW *page = osb.page();
        // Picked from the keyboard: only "Lossy" takes a quality.
        for (bool lossy : {false, true}) {
            QTest::keyClick(page->_image_type, Qt::Key_Down);
            QCOMPARE(page->_compress_quality->isEnabled(), lossy);
        }
        osb.storeGUI();
        QVERIFY(holds("OsbFileIO texture compression type", 2));
        setStored("OsbFileIO texture compression type", 0);
        osb.updateGUI();
        QVERIFY(!page->_compress_quality->isEnabled());

        page->_incrementalSave->setChecked(false);
        QVERIFY(!page->_incrementLimit->isEnabled());
        page->_incrementLimit->setValue(0);
        QCOMPARE(page->_incrementLimit->text(), QStringLiteral("Unlimited"));
    }

    void osbRetiredTextureKeysMigrateOnce()
    {
        lmOsbPreferencesGUII osb;
        start(osb);
        const struct
        {
            bool compress;
            const char *imageType, *shown;
        } cases[] = {{false, "png", "None"}, {true, "png", "Lossless"}, {true, "PNG", "Lossy"}};
        for (const auto &c : cases) {
            setStored("OsbFileIO compress textures", c.compress);
            setStored("OsbFileIO textures image type", std::string(c.imageType));
            osb.updateGUI();
            QCOMPARE(osb.page()->_image_type->currentText(), QString(c.shown));
            QVERIFY(!lmPreferences::getData().contains("OsbFileIO compress textures"));
            QVERIFY(!lmPreferences::getData().contains("OsbFileIO textures image type"));
        }
        // One retired key alone is not migrated and stays.
        setStored("OsbFileIO compress textures", true);
        setStored("OsbFileIO texture compression type", 1);
        osb.updateGUI();
        QCOMPARE(osb.page()->_image_type->currentText(), QStringLiteral("Lossless"));
        QVERIFY(lmPreferences::getData().contains("OsbFileIO compress textures"));
    }

    void osbEssentialsEditionForcesItsChoices()
    {
        lmHostSettings::setEdition(lmHostSettings::Essentials);
        lmOsbPreferencesGUII osb;
        start(osb);
        QVERIFY(holds("OsbFileIO reader crc test", true) && holds("OsbFileIO writer crc test", true));
        lmOsbPreferencesGUIW *page = osb.page();
        QVERIFY(page->_inline_textures_frame->isHidden());
        QVERIFY(page->_validate->isHidden());
        QVERIFY(page->_reader_frame->isHidden());

        setStored("OsbFileIO compression type", 3);
        osb.updateGUI();
        QCOMPARE(page->_compression->currentText(), QStringLiteral("Fast"));
        page->_compression->setCurrentIndex(2);
        page->_crc->setChecked(false);
        page->_validate->setChecked(false);
        osb.storeGUI();
        QVERIFY(holds("OsbFileIO compression type", 1));
        QVERIFY(holds("OsbFileIO reader crc test", true) && holds("OsbFileIO writer crc test", true));
    }

    void kovaLocationChooserConvertsOrKeeps()
    {
        QTemporaryDir root;
        const QString chosen = QDir(root.path()).canonicalPath() + "/kova\\dir";
        QVERIFY(QDir().mkpath(chosen));
        lmKovaPreferencesGUII kova;
        start(kova);
        QLineEdit *location = kova.page()->_kova_location;
        lmDialogAnswerer answerer({lmDialogAnswerer::chooseDirectory(chosen), lmDialogAnswerer::reject()});
        for (int click = 0; click < 2; ++click) { // chosen, cancelled
            QTest::mouseClick(kova.page()->_set_kova_location, Qt::LeftButton);
            QCOMPARE(location->text(), QDir(root.path()).canonicalPath() + "/kova/dir");
        }
        QCOMPARE(answerer.count(), 2);
        QCOMPARE(answerer.seen()[0].title, QStringLiteral("Set Kova Location"));
        QVERIFY(holds("KovaFileIO kova location", QString())); // only storing the page writes it
    }

    // Rows: the new text of the level 0.1 beside 1, and whether it is taken.
    void tesselationLevelEdits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("taken");
        QTest::newRow("zero") << "0" << false;
        QTest::newRow("no number") << "abc" << false;
        QTest::newRow("negative") << "-2" << false;
        QTest::newRow("infinite") << "inf" << false;
        QTest::newRow("positive, sorted again") << "5" << true;
    }

    void tesselationLevelEdits()
    {
        QFETCH(QString, text);
        QFETCH(bool, taken);
        lmTesselationPreferencesGUII tesselation;
        start(tesselation);
        setStored(kQuality, std::vector<float>{1.0f, 0.1f});
        tesselation.updateGUI();
        QTreeWidget *list = tesselation.page()->_quality;
        lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("OK")});
        list->topLevelItem(0)->setText(0, text);
        QCOMPARE(answerer.count(), taken ? 0 : 1);
        if (!taken)
            QCOMPARE(answerer.seen()[0].text, QStringLiteral("Only positive non zero values are allowed!"));
        QCOMPARE(column0(list), taken ? QStringList({"1", "5"}) : QStringList({"0.1", "1"}));
    }

    void tesselationAddAndRemoveLevels()
    {
        lmTesselationPreferencesGUII tesselation;
        start(tesselation);
        lmTesselationPreferencesGUIW *page = tesselation.page();
        QTreeWidget *list = page->_quality;
        QVERIFY(!page->_remove_button->isEnabled());
        QTest::mouseClick(page->_add_button, Qt::LeftButton);
        QTest::mouseClick(page->_add_button, Qt::LeftButton);
        auto *added = dynamic_cast<lmTesselationListViewItem *>(list->topLevelItem(2));
        QVERIFY(added && (added->flags() & Qt::ItemIsEditable));
        added->setText(0, "0.01");
        QCOMPARE(column0(list).first(), QStringLiteral("0.01"));

        list->clearSelection();
        list->topLevelItem(0)->setSelected(true);
        list->topLevelItem(1)->setSelected(true);
        QVERIFY(page->_remove_button->isEnabled());
        QTest::mouseClick(page->_remove_button, Qt::LeftButton);
        QCOMPARE(list->topLevelItemCount(), 1);
        QVERIFY(!page->_remove_button->isEnabled());
        list->selectAll();
        QTest::mouseClick(page->_remove_button, Qt::LeftButton);
        tesselation.storeGUI();
        QVERIFY(holds(kQuality, std::vector<float>{}));
    }
};

QTEST_MAIN(tst_FileIOPages)
#include "tst_fileiopages.moc"

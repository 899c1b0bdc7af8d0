// The host's preferences dialog and session, driven as a person does: the
// camera page and small categories of the test's own, whose hooks leave a
// line in the call log so that the order of the passes shows.
#include "lmHostApplication.h"
#include "lmPreferencesDialog.h"
#include "lmPreferencesSession.h"
#include "lmStoreFile.h"

#include "QLMCollapsibleFrame.h"
#include "categories/lmCameraPreferencesGUI.h"
#include "lmCallLog.h"
#include "lmKeyBinding.h"
#include "lmMessageHelpers.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

namespace {

// A category in the shape of the plug-in's pages: a check box (with a tool
// tip) and a combo, one key each.
class TestCategory : public QObject, public lmPreferences
{
public:
    TestCategory(const QString &group, const QString &page, bool restartNotice = false)
        : lmPreferences(group, page), m_name(page.isEmpty() ? group : page), m_notice(restartNotice),
          m_boolKey((m_name + " grid").toStdString()), m_intKey((m_name + " units").toStdString()),
          m_page(new QWidget)
    {
        auto *layout = new QVBoxLayout(m_page);
        check = new QCheckBox(QStringLiteral("Show %1 lines").arg(m_name));
        check->setToolTip(QStringLiteral("Draws the %1 reference under the model").arg(m_name));
        combo = new QComboBox;
        combo->addItems({QStringLiteral("Metres"), QStringLiteral("%1 inches").arg(m_name)});
        layout->addWidget(check);
        layout->addWidget(combo);
        lmBindKeys(check, {QString::fromStdString(m_boolKey)});
        lmBindKeys(combo, {QString::fromStdString(m_intKey)});
        addPreferencesGUI(m_page);
    }

    ~TestCategory() override
    {
        getData().remove(m_boolKey);
        getData().remove(m_intKey);
        subPreferencesGUI(m_page);
        delete m_page;
    }

    void setDefault(lmMessage &, bool overwrite) override
    {
        getData().set(m_boolKey, false, overwrite);
        getData().set(m_intKey, 0, overwrite);
        // Like a page that tells the user a restart is needed.
        if (m_notice)
            QMessageBox::information(m_page, QStringLiteral("Restart"), QStringLiteral("Restart to use the language."));
    }

    void apply() override
    {
        lmCallLog::record("Test::apply", m_name);
        bool on = false;
        int units = 0;
        if (isChanged(m_boolKey.c_str()) && getFromMessage(getData(), m_boolKey, on))
            lmCallLog::record("Test::setLines", m_name, on);
        if (isChanged(m_intKey.c_str()) && getFromMessage(getData(), m_intKey, units))
            lmCallLog::record("Test::setUnits", m_name, units);
    }

    void updateGUI() override
    {
        lmCallLog::record("Test::updateGUI", m_name);
        bool on = false;
        int units = 0;
        if (getFromMessage(getData(), m_boolKey, on))
            check->setChecked(on);
        if (getFromMessage(getData(), m_intKey, units))
            combo->setCurrentIndex(units);
    }

    void storeGUI() override
    {
        lmCallLog::record("Test::storeGUI", m_name);
        if (!setToMessage(getData(), m_boolKey, check->isChecked(), true))
            addUnchanged(m_boolKey.c_str());
        if (!setToMessage(getData(), m_intKey, combo->currentIndex(), true))
            addUnchanged(m_intKey.c_str());
    }

    QWidget *page() const { return m_page; }
    QCheckBox *check = nullptr;
    QComboBox *combo = nullptr;

private:
    QString m_name;
    bool m_notice;
    std::string m_boolKey, m_intKey;
    QWidget *m_page;
};

float storedFloat(const char *key)
{
    float value = -1;
    getFromMessage(lmPreferences::getData(), key, value);
    return value;
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
}

QByteArray storeDocument()
{
    return lmStoreDocument::write(lmPreferences::getData());
}

} // namespace

class tst_PrefsDialog : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<lmPreferencesSession> m_session;
    std::unique_ptr<lmCameraPreferencesGUII> m_camera;
    std::unique_ptr<TestCategory> m_grid, m_units;

    QString storePath() const { return m_dir->filePath(QStringLiteral("prefs.json")); }

    // Camera, a top-level page and a page under a group, started as the
    // application starts them; the call log then starts empty.
    void startHost()
    {
        m_session = std::make_unique<lmPreferencesSession>(storePath());
        m_session->loadStore();
        m_camera = std::make_unique<lmCameraPreferencesGUII>();
        m_grid = std::make_unique<TestCategory>(QStringLiteral("Grid"), QString());
        m_units = std::make_unique<TestCategory>(QStringLiteral("FileIO"), QStringLiteral("Units"));
        m_session->startUp();
        lmCallLog::clear();
    }

    // On the Units page, out of sight but within reach: a second tab that
    // holds a collapsed frame with a bound check box; and a control hidden
    // for good.
    struct OutOfSight
    {
        QTabWidget *tabs;
        QLMCollapsibleFrame *frame;
        QCheckBox *stitch;
    };
    OutOfSight addOutOfSightControls()
    {
        auto *tabs = new QTabWidget;
        tabs->addTab(new QLabel(QStringLiteral("Mesh LODs")), QStringLiteral("Import"));
        auto *frame = new QLMCollapsibleFrame;
        frame->setTitle(QStringLiteral("Chord Deviation"));
        auto *stitch = new QCheckBox(QStringLiteral("Stitch open edges"));
        lmBindKeys(stitch, {QStringLiteral("Units stitching tolerance")});
        (new QVBoxLayout(frame))->addWidget(stitch);
        frame->setCollapsed(true);
        auto *advanced = new QWidget;
        (new QVBoxLayout(advanced))->addWidget(frame);
        tabs->addTab(advanced, QStringLiteral("Advanced"));
        auto *legacy = new QCheckBox(QStringLiteral("Use legacy loader"));
        legacy->hide();
        m_units->page()->layout()->addWidget(tabs);
        m_units->page()->layout()->addWidget(legacy);
        return {tabs, frame, stitch};
    }

    // The camera page with the stored field of view at 60, saved.
    void storeFov60(lmPreferencesDialog &dialog)
    {
        m_camera->page()->_fov->setValue(60.0);
        dialog.applyChanges();
        QCOMPARE(storedFloat("Camera fov"), 60.0f);
        lmCallLog::clear();
    }

private slots:
    void init()
    {
        lmResetHost();
        m_dir = std::make_unique<QTemporaryDir>();
    }

    void cleanup()
    {
        m_units.reset();
        m_grid.reset();
        m_camera.reset();
        m_session.reset();
    }

    void startUpLetsStoredValuesWinAndPushesEveryKey()
    {
        lmMessage stored;
        stored.set("Camera fov", 50.0f, true);
        stored.set("Grid grid", true, true);
        QVERIFY(lmStoreFile(storePath()).save(stored));

        m_session = std::make_unique<lmPreferencesSession>(storePath());
        QVERIFY(m_session->loadStore().isEmpty());
        m_camera = std::make_unique<lmCameraPreferencesGUII>();
        m_grid = std::make_unique<TestCategory>(QStringLiteral("Grid"), QString());
        m_session->startUp();
        // Pages show what was loaded before the first apply reads them.
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "Test::updateGUI(\"Grid\")",
                                         "lmOSGWidget::setFov(-1, 50) [undo blocked]",
                                         "lmOSGWidget::setGlobalEyeSeparation(63)",
                                         "lmOSGWidget::setGlobalZeroParallaxDistance(1500)",
                                         "lmOSGWidget::setPowerwallWindow(-1, 1600, 1200, 1000)",
                                         "Test::apply(\"Grid\")",
                                         "Test::setLines(\"Grid\", true)",
                                         "Test::setUnits(\"Grid\", 0)",
                                     }));
        QCOMPARE(m_camera->page()->_fov->value(), 50.0);
        QVERIFY(m_grid->check->isChecked());

        const auto differences = m_session->differences();
        QCOMPARE(int(differences.size()), 2);
        QCOMPARE(boost::any_cast<float>(differences[0].defaultValue), 45.0f);
    }

    void okAndApplyStoreThenApplyThenSave()
    {
        startHost();
        lmPreferencesDialog dialog(*m_session);
        dialog.show();
        m_camera->page()->_fov->setValue(60.0);
        m_units->combo->setCurrentIndex(1);
        // Apply is offered once the dialog has seen the edits.
        QVERIFY(!dialog.button(QDialogButtonBox::Apply)->isEnabled());
        QCoreApplication::processEvents();
        QVERIFY(dialog.button(QDialogButtonBox::Apply)->isEnabled());
        dialog.button(QDialogButtonBox::Apply)->click();
        QVERIFY(!dialog.button(QDialogButtonBox::Apply)->isEnabled());
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "Test::storeGUI(\"Grid\")",
                                         "Test::storeGUI(\"Units\")",
                                         "lmOSGWidget::setFov(-1, 60) [undo blocked]",
                                         "Test::apply(\"Grid\")",
                                         "Test::apply(\"Units\")",
                                         "Test::setUnits(\"Units\", 1)",
                                     }));
        QVERIFY(dialog.isVisible());
        for (const auto &category : lmPreferencesHost::categories())
            QVERIFY(lmPreferencesHost::unchangedKeys(category).empty());
        QCOMPARE(fileBytes(storePath()), storeDocument());
        QVERIFY(storeDocument().contains("\"Camera fov\": {\"type\": \"float\", \"value\": 60}"));

        // Only the edited key is pushed, though every category is asked.
        lmCallLog::clear();
        m_grid->check->setChecked(true);
        dialog.button(QDialogButtonBox::Ok)->click();
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "Test::storeGUI(\"Grid\")",
                                         "Test::storeGUI(\"Units\")",
                                         "Test::apply(\"Grid\")",
                                         "Test::setLines(\"Grid\", true)",
                                         "Test::apply(\"Units\")",
                                     }));
        QVERIFY(!dialog.isVisible());
        QVERIFY(fileBytes(storePath()).contains("\"Grid grid\": {\"type\": \"bool\", \"value\": true}"));
    }

    void restoreDefaultsThenCancelChangesNothing()
    {
        startHost();
        lmPreferencesDialog dialog(*m_session);
        dialog.show();
        storeFov60(dialog);
        m_grid->check->setChecked(true);
        dialog.applyChanges();
        lmCallLog::clear();
        const QByteArray store = storeDocument();
        const QByteArray file = fileBytes(storePath());
        const QByteArray backup = fileBytes(storePath() + ".bak");

        QVERIFY(dialog.showPage(m_camera->page()));
        dialog.button(QDialogButtonBox::RestoreDefaults)->click();
        QCOMPARE(storedFloat("Camera fov"), 45.0f);
        QCOMPARE(m_camera->page()->_fov->value(), 45.0);
        QVERIFY(m_grid->check->isChecked());
        dialog.restoreAllButton()->click();
        QVERIFY(!m_grid->check->isChecked());
        QVERIFY(lmCallLog::lines().endsWith("Test::updateGUI(\"Units\")"));

        // Cancel asks before it drops what was not applied: going on
        // editing keeps it all; Discard puts the store back and refreshes the
        // pages, and nothing is pushed.
        m_units->combo->setCurrentIndex(1);
        lmCallLog::clear();
        lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("Cancel"), lmDialogAnswerer::clickButton("Discard")});
        dialog.close(); // the window's close button
        QCOMPARE(answerer.count(), 1);
        QVERIFY(dialog.isVisible());
        QCOMPARE(m_units->combo->currentIndex(), 1);
        QCOMPARE(storedFloat("Camera fov"), 45.0f);
        QVERIFY(lmCallLog::lines().isEmpty());
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QCOMPARE(answerer.count(), 2);
        QCOMPARE(answerer.seen().back().text, QStringLiteral("Discard the changes that were not applied?"));
        QCOMPARE(lmCallLog::lines(), QStringList({"Test::updateGUI(\"Grid\")", "Test::updateGUI(\"Units\")"}));
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QCOMPARE(m_units->combo->currentIndex(), 0);
        QCOMPARE(storeDocument(), store);
        QCOMPARE(fileBytes(storePath()), file);
        QCOMPARE(fileBytes(storePath() + ".bak"), backup);
        QCOMPARE(m_camera->page()->_fov->value(), 60.0);
        QVERIFY(m_grid->check->isChecked());
        QVERIFY(dialog.isBold(m_camera->page()));
        QVERIFY(dialog.isBold(m_grid->page()));
    }

    void restoredPageLosesItsBoldAndPushesEveryKeyOnOk()
    {
        startHost();
        lmPreferencesDialog dialog(*m_session);
        dialog.show();
        const QList<QWidget *> pages{m_camera->page(), m_grid->page(), m_units->page()};
        const auto bold = [&] {
            QList<bool> flags;
            for (QWidget *page : pages)
                flags << dialog.isBold(page);
            return flags;
        };
        QCOMPARE(bold(), QList<bool>({false, false, false}));
        storeFov60(dialog);
        QCOMPARE(bold(), QList<bool>({true, false, false}));
        QVERIFY(dialog.showPage(m_camera->page()));
        dialog.restoreDefaults();
        QCOMPARE(bold(), QList<bool>({false, false, false}));
        dialog.accept();
        // The store already held the defaults when storeGUI ran: the restored
        // category pushes all its keys, the others only what changed.
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "Test::storeGUI(\"Grid\")",
                                         "Test::storeGUI(\"Units\")",
                                         "lmOSGWidget::setFov(-1, 45) [undo blocked]",
                                         "lmOSGWidget::setGlobalEyeSeparation(63)",
                                         "lmOSGWidget::setGlobalZeroParallaxDistance(1500)",
                                         "lmOSGWidget::setPowerwallWindow(-1, 1600, 1200, 1000)",
                                         "Test::apply(\"Grid\")",
                                         "Test::apply(\"Units\")",
                                     }));
        QVERIFY(fileBytes(storePath()).contains("\"Camera fov\": {\"type\": \"float\", \"value\": 45}"));
        QVERIFY(m_session->differences().empty());
        QCOMPARE(bold(), QList<bool>({false, false, false}));
    }

    void searchNarrowsThePages_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("pages");
        QTest::newRow("label") << "zero parallax" << QStringList{"Camera"};
        QTest::newRow("tool tip") << "Units reference" << QStringList{"FileIO/Units"};
        QTest::newRow("combo item") << "METRES" << QStringList{"Grid", "FileIO/Units"};
        QTest::newRow("group title") << "fileio" << QStringList{"FileIO/Units"};
        QTest::newRow("key") << "grid units" << QStringList{"Grid"};
        QTest::newRow("other tab, one letter less") << "stich open" << QStringList{"FileIO/Units"};
        QTest::newRow("collapsed frame") << "chord deviation" << QStringList{"FileIO/Units"};
        QTest::newRow("hidden by the edition") << "legacy loader" << QStringList{};
        QTest::newRow("cleared") << "" << QStringList{"Camera", "Grid", "FileIO/Units"};
    }

    void searchNarrowsThePages()
    {
        QFETCH(QString, typed);
        QFETCH(QStringList, pages);
        startHost();
        addOutOfSightControls();
        lmPreferencesDialog dialog(*m_session);
        dialog.show();
        QTest::keyClicks(dialog.searchField(), QStringLiteral("xyz"));
        dialog.searchField()->clear();
        QTest::keyClicks(dialog.searchField(), typed);
        QCOMPARE(dialog.visiblePages(), pages);
        // The page shown is one the search kept.
        QWidget *shown = dialog.currentPage();
        if (pages.isEmpty())
            QVERIFY(!shown || dialog.itemOf(shown)->isHidden());
        else
            QVERIFY(shown && !dialog.itemOf(shown)->isHidden());
        // Typing fades the field's clear button in and out; Qt frees those
        // animations only once they stop, so let them run out.
        QTest::qWait(250);
    }

    void treeFollowsGroupsInTheOrderPagesCame()
    {
        lmPreferencesSession session;
        auto stl = std::make_unique<TestCategory>(QStringLiteral("FileIO"), QStringLiteral("STL"));
        auto help = std::make_unique<TestCategory>(QStringLiteral("Help"), QString());
        auto fileIO = std::make_unique<TestCategory>(QStringLiteral("FileIO"), QStringLiteral("FileIO"));
        auto tess = std::make_unique<TestCategory>(QStringLiteral("Import"), QStringLiteral("Tesselation"));
        session.startUp();
        auto dialog = std::make_unique<lmPreferencesDialog>(session);
        QTreeWidget *tree = dialog->tree();

        QStringList shape;
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            QTreeWidgetItem *group = tree->topLevelItem(i);
            shape << group->text(0);
            for (int c = 0; c < group->childCount(); ++c)
                shape << "  " + group->child(c)->text(0);
        }
        QCOMPARE(shape, QStringList({"FileIO", "  STL", "Help", "Import", "  Tesselation"}));
        QCOMPARE(dialog->visiblePages(), QStringList({"FileIO/FileIO", "FileIO/STL", "Help", "Import/Tesselation"}));

        // A group without a page of its own opens its first page.
        tree->setCurrentItem(tree->topLevelItem(2));
        QCOMPARE(dialog->currentPage(), tess->page());

        // A group whose own page does not match stays in the tree for the
        // page under it that does, and does not count as found.
        dialog->showPage(fileIO->page());
        dialog->setFilter(QStringLiteral("STL inches"));
        QCOMPARE(dialog->visiblePages(), QStringList({"FileIO/STL"}));
        QCOMPARE(dialog->currentPage(), stl->page());
        QVERIFY(!tree->topLevelItem(0)->isHidden());
        tree->setCurrentItem(tree->topLevelItem(0));
        QCOMPARE(dialog->currentPage(), stl->page());
        dialog->setFilter(QString());

        // A withdrawn page leaves the tree (and the group's place came with
        // it); the dialog hands the others back.
        dialog->showPage(stl->page());
        stl.reset();
        QCOMPARE(dialog->visiblePages(), QStringList({"Help", "FileIO/FileIO", "Import/Tesselation"}));
        QVERIFY(dialog->currentPage());
        QVERIFY(help->page()->parent());
        dialog.reset();
        QVERIFY(!help->page()->parent() && !fileIO->page()->parent());
    }

    void defaultsPassRaisesNoDialogAndLeavesNoTrace()
    {
        startHost();
        // Added after start-up, so the dialog learns its defaults; its notice
        // runs an event loop in which the dialog's deferred refresh is due.
        lmDialogAnswerer answerer({lmDialogAnswerer::accept()});
        TestCategory language(QStringLiteral("MainWindow"), QString(), true);
        language.setDefault(lmPreferences::getData(), false);
        QCOMPARE(answerer.count(), 1);
        lmCallLog::clear();
        const QByteArray before = storeDocument();

        lmPreferencesDialog dialog(*m_session);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog, 5000 * LM_TEST_SCALE));
        QCoreApplication::processEvents(); // the deferred refresh
        QCOMPARE(answerer.count(), 1);
        QVERIFY(lmCallLog::lines().isEmpty());
        QCOMPARE(storeDocument(), before);
        for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages())
            QVERIFY2(!dialog.isBold(page.widget), qPrintable(page.group));
        const lmMessage &defaults = m_session->defaultsOf(lmPreferencesHost::categories().back());
        QCOMPARE(defaults.keys(), std::vector<std::string>({"MainWindow grid", "MainWindow units"}));

        // Restoring its defaults for real does show it.
        QVERIFY(dialog.showPage(language.page()));
        dialog.restoreDefaults();
        QCOMPARE(answerer.count(), 2);
        QCOMPARE(answerer.seen()[1].text, QStringLiteral("Restart to use the language."));
    }

    void screenshotShowsAllOfATallPage()
    {
        startHost();
        // A page much taller than the dialog, with a scroll area of its own.
        auto *inner = new QScrollArea;
        auto *contents = new QWidget;
        auto *rows = new QVBoxLayout(contents);
        for (int i = 0; i < 60; ++i)
            rows->addWidget(new QCheckBox(QStringLiteral("Option %1").arg(i)));
        inner->setWidget(contents);
        inner->setWidgetResizable(true);
        m_units->page()->layout()->addWidget(inner);
        lmPreferencesDialog dialog(*m_session);
        dialog.showPage(m_camera->page());
        const QSize size = dialog.size();

        const QPixmap shot = dialog.grabPage(m_units->page());
        QVERIFY(shot.height() > contents->sizeHint().height());
        QCOMPARE(dialog.size(), size);
        QCOMPARE(dialog.currentPage(), m_camera->page());
        // Page paths become file names.
        QCOMPARE(lmHostApplication::screenshotName("FileIO", "OSB / VPB"), QStringLiteral("FileIO_OSB - VPB"));
        QCOMPARE(lmHostApplication::screenshotName("..", "a\\b:c*?\"<>|\n"), QStringLiteral("page.._a-b-c-------"));
    }

    // A failed save keeps the dialog open with every edit; Retry, Save As
    // and Cancel in the question that follows.
    void failedSaveKeepsTheEditsAndOffersRetryAndSaveAs()
    {
        QFile blocker(m_dir->filePath("plain"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        const QString blocked = m_dir->filePath("plain/prefs.json");
        lmPreferencesSession session(blocked);
        lmCameraPreferencesGUII camera;
        session.startUp();
        lmPreferencesDialog dialog(session);
        dialog.show();
        const QString elsewhere = m_dir->filePath("elsewhere.json");
        lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("Cancel"), lmDialogAnswerer::clickButton("Retry"),
                                   lmDialogAnswerer::clickButton("Save As..."),
                                   lmDialogAnswerer::chooseFile(elsewhere)});
        lmStderrCapture stderrText;
        camera.page()->_fov->setValue(80.0);

        // OK, then Cancel in the question: still open, the edit on the page.
        dialog.button(QDialogButtonBox::Ok)->click();
        QCOMPARE(answerer.count(), 1);
        QVERIFY(dialog.isVisible());
        QStringList offered = answerer.seen()[0].buttons;
        offered.sort();
        QCOMPARE(offered, QStringList({"Cancel", "Retry", "Save As..."}));
        QVERIFY2(answerer.seen()[0].text.startsWith("The preferences were not saved to " + blocked),
                 qPrintable(answerer.seen()[0].text));
        QVERIFY(dialog.noticeBar()->isVisibleTo(&dialog));
        QVERIFY(dialog.noticeBar()->text().contains("cannot create the folder"));
        QVERIFY(stderrText.text().contains("cannot create the folder"));
        QCOMPARE(camera.page()->_fov->value(), 80.0);
        QCOMPARE(storedFloat("Camera fov"), 80.0f);

        // OK again: Retry fails the same way, then Save As writes elsewhere,
        // which is the file from then on; the dialog closes.
        dialog.button(QDialogButtonBox::Ok)->click();
        QCOMPARE(answerer.count(), 4);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(session.storeFile().path(), elsewhere);
        lmMessage saved;
        QVERIFY(lmStoreFile::readFile(elsewhere, saved, nullptr));
        QCOMPARE(*boost::any_cast<float>(&saved.get("Camera fov")), 80.0f);
        QVERIFY(QFileInfo(m_dir->filePath("plain")).isFile());
    }

    // A damaged file is shown in the window at start-up and is replaced only
    // when the user says so, kept beside the new one.
    void damagedFileIsShownAndReplacedOnlyWithConsent()
    {
        const QByteArray damaged("{\"format\": \"lmKernelPreferences-store\", \"vers");
        QFile file(storePath());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(damaged) == damaged.size());
        file.close();
        startHost();
        lmPreferencesDialog dialog(*m_session);
        QVERIFY(dialog.noticeBar()->isVisibleTo(&dialog));
        QVERIFY2(dialog.noticeBar()->text().startsWith("Cannot load the preferences " + storePath()),
                 qPrintable(dialog.noticeBar()->text()));
        QVERIFY(dialog.noticeBar()->text().contains("Starting from the defaults."));

        lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("Cancel"),
                                   lmDialogAnswerer::clickButton("Replace Damaged File")});
        lmStderrCapture quiet;
        m_camera->page()->_fov->setValue(70.0);
        dialog.applyChanges();
        QVERIFY(answerer.seen().at(0).buttons.contains("Replace Damaged File"));
        QCOMPARE(fileBytes(storePath()), damaged);
        dialog.applyChanges();
        QCOMPARE(answerer.count(), 2);
        QCOMPARE(fileBytes(storePath() + ".damaged"), damaged);
        QVERIFY(dialog.noticeBar()->text().contains(storePath() + ".damaged"));
        lmMessage saved;
        QVERIFY(lmStoreFile::readFile(storePath(), saved, nullptr));
        QCOMPARE(*boost::any_cast<float>(&saved.get("Camera fov")), 70.0f);
    }

    // Another instance saves while the dialog is open: what it changed
    // reaches the pages the user has not edited and stays in the file; a key
    // both changed keeps the later save's value.
    void anotherInstancesSaveIsKept()
    {
        startHost();
        lmPreferencesDialog dialog(*m_session);
        m_grid->check->setChecked(true); // the user's pending edit on Grid

        lmMessage theirs;
        theirs = lmPreferences::getData();
        theirs.set("Camera fov", 33.0f, true);
        theirs.set("Grid units", 1, true);
        theirs.set("Units units", 1, true);
        QVERIFY(lmStoreFile(storePath()).save(theirs));

        dialog.takeOutsideChanges();
        QCOMPARE(m_camera->page()->_fov->value(), 33.0);
        QCOMPARE(m_units->combo->currentIndex(), 1);
        // The edited page keeps what the user sees.
        QCOMPARE(m_grid->combo->currentIndex(), 0);
        QVERIFY(m_grid->check->isChecked());

        // The user now also changes the field of view; OK keeps theirs where
        // the user did not change the value, and the user's where both did.
        m_camera->page()->_fov->setValue(44.0);
        lmCallLog::clear();
        dialog.accept();
        lmMessage saved;
        QVERIFY(lmStoreFile::readFile(storePath(), saved, nullptr));
        QCOMPARE(*boost::any_cast<float>(&saved.get("Camera fov")), 44.0f);
        QCOMPARE(*boost::any_cast<int>(&saved.get("Grid units")), 1);
        QCOMPARE(*boost::any_cast<bool>(&saved.get("Grid grid")), true);
        QCOMPARE(*boost::any_cast<int>(&saved.get("Units units")), 1);
        QCOMPARE(storeDocument(), fileBytes(storePath()));
        // The running host gets the values it had not seen.
        QVERIFY(lmCallLog::lines().contains("Test::setUnits(\"Units\", 1)"));
        QCOMPARE(m_grid->combo->currentIndex(), 1);
    }

    // A control is marked while its stored value is not the default (its
    // label in bold) and while it holds an edit not yet applied; its own
    // reset puts back the default of its key alone, which Cancel undoes and
    // OK keeps.
    void markersAndResetFollowOneSetting()
    {
        startHost();
        lmPreferencesDialog dialog(*m_session);
        dialog.show();
        QCheckBox *lines = m_grid->check;
        const auto settle = [] { QCoreApplication::processEvents(); };
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Unmarked));

        lines->setChecked(true);
        settle();
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Pending));
        QVERIFY(dialog.hasPendingEdits(m_grid->page()) && !dialog.hasPendingEdits(m_units->page()));
        QVERIFY(dialog.itemOf(m_grid->page())->font(0).italic());
        QVERIFY(!lines->font().bold());

        dialog.applyChanges();
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Modified));
        QVERIFY(lines->font().bold() && !m_grid->combo->font().bold());
        QVERIFY(dialog.isBold(m_grid->page()) && !dialog.hasPendingEdits(m_grid->page()));
        QCOMPARE(dialog.keyInfo(lines), QStringLiteral("Key \"Grid grid\" (bool): default false, stored true"));

        // Reset from the control's menu, then Cancel: the edit goes.
        std::unique_ptr<QMenu> menu(dialog.contextMenuFor(lines));
        QVERIFY(menu);
        QCOMPARE(menu->actions().size(), 1);
        QCOMPARE(menu->actions().first()->text(), QStringLiteral("Reset to Default (false)"));
        m_grid->combo->setCurrentIndex(1); // another edit on the page stays
        menu->actions().first()->trigger();
        QVERIFY(!lines->isChecked());
        QCOMPARE(m_grid->combo->currentIndex(), 1);
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Modified | lmPreferencesDialog::Pending));
        lmDialogAnswerer discard({lmDialogAnswerer::clickButton("Discard")});
        dialog.reject();
        QVERIFY(lines->isChecked());
        QCOMPARE(m_grid->combo->currentIndex(), 0);
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Modified));

        // Again from the menu, then OK: the default is stored and pushed.
        std::unique_ptr<QMenu>(dialog.contextMenuFor(lines))->actions().first()->trigger();
        lmCallLog::clear();
        dialog.accept();
        QVERIFY(lmCallLog::lines().contains("Test::setLines(\"Grid\", false)"));
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Unmarked));
        QVERIFY(!lines->font().bold() && !dialog.isBold(m_grid->page()));
        // A widget that holds no key has no menu of the dialog's.
        QVERIFY(!dialog.contextMenuFor(m_grid->page()));
    }

    // A result lands on the setting: the tab that holds it, the frame
    // opened, the control in sight and lit; keys and near misses are found.
    void searchLandsOnTheSetting()
    {
        startHost();
        const OutOfSight out = addOutOfSightControls();
        lmPreferencesDialog dialog(*m_session);
        dialog.show();
        dialog.showPage(m_grid->page());

        // One letter less, and a key name.
        QTest::keyClicks(dialog.searchField(), QStringLiteral("stich open"));
        QVERIFY(dialog.results()->isVisible());
        QCOMPARE(dialog.results()->item(0)->text(), QStringLiteral("Stitch open edges \u2014 FileIO / Units"));
        QTest::keyClick(dialog.searchField(), Qt::Key_Down);
        QCOMPARE(dialog.results()->currentRow(), 0);
        QTest::keyClick(dialog.results(), Qt::Key_Return);
        QCOMPARE(dialog.currentPage(), m_units->page());
        QCOMPARE(out.tabs->currentIndex(), 1);
        QVERIFY(!out.frame->isCollapsed());
        QVERIFY(out.stitch->isVisibleTo(m_units->page()));
        QCOMPARE(dialog.highlightedControl(), out.stitch);
        QVERIFY(dialog.isVisible());

        dialog.searchField()->setText(QStringLiteral("Camera fov"));
        QVERIFY(dialog.results()->item(0)->toolTip() == QStringLiteral("Camera fov"));
        // Esc clears the search; a second one closes the dialog, as nothing
        // is pending.
        QTest::keyClick(dialog.searchField(), Qt::Key_Escape);
        QVERIFY(dialog.searchField()->text().isEmpty() && dialog.isVisible());
        QVERIFY(!dialog.results()->isVisible());
        QTest::keyClick(dialog.searchField(), Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QTest::qWait(250); // the field's clear-button animation runs out
    }

    // Size and last page come back in the next dialog.
    void layoutIsRemembered()
    {
        startHost();
        const QString state = m_dir->filePath("dialog.ini");
        {
            lmPreferencesDialog dialog(*m_session);
            dialog.setStateFile(state);
            dialog.show();
            dialog.resize(1000, 700);
            dialog.showPage(m_units->page());
            dialog.accept();
        }
        lmPreferencesDialog again(*m_session);
        again.setStateFile(state);
        QCOMPARE(again.currentPage(), m_units->page());
        QCOMPARE(again.size(), QSize(1000, 700));
    }
};

QTEST_MAIN(tst_PrefsDialog)
#include "tst_prefsdialog.moc"

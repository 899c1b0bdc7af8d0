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
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
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
// tip) and a combo, one key each ("<name> grid", "<name> units").
class TestCategory : public QObject, public lmPreferences
{
public:
    TestCategory(const QString &group, const QString &page)
        : lmPreferences(group, page), m_name(page.isEmpty() ? group : page), m_page(new QWidget)
    {
        check = new QCheckBox("Show " + m_name + " lines");
        check->setToolTip("Draws the " + m_name + " reference under the model");
        combo = new QComboBox;
        combo->addItems({"Metres", m_name + " inches"});
        auto *layout = new QVBoxLayout(m_page);
        layout->addWidget(check);
        layout->addWidget(combo);
        lmBindKeys(check, {QString::fromStdString(key("grid"))});
        lmBindKeys(combo, {QString::fromStdString(key("units"))});
        addPreferencesGUI(m_page);
    }
    ~TestCategory() override
    {
        getData().remove(key("grid"));
        getData().remove(key("units"));
        subPreferencesGUI(m_page);
        delete m_page;
    }
    void setDefault(lmMessage &, bool overwrite) override
    {
        getData().set(key("grid"), false, overwrite);
        getData().set(key("units"), 0, overwrite);
    }
    void apply() override
    {
        lmCallLog::record("Test::apply", m_name);
        bool on = false;
        int units = 0;
        if (isChanged(key("grid").c_str()) && getFromMessage(getData(), key("grid"), on))
            lmCallLog::record("Test::setLines", m_name, on);
        if (isChanged(key("units").c_str()) && getFromMessage(getData(), key("units"), units))
            lmCallLog::record("Test::setUnits", m_name, units);
    }
    void updateGUI() override
    {
        lmCallLog::record("Test::updateGUI", m_name);
        bool on = false;
        int units = 0;
        if (getFromMessage(getData(), key("grid"), on))
            check->setChecked(on);
        if (getFromMessage(getData(), key("units"), units))
            combo->setCurrentIndex(units);
    }
    void storeGUI() override
    {
        lmCallLog::record("Test::storeGUI", m_name);
        if (!setToMessage(getData(), key("grid"), check->isChecked(), true))
            addUnchanged(key("grid").c_str());
        if (!setToMessage(getData(), key("units"), combo->currentIndex(), true))
            addUnchanged(key("units").c_str());
    }
    std::string key(const char *what) const { return (m_name + ' ' + what).toStdString(); }
    QWidget *page() const { return m_page; }
    QCheckBox *check = nullptr;
    QComboBox *combo = nullptr;

private:
    QString m_name;
    QWidget *m_page;
};

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
}

QByteArray storeDocument() { return lmStoreDocument::write(lmPreferences::getData()); }

template <class T>
T savedValue(const QString &path, const char *key)
{
    lmMessage saved;
    lmStoreFile::readFile(path, saved, nullptr);
    const T *value = boost::any_cast<T>(&saved.get(key));
    return value ? *value : T(-1);
}

// The camera's host calls when it pushes every key.
QStringList cameraPushedInFull(int fov)
{
    return {QStringLiteral("lmOSGWidget::setFov(-1, %1) [undo blocked]").arg(fov),
            "lmOSGWidget::setGlobalEyeSeparation(63)", "lmOSGWidget::setGlobalZeroParallaxDistance(1500)",
            "lmOSGWidget::setPowerwallWindow(-1, 1600, 1200, 1000)"};
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
    std::unique_ptr<lmPreferencesDialog> m_dialog;
    struct OutOfSight
    {
        QTabWidget *tabs;
        QLMCollapsibleFrame *frame;
        QCheckBox *stitch;
    } m_out = {};

    QString storePath() const { return m_dir->filePath(QStringLiteral("prefs.json")); }

    // Camera, a top-level page and a page under a group (with the controls
    // out of sight, if asked), started as the application starts them, and
    // the dialog shown; the call log then starts empty.
    lmPreferencesDialog &startHost(bool outOfSight = false)
    {
        m_session = std::make_unique<lmPreferencesSession>(storePath());
        m_session->loadStore();
        m_camera = std::make_unique<lmCameraPreferencesGUII>();
        m_grid = std::make_unique<TestCategory>(QStringLiteral("Grid"), QString());
        m_units = std::make_unique<TestCategory>(QStringLiteral("FileIO"), QStringLiteral("Units"));
        m_session->startUp();
        if (outOfSight)
            m_out = addOutOfSightControls();
        m_dialog = std::make_unique<lmPreferencesDialog>(*m_session);
        m_dialog->show();
        lmCallLog::clear();
        return *m_dialog;
    }

    // On the Units page, out of sight but within reach: a second tab that
    // holds a collapsed frame with a bound check box; and a control hidden
    // for good.
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

private slots:
    void init()
    {
        lmResetHost();
        m_dir = std::make_unique<QTemporaryDir>();
    }

    void cleanup()
    {
        m_dialog.reset();
        m_units.reset();
        m_grid.reset();
        m_camera.reset();
        m_session.reset();
    }

    // Stored values win over the defaults; pages show them before the first
    // apply pushes every key.
    void startUpShowsStoredValuesBeforeTheFirstApply()
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
        QCOMPARE(lmCallLog::lines(), QStringList({"Test::updateGUI(\"Grid\")"}) + cameraPushedInFull(50)
                                         + QStringList({"Test::apply(\"Grid\")", "Test::setLines(\"Grid\", true)",
                                                        "Test::setUnits(\"Grid\", 0)"}));
        QCOMPARE(m_camera->page()->_fov->value(), 50.0);
        QVERIFY(m_grid->check->isChecked());
        QCOMPARE(int(m_session->differences().size()), 2);

        // Accepted twice without a dialog: a key left alone in the first pass
        // and changed in the second is pushed.
        m_grid->combo->setCurrentIndex(1);
        QVERIFY(m_session->accept());
        m_grid->check->setChecked(false);
        lmCallLog::clear();
        QVERIFY(m_session->accept());
        QCOMPARE(lmCallLog::lines().filter("Test::set"), QStringList({"Test::setLines(\"Grid\", false)"}));
    }

    // Apply and OK: every page stored, then every category applied (pushing
    // what changed), then saved; Apply is offered only while edits wait.
    void applyAndOkStoreThenApplyThenSave()
    {
        lmPreferencesDialog &dialog = startHost();
        QPushButton *apply = dialog.button(QDialogButtonBox::Apply);
        QCoreApplication::processEvents();
        QVERIFY(!apply->isEnabled());
        m_camera->page()->_fov->setValue(60.0);
        m_units->combo->setCurrentIndex(1);
        QCoreApplication::processEvents();
        QVERIFY(apply->isEnabled());
        apply->click();
        QVERIFY(!apply->isEnabled());
        QCOMPARE(lmCallLog::lines(), QStringList({"Test::storeGUI(\"Grid\")", "Test::storeGUI(\"Units\")",
                                                  "lmOSGWidget::setFov(-1, 60) [undo blocked]", "Test::apply(\"Grid\")",
                                                  "Test::apply(\"Units\")", "Test::setUnits(\"Units\", 1)"}));
        QVERIFY(dialog.isVisible());
        for (const auto &category : lmPreferencesHost::categories())
            QVERIFY(lmPreferencesHost::unchangedKeys(category).empty());
        QCOMPARE(fileBytes(storePath()), storeDocument());

        lmCallLog::clear();
        m_grid->check->setChecked(true);
        dialog.button(QDialogButtonBox::Ok)->click();
        QCOMPARE(lmCallLog::lines(), QStringList({"Test::storeGUI(\"Grid\")", "Test::storeGUI(\"Units\")",
                                                  "Test::apply(\"Grid\")", "Test::setLines(\"Grid\", true)",
                                                  "Test::apply(\"Units\")"}));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(savedValue<bool>(storePath(), "Grid grid"), true);
    }

    // Restore Defaults (a page) and Restore All Defaults, then Cancel, which
    // asks first: the store, file, backup, pages and bold marks as they were.
    // Restored and accepted, a page loses its bold and its category pushes
    // every key.
    void restoreDefaultsThenCancelOrOk()
    {
        lmPreferencesDialog &dialog = startHost();
        m_camera->page()->_fov->setValue(60.0);
        m_grid->check->setChecked(true);
        dialog.applyChanges();
        dialog.applyChanges();
        const QByteArray store = storeDocument(), file = fileBytes(storePath()), backup = fileBytes(storePath() + ".bak");
        QVERIFY(dialog.showPage(m_camera->page()));
        dialog.button(QDialogButtonBox::RestoreDefaults)->click();
        QVERIFY(m_camera->page()->_fov->value() == 45.0 && m_grid->check->isChecked());
        QVERIFY(!dialog.isBold(m_camera->page()) && dialog.isBold(m_grid->page()));
        dialog.restoreAllButton()->click();
        QVERIFY(!m_grid->check->isChecked());
        m_units->combo->setCurrentIndex(1);
        lmCallLog::clear();

        lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("Cancel"), lmDialogAnswerer::clickButton("Discard")});
        dialog.close(); // the window's close button; Cancel in the question goes on editing
        QVERIFY(answerer.count() == 1 && dialog.isVisible() && m_units->combo->currentIndex() == 1);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QCOMPARE(answerer.count(), 2);
        QCOMPARE(answerer.seen().back().text, QStringLiteral("Discard the changes that were not applied?"));
        QCOMPARE(lmCallLog::lines(), QStringList({"Test::updateGUI(\"Grid\")", "Test::updateGUI(\"Units\")"}));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(storeDocument(), store);
        QCOMPARE(fileBytes(storePath()), file);
        QCOMPARE(fileBytes(storePath() + ".bak"), backup);
        QVERIFY(m_camera->page()->_fov->value() == 60.0 && m_units->combo->currentIndex() == 0);
        QVERIFY(dialog.isBold(m_camera->page()) && dialog.isBold(m_grid->page()));

        dialog.show();
        QVERIFY(dialog.showPage(m_camera->page()));
        dialog.restoreDefaults();
        lmCallLog::clear();
        dialog.accept();
        QCOMPARE(lmCallLog::lines(), QStringList({"Test::storeGUI(\"Grid\")", "Test::storeGUI(\"Units\")"})
                                         + cameraPushedInFull(45)
                                         + QStringList({"Test::apply(\"Grid\")", "Test::apply(\"Units\")"}));
        QVERIFY(!dialog.isBold(m_camera->page()) && dialog.isBold(m_grid->page()));
    }

    // A control is marked while its stored value is not the default (its
    // label in bold) and while it holds an edit not yet applied; its own
    // reset puts back the default of its key alone, which Cancel undoes and
    // OK keeps.
    void markersAndResetFollowOneSetting()
    {
        lmPreferencesDialog &dialog = startHost();
        QCheckBox *lines = m_grid->check;
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Unmarked));
        lines->setChecked(true);
        QCoreApplication::processEvents();
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Pending));
        QVERIFY(dialog.hasPendingEdits(m_grid->page()) && !dialog.hasPendingEdits(m_units->page()));
        QVERIFY(dialog.itemOf(m_grid->page())->font(0).italic() && !lines->font().bold());
        dialog.applyChanges();
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Modified));
        QVERIFY(lines->font().bold() && !m_grid->combo->font().bold());
        QVERIFY(dialog.isBold(m_grid->page()) && !dialog.hasPendingEdits(m_grid->page()));
        QCOMPARE(dialog.keyInfo(lines), QStringLiteral("Key \"Grid grid\" (bool): default false, stored true"));

        std::unique_ptr<QMenu> menu(dialog.contextMenuFor(lines));
        QVERIFY(menu && menu->actions().size() == 1);
        QCOMPARE(menu->actions().first()->text(), QStringLiteral("Reset to Default (false)"));
        m_grid->combo->setCurrentIndex(1); // another edit on the page stays
        menu->actions().first()->trigger();
        QVERIFY(!lines->isChecked());
        QCOMPARE(m_grid->combo->currentIndex(), 1);
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Modified | lmPreferencesDialog::Pending));
        lmDialogAnswerer discard({lmDialogAnswerer::clickButton("Discard")});
        dialog.reject();
        QVERIFY(lines->isChecked() && m_grid->combo->currentIndex() == 0);
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Modified));

        std::unique_ptr<QMenu>(dialog.contextMenuFor(lines))->actions().first()->trigger();
        lmCallLog::clear();
        dialog.accept();
        QVERIFY(lmCallLog::lines().contains("Test::setLines(\"Grid\", false)"));
        QCOMPARE(dialog.markOf(lines), int(lmPreferencesDialog::Unmarked));
        QVERIFY(!lines->font().bold() && !dialog.isBold(m_grid->page()));
        QVERIFY(!dialog.contextMenuFor(m_grid->page())); // holds no key
    }

    void searchNarrowsThePages_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("pages");
        QTest::newRow("label") << "zero parallax" << QStringList{"Camera"};
        QTest::newRow("tool tip") << "Units reference" << QStringList{"FileIO/Units"};
        QTest::newRow("combo item, other case") << "METRES" << QStringList{"Grid", "FileIO/Units"};
        QTest::newRow("group title") << "fileio" << QStringList{"FileIO/Units"};
        QTest::newRow("key") << "grid units" << QStringList{"Grid"};
        QTest::newRow("other tab, one letter less") << "stich open" << QStringList{"FileIO/Units"};
        QTest::newRow("collapsed frame") << "chord deviation" << QStringList{"FileIO/Units"};
        QTest::newRow("hidden for good") << "legacy loader" << QStringList{};
        QTest::newRow("cleared") << "" << QStringList{"Camera", "Grid", "FileIO/Units"};
    }

    void searchNarrowsThePages()
    {
        QFETCH(QString, typed);
        QFETCH(QStringList, pages);
        lmPreferencesDialog &dialog = startHost(true);
        QTest::keyClicks(dialog.searchField(), QStringLiteral("xyz"));
        dialog.searchField()->clear();
        QTest::keyClicks(dialog.searchField(), typed);
        QCOMPARE(dialog.visiblePages(), pages);
        // The page shown is one the search kept.
        QWidget *shown = dialog.currentPage();
        QVERIFY(pages.isEmpty() ? !shown || dialog.itemOf(shown)->isHidden() : shown && !dialog.itemOf(shown)->isHidden());
        // Typing fades the field's clear button in and out; Qt frees those
        // animations only once they stop, so let them run out.
        QTest::qWait(250);
    }

    // A result lands on the setting: the tab that holds it, the frame
    // opened, the control in sight and lit; Esc clears, then closes.
    void searchLandsOnTheSetting()
    {
        lmPreferencesDialog &dialog = startHost(true);
        const OutOfSight out = m_out;
        dialog.showPage(m_grid->page());
        QTest::keyClicks(dialog.searchField(), QStringLiteral("stich open"));
        QVERIFY(dialog.results()->isVisible());
        QCOMPARE(dialog.results()->item(0)->text(), QStringLiteral("Stitch open edges \u2014 FileIO / Units"));
        QTest::keyClick(dialog.searchField(), Qt::Key_Down);
        QCOMPARE(dialog.results()->currentRow(), 0);
        QTest::keyClick(dialog.results(), Qt::Key_Return);
        QCOMPARE(dialog.currentPage(), m_units->page());
        QCOMPARE(out.tabs->currentIndex(), 1);
        QVERIFY(!out.frame->isCollapsed() && out.stitch->isVisibleTo(m_units->page()));
        QCOMPARE(dialog.highlightedControl(), out.stitch);

        dialog.searchField()->setText(QStringLiteral("Camera fov"));
        QCOMPARE(dialog.results()->item(0)->toolTip(), QStringLiteral("Camera fov"));
        QTest::keyClick(dialog.searchField(), Qt::Key_Escape);
        QVERIFY(dialog.searchField()->text().isEmpty() && dialog.isVisible() && !dialog.results()->isVisible());
        QTest::keyClick(dialog.searchField(), Qt::Key_Escape); // nothing pending: no question
        QVERIFY(!dialog.isVisible());
        QTest::qWait(250); // the field's clear-button animation runs out
    }

    // Groups in the order their first page came, a group's own page first;
    // a group without a page of its own opens its first page; a group whose
    // own page does not match a search stays for the page under it that
    // does; a withdrawn page leaves the tree, and the others go back.
    void treeFollowsGroupsInTheOrderPagesCame()
    {
        lmPreferencesSession session;
        auto stl = std::make_unique<TestCategory>("FileIO", "STL");
        TestCategory help("Help", QString()), fileIO("FileIO", "FileIO"), tess("Import", "Tesselation");
        session.startUp();
        auto dialog = std::make_unique<lmPreferencesDialog>(session);
        QTreeWidget *tree = dialog->tree();
        QStringList shape;
        for (QTreeWidgetItemIterator it(tree); *it; ++it)
            shape << ((*it)->parent() ? "  " : "") + (*it)->text(0);
        QCOMPARE(shape, QStringList({"FileIO", "  STL", "Help", "Import", "  Tesselation"}));
        QCOMPARE(dialog->visiblePages(), QStringList({"FileIO/FileIO", "FileIO/STL", "Help", "Import/Tesselation"}));
        tree->setCurrentItem(tree->topLevelItem(2));
        QCOMPARE(dialog->currentPage(), tess.page());
        dialog->setFilter("STL inches");
        QCOMPARE(dialog->visiblePages(), QStringList({"FileIO/STL"}));
        tree->setCurrentItem(tree->topLevelItem(0));
        QCOMPARE(dialog->currentPage(), stl->page());
        dialog->setFilter(QString());
        stl.reset();
        QCOMPARE(dialog->visiblePages(), QStringList({"Help", "FileIO/FileIO", "Import/Tesselation"}));
        QVERIFY(dialog->currentPage());
        dialog.reset();
        QVERIFY(!help.page()->parent() && !fileIO.page()->parent());
    }

    // Another instance saves while the dialog is open: what it changed
    // reaches the pages without pending edits and stays in the file; OK
    // keeps the user's value where both changed one.
    void anotherInstancesSaveIsKept()
    {
        lmPreferencesDialog &dialog = startHost();
        m_grid->check->setChecked(true); // the user's pending edit on Grid
        lmMessage theirs = lmPreferences::getData();
        theirs.set("Camera fov", 33.0f, true);
        theirs.set("Grid units", 1, true);
        theirs.set("Units units", 1, true);
        QVERIFY(lmStoreFile(storePath()).save(theirs));
        dialog.takeOutsideChanges();
        QCOMPARE(m_camera->page()->_fov->value(), 33.0);
        QCOMPARE(m_units->combo->currentIndex(), 1);
        QVERIFY(m_grid->combo->currentIndex() == 0 && m_grid->check->isChecked()); // as the user sees it

        m_camera->page()->_fov->setValue(44.0);
        dialog.accept();
        QCOMPARE(savedValue<float>(storePath(), "Camera fov"), 44.0f);
        QCOMPARE(storeDocument(), fileBytes(storePath()));
        // The running host gets the values it had not seen.
        QVERIFY(lmCallLog::lines().contains("Test::setUnits(\"Units\", 1)"));
        QCOMPARE(m_grid->combo->currentIndex(), 1);
    }

    // A failed save keeps the dialog open with every edit; Cancel, Retry and
    // Save As in the question that follows.
    void failedSaveKeepsTheEditsAndOffersRetryAndSaveAs()
    {
        QFile blocker(m_dir->filePath("plain"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        const QString blocked = m_dir->filePath("plain/prefs.json"), elsewhere = m_dir->filePath("elsewhere.json");
        lmPreferencesSession session(blocked);
        lmCameraPreferencesGUII camera;
        session.startUp();
        lmPreferencesDialog dialog(session);
        dialog.show();
        lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("Cancel"), lmDialogAnswerer::clickButton("Retry"),
                                   lmDialogAnswerer::clickButton("Save As..."), lmDialogAnswerer::chooseFile(elsewhere)});
        lmStderrCapture stderrText;
        camera.page()->_fov->setValue(80.0);

        dialog.button(QDialogButtonBox::Ok)->click();
        QCOMPARE(answerer.count(), 1);
        QVERIFY(dialog.isVisible());
        QStringList offered = answerer.seen()[0].buttons;
        offered.sort();
        QCOMPARE(offered, QStringList({"Cancel", "Retry", "Save As..."}));
        QVERIFY(answerer.seen()[0].text.startsWith("The preferences were not saved to " + blocked));
        QVERIFY(dialog.noticeBar()->isVisibleTo(&dialog) && dialog.noticeBar()->text().contains("cannot create the folder"));
        QVERIFY(stderrText.text().contains("cannot create the folder"));
        QCOMPARE(camera.page()->_fov->value(), 80.0);

        // Retry fails the same way, then Save As writes elsewhere, which is
        // the file from then on; the dialog closes.
        dialog.button(QDialogButtonBox::Ok)->click();
        QCOMPARE(answerer.count(), 4);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(session.storeFile().path(), elsewhere);
        QCOMPARE(savedValue<float>(elsewhere, "Camera fov"), 80.0f);
    }

    // A damaged file is shown in the window at start-up and is replaced only
    // when the user says so, kept beside the new one.
    void damagedFileIsShownAndReplacedOnlyWithConsent()
    {
        const QByteArray damaged("{\"format\": \"lmKernelPreferences-store\", \"vers");
        QFile file(storePath());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(damaged) == damaged.size());
        file.close();
        lmPreferencesDialog &dialog = startHost();
        QVERIFY(dialog.noticeBar()->isVisibleTo(&dialog));
        QVERIFY2(dialog.noticeBar()->text().startsWith("Cannot load the preferences " + storePath())
                     && dialog.noticeBar()->text().contains("Starting from the defaults."),
                 qPrintable(dialog.noticeBar()->text()));
        lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("Cancel"), lmDialogAnswerer::clickButton("Replace Damaged File")});
        lmStderrCapture quiet;
        m_camera->page()->_fov->setValue(70.0);
        dialog.applyChanges();
        QCOMPARE(fileBytes(storePath()), damaged);
        dialog.applyChanges();
        QCOMPARE(answerer.count(), 2);
        QCOMPARE(fileBytes(storePath() + ".damaged"), damaged);
        QVERIFY(dialog.noticeBar()->text().contains(storePath() + ".damaged"));
        QCOMPARE(savedValue<float>(storePath(), "Camera fov"), 70.0f);
    }

    // A page taller than the dialog, with a scroll area of its own, is shot
    // whole, without moving the dialog off its page; page paths make safe
    // file names.
    void screenshotShowsAllOfATallPage()
    {
        lmPreferencesDialog &dialog = startHost();
        auto *inner = new QScrollArea;
        auto *contents = new QWidget;
        auto *rows = new QVBoxLayout(contents);
        for (int i = 0; i < 60; ++i)
            rows->addWidget(new QCheckBox(QStringLiteral("Option %1").arg(i)));
        inner->setWidget(contents);
        inner->setWidgetResizable(true);
        m_units->page()->layout()->addWidget(inner);
        dialog.showPage(m_camera->page());
        const QSize size = dialog.size();
        QVERIFY(dialog.grabPage(m_units->page()).height() > contents->sizeHint().height());
        QCOMPARE(dialog.size(), size);
        QCOMPARE(dialog.currentPage(), m_camera->page());
        QCOMPARE(lmHostApplication::screenshotName("..", "a\\b:c*?\"<>|\n"), QStringLiteral("page.._a-b-c-------"));
    }

    // Size and last page come back in the next dialog.
    void layoutIsRemembered()
    {
        lmPreferencesDialog &dialog = startHost();
        const QString state = m_dir->filePath("dialog.ini");
        dialog.setStateFile(state);
        dialog.resize(1000, 700);
        dialog.showPage(m_units->page());
        dialog.accept();
        m_dialog.reset();
        lmPreferencesDialog again(*m_session);
        again.setStateFile(state);
        QCOMPARE(again.currentPage(), m_units->page());
        QCOMPARE(again.size(), QSize(1000, 700));
    }
};

QTEST_MAIN(tst_PrefsDialog)
#include "tst_prefsdialog.moc"

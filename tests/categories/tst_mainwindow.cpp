// The main window page: the edition default, the tool-button text pairing,
// docking negated on apply, and the language restart notice.
#include "categories/lmMainWindowPreferencesGUI.h"
#include "lmHostSettings.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QtTest>

namespace {

const char *const kLanguage = "MainWindow user language";

void checkRestartNotice(const lmDialogAnswerer::Seen &seen)
{
    QCOMPARE(seen.className, QStringLiteral("QMessageBox"));
    QCOMPARE(seen.title, QStringLiteral("Language Preferences Change"));
    QCOMPARE(seen.buttons, QStringList("OK"));
}

} // namespace

class tst_MainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void toolButtonsTextDefaultsByEdition_data()
    {
        QTest::addColumn<int>("edition");
        QTest::addColumn<bool>("expected");
        QTest::newRow("professional") << int(lmHostSettings::Professional) << false;
        QTest::newRow("design") << int(lmHostSettings::Design) << true;
        QTest::newRow("essentials") << int(lmHostSettings::Essentials) << true;
        QTest::newRow("restricted") << int(lmHostSettings::Restricted) << false;
    }

    void toolButtonsTextDefaultsByEdition()
    {
        QFETCH(int, edition);
        QFETCH(bool, expected);
        lmHostSettings::setEdition(lmHostSettings::Edition(edition));
        lmMainWindowPreferencesGUII mainWindow;
        mainWindow.setDefault(lmPreferences::getData(), true);
        QCOMPARE(lmStored<bool>("MainWindow show tool buttons text"), expected);
        QCOMPARE(lmStored<bool>("MainWindow show button text"), true);
    }

    void theToolbuttonBoxEditsShowButtonText()
    {
        lmMainWindowPreferencesGUII mainWindow;
        lmDialogAnswerer unexpected;
        startPage(mainWindow);
        setStored("MainWindow show tool buttons text", true);
        setStored("MainWindow show button text", false);
        mainWindow.updateGUI();
        QVERIFY(!mainWindow.page()->_show_tool_buttons_text->isChecked());

        mainWindow.page()->_show_tool_buttons_text->setChecked(true);
        setStored("MainWindow show tool buttons text", false);
        QCOMPARE(acceptLog(mainWindow), QStringList("lmController::showButtonText(true)"));
        QCOMPARE(lmStored<bool>("MainWindow show button text"), true);
        QCOMPARE(lmStored<bool>("MainWindow show tool buttons text"), false);
        QCOMPARE(unexpected.count(), 0);
    }

    void appliesOnlyChangedValuesWithDockingNegated()
    {
        lmMainWindowPreferencesGUII mainWindow;
        lmDialogAnswerer unexpected;
        mainWindow.setDefault(lmPreferences::getData(), false);
        mainWindow.apply();
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmController::showFPS(false)",
                                         "lmController::setWindowOpacity(1)",
                                         "lmController::setMainWindowDocking(true)",
                                         "lmController::showButtonText(true)",
                                     }));
        mainWindow.updateGUI();
        QCOMPARE(mainWindow.page()->_opacity->value(), 1.0);
        QCOMPARE(mainWindow.page()->_user_language_options->currentIndex(), -1);

        QCOMPARE(acceptLog(mainWindow), QStringList());
        QCOMPARE(unchangedKeys(), std::vector<std::string>({"MainWindow disable docking", "MainWindow redirect osg log",
                                                            "MainWindow show button text", "MainWindow show fps",
                                                            "MainWindow window opacity"}));

        lmMainWindowPreferencesGUIW *page = mainWindow.page();
        page->_disableDocking->setChecked(true);
        page->_opacity->setValue(0.5);
        page->_show_fps->setChecked(true);
        page->_redirect_osg_log->setChecked(true); // read by the host at start-up only
        QCOMPARE(acceptLog(mainWindow), QStringList({
                                            "lmController::showFPS(true)",
                                            "lmController::setWindowOpacity(0.5)",
                                            "lmController::setMainWindowDocking(false)",
                                        }));
        QCOMPARE(lmStored<bool>("MainWindow redirect osg log"), true);
        QCOMPARE(lmStored<double>("MainWindow window opacity"), 0.5);

        page->_disableDocking->setChecked(false);
        QCOMPARE(acceptLog(mainWindow), QStringList("lmController::setMainWindowDocking(true)"));
        QCOMPARE(unexpected.count(), 0);
    }

    void restartNoticeOnDefaults_data()
    {
        QTest::addColumn<int>("display");
        QTest::addColumn<int>("loaded"); // -2: nothing loaded
        QTest::addColumn<bool>("overwrite");
        QTest::addColumn<int>("notices");
        QTest::newRow("english, none chosen") << int(lmHostSettings::English) << -2 << false << 0;
        QTest::newRow("japanese, none chosen") << int(lmHostSettings::Japanese) << -2 << false << 1;
        QTest::newRow("japanese, japanese loaded") << int(lmHostSettings::Japanese) << 2 << false << 0;
        QTest::newRow("japanese, japanese reset") << int(lmHostSettings::Japanese) << 2 << true << 1;
        QTest::newRow("english, korean loaded") << int(lmHostSettings::English) << 3 << false << 1;
        QTest::newRow("chinese, english loaded") << int(lmHostSettings::Chinese) << 0 << false << 1;
        QTest::newRow("english, out of range") << int(lmHostSettings::English) << 9 << false << 0;
    }

    void restartNoticeOnDefaults()
    {
        QFETCH(int, display);
        QFETCH(int, loaded);
        QFETCH(bool, overwrite);
        QFETCH(int, notices);
        lmHostSettings::setDisplayLanguage(lmHostSettings::Language(display));
        if (loaded != -2)
            setStored(kLanguage, loaded);
        lmMainWindowPreferencesGUII mainWindow;
        QWidget *parent = nullptr;
        lmDialogAnswerer answerer({[&parent](QDialog *dialog) {
            parent = dialog->parentWidget();
            dialog->accept();
        }});
        mainWindow.setDefault(lmPreferences::getData(), overwrite);
        QCOMPARE(answerer.count(), notices);
        if (notices) {
            checkRestartNotice(answerer.seen()[0]);
            QCOMPARE(parent, static_cast<QWidget *>(mainWindow.page()));
        }
    }

    void restartNoticeOncePerChangedLanguage()
    {
        lmMainWindowPreferencesGUII mainWindow;
        startPage(mainWindow);
        QComboBox *languages = mainWindow.page()->_user_language_options;
        lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("OK"), lmDialogAnswerer::reject()});

        languages->setCurrentText("Japanese");
        acceptPage(mainWindow);
        QCOMPARE(answerer.count(), 1);
        checkRestartNotice(answerer.seen()[0]);
        QCOMPARE(lmStored<int>(kLanguage), 2);

        acceptPage(mainWindow); // the same choice again
        QCOMPARE(answerer.count(), 1);

        // Closing the notice does not undo the choice.
        languages->setCurrentText("Korean");
        acceptPage(mainWindow);
        QCOMPARE(answerer.count(), 2);
        QCOMPARE(lmStored<int>(kLanguage), 3);
        // The language is never pushed into the running host.
        QCOMPARE(lmCallLog::lines(), QStringList());
    }

    void wrongTypedKeysPushTheirFallbacks()
    {
        lmMainWindowPreferencesGUII mainWindow;
        startPage(mainWindow);
        setStored("MainWindow show button text", 1);
        setStored("MainWindow window opacity", 0.5f); // float, not double
        setStored("MainWindow disable docking", std::string("yes"));
        setStored(kLanguage, QStringLiteral("Japanese"));
        mainWindow.page()->_opacity->setValue(0.7);
        mainWindow.page()->_user_language_options->setCurrentIndex(1);

        lmDialogAnswerer answerer;
        mainWindow.updateGUI();
        lmPreferencesHost::resetUnchanged();
        mainWindow.apply();
        mainWindow.setDefault(lmPreferences::getData(), false); // an unreadable language shows no notice
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmController::showFPS(false)",
                                         "lmController::setWindowOpacity(1)",
                                         "lmController::setMainWindowDocking(true)",
                                         "lmController::showButtonText(false)",
                                     }));
        QCOMPARE(answerer.count(), 0);

        // The previous language reads as none: a chosen one is new.
        mainWindow.storeGUI();
        QCOMPARE(answerer.count(), 1);
        QCOMPARE(lmStored<int>(kLanguage), 1);
    }
};

QTEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"

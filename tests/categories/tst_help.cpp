// The help page: the default path from the data directory, the path controls
// that follow the location, the directory chooser and the one host call, for
// the popup kind.
#include "categories/lmHelpPreferencesGUI.h"
#include "lmController.h"
#include "lmHostSettings.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

QString toolclipCall(bool simple)
{
    return QStringLiteral("lmController::call(\"updateToolclip\", {useSimpleToolclips=%1}, 0)")
        .arg(simple ? "true" : "false");
}

} // namespace

class tst_Help : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void defaultPathKeepsItsBackslashes()
    {
        lmHostSettings::setDataDir("/opt/lumo");
        lmHelpPreferencesGUII help;
        help.setDefault(lmPreferences::getData(), false);
        QCOMPARE(lmStored<QString>("Help Path"), QStringLiteral("file:////opt/lumo\\ToolClip\\Help"));

        // Built from the data directory each time defaults are written.
        lmHostSettings::setDataDir("C:\\Program Files\\LUMO");
        help.setDefault(lmPreferences::getData(), true);
        QCOMPARE(lmStored<QString>("Help Path"), QStringLiteral("file:///C:\\Program Files\\LUMO\\ToolClip\\Help"));
        help.updateGUI();
        QCOMPARE(help.page()->_help_path->text(), lmStored<QString>("Help Path"));
    }

    void pathControlsFollowTheLocation()
    {
        lmHelpPreferencesGUII help;
        startPage(help);
        lmHelpPreferencesGUIW *page = help.page();
        QVERIFY(page->_help_path->isHidden());
        QVERIFY(page->_help_path_button->isHidden());

        page->_helpLocationComboBox->setCurrentIndex(1);
        QCOMPARE(page->_helpLocationComboBox->currentText(), QStringLiteral("Installed Help"));
        QVERIFY(!page->_help_path->isHidden());
        QVERIFY(!page->_help_path_button->isHidden());
        page->_helpLocationComboBox->setCurrentIndex(0);
        QVERIFY(page->_help_path->isHidden());
        QVERIFY(page->_help_path_button->isHidden());

        // Loaded preferences show them as well.
        setStored("Help Location", 1);
        help.updateGUI();
        QVERIFY(!page->_help_path->isHidden());
    }

    void chosenDirectoryBecomesAFileUrl()
    {
        QTemporaryDir dir;
        lmHostSettings::setDataDir(dir.path());
        lmHelpPreferencesGUII help;
        startPage(help);
        const QString before = help.page()->_help_path->text();

        {
            lmDialogAnswerer answerer({lmDialogAnswerer::reject()});
            help.page()->_help_path_button->click();
            QCOMPARE(answerer.count(), 1);
            QCOMPARE(answerer.seen().front().title, QStringLiteral("Help Path"));
            QCOMPARE(help.page()->_help_path->text(), before);
        }

        QVERIFY(QDir(dir.path()).mkdir("manual"));
        const QString chosen = dir.path() + "/manual";
        lmDialogAnswerer answerer({lmDialogAnswerer::chooseDirectory(chosen)});
        help.page()->_help_path_button->click();
        QCOMPARE(answerer.count(), 1);
        QCOMPARE(help.page()->_help_path->text(), "file:///" + chosen);

        // A path alone reaches the store but not the host.
        QCOMPARE(acceptLog(help), QStringList());
        QCOMPARE(lmStored<QString>("Help Path"), "file:///" + chosen);
    }

    void onlyThePopupKindReachesTheHost()
    {
        lmHelpPreferencesGUII help;
        help.setDefault(lmPreferences::getData(), false);
        help.apply();
        QCOMPARE(lmCallLog::lines(), QStringList({toolclipCall(false)}));
        help.updateGUI();
        QCOMPARE(acceptLog(help), QStringList());

        help.page()->_helpLocationComboBox->setCurrentIndex(1);
        help.page()->_help_path->setText("http://intranet/help");
        QCOMPARE(acceptLog(help), QStringList());
        QCOMPARE(lmStored<int>("Help Location"), 1);

        help.page()->_helpPopupComboBox->setCurrentIndex(1);
        QCOMPARE(acceptLog(help), QStringList({toolclipCall(true)}));
        QCOMPARE(lmStored<int>("Help Popup"), 1);
        help.page()->_helpPopupComboBox->setCurrentIndex(0);
        QCOMPARE(acceptLog(help), QStringList({toolclipCall(false)}));
    }

    void wrongTypedKeysAreSkipped()
    {
        lmHelpPreferencesGUII help;
        startPage(help);
        setStored("Help Location", 1.0f);
        setStored("Help Path", std::string("file:///elsewhere"));
        setStored("Help Popup", true);

        help.updateGUI();
        help.apply();
        // An unreadable popup kind still updates the host, with plain toolclips.
        QCOMPARE(lmCallLog::lines(), QStringList({toolclipCall(false)}));
    }

};

QTEST_MAIN(tst_Help)
#include "tst_help.moc"

// The web interface page: the disabling environment variables and edition,
// the confirmation before the server is enabled, and the apply that always
// stops the server and restarts it by the process kind or the store.
#include "categories/lmWebInterfacePreferencesGUI.h"
#include "lmController.h"
#include "lmHostProcess.h"
#include "lmHostSettings.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"
#include "lmWebInterface.h"

#include <QtTest>

namespace {

const char *const kEnableKey = "WebInterface enable web server2";

const QString kStop = QStringLiteral("lmController::enableWebInterface(false)");
const QString kStart = QStringLiteral("lmController::enableWebInterface(true)");
// A running server is told the stored debug mode after every restart.
const QString kDebugOff = QStringLiteral("lmWebInterface::setDebugMode(false)");

} // namespace

class tst_WebInterface : public QObject
{
    Q_OBJECT

private slots:
    // Neither the caller's environment nor an earlier case may disable the server.
    void init()
    {
        lmResetHost();
        qunsetenv("LUMO_DISABLE_WEBINTERFACE");
        qunsetenv("ZEPH_LUMO_DISABLE_WEBINTERFACE");
    }

    void storedHostListReplacesWhatTheEditHeld()
    {
        lmWebInterfacePreferencesGUII web;
        web.setDefault(lmPreferences::getData(), true);
        setStored("WebInterface white list", std::string("10.0.0.1\nbuild-host"));
        web.page()->_whiteListText->setPlainText("stale");
        web.updateGUI();
        QCOMPARE(web.page()->_whiteListText->toPlainText(), QStringLiteral("10.0.0.1\nbuild-host"));
    }

    void onlyExactlyOneDisables_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("disabled");
        QTest::newRow("LUMO 1") << QByteArray("LUMO_DISABLE_WEBINTERFACE") << QByteArray("1") << true;
        QTest::newRow("ZEPH 1") << QByteArray("ZEPH_LUMO_DISABLE_WEBINTERFACE") << QByteArray("1") << true;
        QTest::newRow("ZEPH yes") << QByteArray("ZEPH_LUMO_DISABLE_WEBINTERFACE") << QByteArray("yes") << false;
        QTest::newRow("LUMO true") << QByteArray("LUMO_DISABLE_WEBINTERFACE") << QByteArray("true") << false;
        QTest::newRow("LUMO 01") << QByteArray("LUMO_DISABLE_WEBINTERFACE") << QByteArray("01") << false;
        QTest::newRow("LUMO 1 blank") << QByteArray("LUMO_DISABLE_WEBINTERFACE") << QByteArray("1 ") << false;
        QTest::newRow("LUMO empty") << QByteArray("LUMO_DISABLE_WEBINTERFACE") << QByteArray("") << false;
    }

    void onlyExactlyOneDisables()
    {
        QFETCH(QByteArray, variable);
        QFETCH(QByteArray, value);
        QFETCH(bool, disabled);
        qputenv(variable.constData(), value);
        {
            lmWebInterfacePreferencesGUII web;
            // Read once, at construction.
            qunsetenv(variable.constData());

            QCOMPARE(web.isDisabled(), disabled);
            QCOMPARE(lmPreferencesHost::pages().size(), std::size_t(disabled ? 0 : 1));
            web.setDefault(lmPreferences::getData(), false);

            // Enabled in the store and a port on the command line: a disabled
            // server is stopped and stays stopped.
            setStored(kEnableKey, true);
            lmHostProcess::setWebInterfacePort(9000);
            web.apply();
            QCOMPARE(lmCallLog::lines(), disabled ? QStringList({kStop}) : QStringList({kStop, kStart, kDebugOff}));
            QCOMPARE(lmController::getWebInterface() != nullptr, !disabled);
        }
    }

    void restrictedEditionNeverRunsTheServer()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        lmHostProcess::setViewer(true);
        lmWebInterfacePreferencesGUII web;
        QVERIFY(web.isDisabled());
        QVERIFY(lmPreferencesHost::pages().empty());
        web.setDefault(lmPreferences::getData(), false);
        setStored("WebInterface debug mode", true);
        web.apply();
        QCOMPARE(lmCallLog::lines(), QStringList({kStop}));
    }

    void processKindRestartsRegardlessOfTheStore_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("restarted");
        QTest::newRow("desktop") << "desktop" << false;
        QTest::newRow("cluster node") << "vserver" << true;
        QTest::newRow("viewer") << "viewer" << true;
        QTest::newRow("analysis mode") << "analysis" << true;
        QTest::newRow("port") << "port" << true;
        QTest::newRow("no port") << "port -1" << false;
        QTest::newRow("pipe") << "pipe" << true;
    }

    void processKindRestartsRegardlessOfTheStore()
    {
        QFETCH(QString, kind);
        QFETCH(bool, restarted);
        lmHostProcess::setVServerNode(kind == "vserver");
        lmHostProcess::setViewer(kind == "viewer");
        lmHostSettings::setAnalysisMode(kind == "analysis");
        lmHostProcess::setWebInterfacePort(kind == "port" ? 8080 : kind == "port -1" ? -1 : 0);
        lmHostProcess::setWebInterfacePipe(kind == "pipe" ? "lumo-pipe" : "");

        lmWebInterfacePreferencesGUII web;
        startPage(web);
        web.page()->_port->setValue(8890);
        QCOMPARE(acceptLog(web), restarted ? QStringList({kStop, kStart, kDebugOff}) : QStringList({kStop, kStop}));
        QCOMPARE(lmStored<bool>(kEnableKey), false);
    }

    void applyActsOnlyOnChangesAndSetsDebugModeOfARunningServer()
    {
        lmWebInterfacePreferencesGUII web;
        startPage(web);

        // Debug mode alone: the server is off, so there is no one to tell.
        web.page()->_debugMode->setChecked(true);
        QCOMPARE(acceptLog(web), QStringList({kStop, kStop}));

        lmCallLog::clear();
        setStored(kEnableKey, true);
        web.apply(); // nothing is marked unchanged after a host load
        QCOMPARE(lmCallLog::lines(), QStringList({kStop, kStart, "lmWebInterface::setDebugMode(true)"}));
        QVERIFY(lmController::getWebInterface()->getDebugMode());

        // A server that fails to start gets no debug mode.
        lmHostProcess::setWebInterfaceStartFails(true);
        QCOMPARE(applyLog(web), QStringList({kStop, kStart}));
        QVERIFY(!lmController::getWebInterface());
    }

    void confirmationAcceptedKeepsTheBoxChecked()
    {
        lmWebInterfacePreferencesGUII web;
        startPage(web);
        lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("Enable")});
        web.page()->_enableWebServer->setChecked(true);

        QCOMPARE(answerer.count(), 1);
        const lmDialogAnswerer::Seen &seen = answerer.seen().front();
        QCOMPARE(seen.className, QStringLiteral("QMessageBox"));
        QCOMPARE(seen.title, QStringLiteral("Enable Web Server"));
        QStringList buttons = seen.buttons;
        buttons.sort();
        QCOMPARE(buttons, QStringList({"Do Not Enable", "Enable"}));
        QVERIFY(web.page()->_enableWebServer->isChecked());

        QCOMPARE(acceptLog(web), QStringList({kStop, kStart, kDebugOff}));
        QCOMPARE(lmStored<bool>(kEnableKey), true);

        // Unchecking asks nothing.
        web.page()->_enableWebServer->setChecked(false);
        QCOMPARE(answerer.count(), 1);
    }

    void confirmationRefusedUnchecksWithoutAskingAgain_data()
    {
        QTest::addColumn<bool>("escape");
        QTest::newRow("Do Not Enable") << false;
        QTest::newRow("closed") << true;
    }

    void confirmationRefusedUnchecksWithoutAskingAgain()
    {
        QFETCH(bool, escape);
        lmWebInterfacePreferencesGUII web;
        startPage(web);
        QSignalSpy toggled(web.page()->_enableWebServer, &QCheckBox::toggled);
        lmDialogAnswerer answerer(
            {escape ? lmDialogAnswerer::reject() : lmDialogAnswerer::clickButton("Do Not Enable")});
        web.page()->_enableWebServer->click();

        QCOMPARE(answerer.count(), 1);
        QVERIFY(!web.page()->_enableWebServer->isChecked());
        QCOMPARE(toggled.count(), 1); // the unchecking was silent
        QCOMPARE(acceptLog(web), QStringList());
    }

    void noConfirmationWhileFillingOrOnAClusterNode()
    {
        {
            lmWebInterfacePreferencesGUII web;
            startPage(web);
            lmDialogAnswerer answerer;
            setStored(kEnableKey, true);
            web.updateGUI();
            QCOMPARE(answerer.count(), 0);
            QVERIFY(web.page()->_enableWebServer->isChecked());
            // Filling is over: the user is asked again.
            web.page()->_enableWebServer->setChecked(false);
            web.page()->_enableWebServer->setChecked(true);
            QCOMPARE(answerer.count(), 1);
        }

        lmResetHost();
        lmHostProcess::setVServerNode(true);
        lmWebInterfacePreferencesGUII web;
        startPage(web);
        QCOMPARE(lmPreferencesHost::pages().size(), std::size_t(1));
        lmDialogAnswerer answerer;
        web.page()->_enableWebServer->setChecked(true);
        QCOMPARE(answerer.count(), 0);
        QVERIFY(web.page()->_enableWebServer->isChecked());
    }

    void allowedHostsFollowTheirControls()
    {
        lmWebInterfacePreferencesGUII web;
        startPage(web);
        lmWebInterfacePreferencesGUIW *page = web.page();
        QVERIFY(!page->_whiteListText->isEnabled());
        page->_whiteList->setChecked(true);
        QVERIFY(page->_whiteListText->isEnabled());
        page->_localhostOnly->setChecked(true);
        QVERIFY(!page->_whiteList->isEnabled());
        QVERIFY(!page->_whiteListText->isEnabled());
        page->_localhostOnly->setChecked(false);
        QVERIFY(page->_whiteListText->isEnabled());

        page->_whiteListText->setPlainText("host-a\nhost-b");
        QCOMPARE(acceptLog(web), QStringList({kStop, kStop}));
        QCOMPARE(lmStored<bool>("WebInterface use white list"), true);
        QCOMPARE(lmStored<std::string>("WebInterface white list"), std::string("host-a\nhost-b"));
    }

    void wrongTypedKeysLeaveTheServerStopped()
    {
        lmWebInterfacePreferencesGUII web;
        startPage(web);
        setStored(kEnableKey, 1);
        setStored("WebInterface port", std::string("8888"));
        setStored("WebInterface debug mode", 1.0f);
        setStored("WebInterface white list", QStringLiteral("qstring"));

        lmDialogAnswerer answerer;
        web.updateGUI();
        web.apply();
        QCOMPARE(answerer.count(), 0);
        QCOMPARE(lmCallLog::lines(), QStringList({kStop}));
    }

    void hostResetStopsTheServerAndForgetsTheCommandLine()
    {
        lmHostProcess::setVServerNode(true);
        lmHostProcess::setWebInterfacePipe("pipe");
        lmHostProcess::setWebInterfaceStartFails(true);
        lmController::enableWebInterface(true);
        QVERIFY(!lmController::getWebInterface());
        lmResetHost();
        QVERIFY(!lmController::isVServerNode());
        QVERIFY(lmController::getWebInterfacePipe().isEmpty());
        lmController::enableWebInterface(true);
        QVERIFY(lmController::getWebInterface());
        lmResetHost();
        QVERIFY(!lmController::getWebInterface());
    }
};

QTEST_MAIN(tst_WebInterface)
#include "tst_webinterface.moc"

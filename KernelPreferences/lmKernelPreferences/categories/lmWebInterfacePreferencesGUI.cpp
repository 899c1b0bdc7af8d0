#include "lmWebInterfacePreferencesGUI.h"

#include "lmController.h"
#include "lmWebInterface.h"

#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include <string>

namespace {

const lmTypedKey<bool> kEnable{"WebInterface enable web server2", false};
const lmTypedKey<int> kPort{"WebInterface port", 8888};
const lmTypedKey<int> kSslPort{"WebInterface ssl port", 8444};
const lmTypedKey<bool> kLocalhostOnly{"WebInterface localhost only", false};
const lmTypedKey<bool> kDebugMode{"WebInterface debug mode", false};
const lmTypedKey<bool> kUseWhiteList{"WebInterface use white list", false};
const lmTypedKey<std::string> kWhiteList{"WebInterface white list", std::string()};
const lmTypedKey<bool> kSecurePython{"WebInterface secure python", true};

const lmKeyTable kKeys{kEnable, kPort, kSslPort, kLocalhostOnly, kDebugMode, kUseWhiteList, kWhiteList, kSecurePython};

// Only exactly "1" forbids the server; "true", "01" or an empty value do not.
bool disabledByEnvironment()
{
    return qgetenv("ZEPH_LUMO_DISABLE_WEBINTERFACE") == "1" || qgetenv("LUMO_DISABLE_WEBINTERFACE") == "1";
}

// Started for a cluster, as a viewer, for analysis or with a port or pipe on
// the command line: the server runs whatever the store says.
bool serverRequiredByProcess()
{
    return lmController::isVServerNode() || lmController::isViewer() || lmController::getAnalysisMode()
        || lmController::getWebInterfacePort() > 0 || !lmController::getWebInterfacePipe().isEmpty();
}

} // namespace

lmWebInterfacePreferencesGUII::lmWebInterfacePreferencesGUII()
    : QObject(nullptr), lmPreferencesPage(this, tr("WebInterface"), QString(), kKeys)
{
    bindings.bind(kEnable, page()->_enableWebServer);
    bindings.bind(kPort, page()->_port);
    bindings.bind(kSslPort, page()->_sslPort);
    bindings.bind(kLocalhostOnly, page()->_localhostOnly);
    bindings.bind(kDebugMode, page()->_debugMode);
    bindings.bind(kUseWhiteList, page()->_whiteList);
    bindings.bind(
        kWhiteList, page()->_whiteListText,
        [](QPlainTextEdit *edit, const std::string &list) {
            edit->clear();
            edit->insertPlainText(QString::fromStdString(list));
        },
        [](const QPlainTextEdit *edit) { return edit->toPlainText().toStdString(); });
    bindings.bind(kSecurePython, page()->_securePython);

    m_disabled = disabledByEnvironment() || lmController::isRestrictedEdition();
    if (m_disabled)
        return;

    addPreferencesGUI(page());
    // A cluster server node has no one to ask.
    if (lmController::isVServerNode())
        return;
    connect(page()->_enableWebServer, &QCheckBox::toggled, this, &lmWebInterfacePreferencesGUII::toggledEnable);
    connect(page()->_localhostOnly, &QCheckBox::toggled, this,
            &lmWebInterfacePreferencesGUII::toggledLocalhostOnly);
    connect(page()->_whiteList, &QGroupBox::toggled, this, &lmWebInterfacePreferencesGUII::toggledWhiteList);
}

void lmWebInterfacePreferencesGUII::apply()
{
    bool changed = false;
    for (const lmPreferenceKey &row : kKeys.rows())
        changed = changed || isChanged(row.key.c_str());
    if (!changed)
        return;

    const lmMessage &store = getData();

    // Stopped first, so that the host reads ports, hosts and the Python
    // restriction afresh from the store when it starts the server again.
    lmController::enableWebInterface(false);

    if (!m_disabled) {
        bool enable = false;
        if (serverRequiredByProcess())
            lmController::enableWebInterface(true);
        else if (kEnable.read(store, enable))
            lmController::enableWebInterface(enable);
    }

    bool debugMode = false;
    if (kDebugMode.read(store, debugMode))
        if (lmWebInterface *webInterface = lmController::getWebInterface())
            webInterface->setDebugMode(debugMode);
}

void lmWebInterfacePreferencesGUII::updateGUI()
{
    m_suppressConfirmation = true;
    loadBound();
    m_suppressConfirmation = false;
}

void lmWebInterfacePreferencesGUII::storeGUI()
{
    storeBound();
}

void lmWebInterfacePreferencesGUII::toggledEnable(bool checked)
{
    if (m_disabled || m_suppressConfirmation || !checked)
        return;

    QMessageBox box(QMessageBox::Warning, tr("Enable Web Server"),
                    tr("Do you really want to enable the Web Server?\n"
                       "The Web Server allows the execution of Python commands from remote locations!"),
                    QMessageBox::NoButton, page());
    box.setInformativeText(tr("Choosing \"Enable\" enables the Web Server.\n"
                              "You are advised to set up a local firewall to protect yourself from unauthorized "
                              "access.\n\n"
                              "Choosing \"Do Not Enable\" leaves the Web Server disabled."));
    QPushButton *enable = box.addButton(tr("Enable"), QMessageBox::AcceptRole);
    QPushButton *doNotEnable = box.addButton(tr("Do Not Enable"), QMessageBox::RejectRole);
    box.setDefaultButton(doNotEnable);
    box.setEscapeButton(doNotEnable);
    box.exec();

    // Anything but an explicit "Enable" leaves the server off; the blocker
    // keeps the unchecking from asking again.
    if (box.clickedButton() != enable) {
        const QSignalBlocker blocker(page()->_enableWebServer);
        page()->_enableWebServer->setChecked(false);
    }
}

void lmWebInterfacePreferencesGUII::toggledLocalhostOnly(bool checked)
{
    // Only local requests are served: a list of allowed hosts means nothing.
    page()->_whiteList->setEnabled(!checked);
}

void lmWebInterfacePreferencesGUII::toggledWhiteList(bool checked)
{
    page()->_whiteListText->setEnabled(checked);
}

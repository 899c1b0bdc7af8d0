#include "lmWebInterfacePreferencesGUI.h"

#include "lmController.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "lmWebInterface.h"

#include <QMessageBox>
#include <QPushButton>
#include <QSignalBlocker>

#include <string>

namespace {

const char *const kEnable = "WebInterface enable web server2";
const char *const kPort = "WebInterface port";
const char *const kSslPort = "WebInterface ssl port";
const char *const kLocalhostOnly = "WebInterface localhost only";
const char *const kDebugMode = "WebInterface debug mode";
const char *const kUseWhiteList = "WebInterface use white list";
const char *const kWhiteList = "WebInterface white list";
const char *const kSecurePython = "WebInterface secure python";

const lmKeyTable kKeys{
    lmKey<bool>(kEnable, false),
    lmKey<int>(kPort, 8888),
    lmKey<int>(kSslPort, 8444),
    lmKey<bool>(kLocalhostOnly, false),
    lmKey<bool>(kDebugMode, false),
    lmKey<bool>(kUseWhiteList, false),
    lmKey<std::string>(kWhiteList, std::string()),
    lmKey<bool>(kSecurePython, true),
};

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
    : QObject(nullptr), lmPreferences(tr("WebInterface"), QString()), m_page(new lmWebInterfacePreferencesGUIW)
{
    m_disabled = disabledByEnvironment() || lmController::isRestrictedEdition();
    if (m_disabled)
        return;

    addPreferencesGUI(m_page);
    // A cluster server node has no one to ask.
    if (lmController::isVServerNode())
        return;
    connect(m_page->_enableWebServer, &QCheckBox::toggled, this, &lmWebInterfacePreferencesGUII::toggledEnable);
    connect(m_page->_localhostOnly, &QCheckBox::toggled, this,
            &lmWebInterfacePreferencesGUII::toggledLocalhostOnly);
    connect(m_page->_whiteList, &QGroupBox::toggled, this, &lmWebInterfacePreferencesGUII::toggledWhiteList);
}

lmWebInterfacePreferencesGUII::~lmWebInterfacePreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmWebInterfacePreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
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
        else if (getFromMessage(store, kEnable, enable))
            lmController::enableWebInterface(enable);
    }

    bool debugMode = false;
    if (getFromMessage(store, kDebugMode, debugMode))
        if (lmWebInterface *webInterface = lmController::getWebInterface())
            webInterface->setDebugMode(debugMode);
}

void lmWebInterfacePreferencesGUII::updateGUI()
{
    const lmMessage &store = getData();
    m_suppressConfirmation = true;
    m_loaded.clear();

    bool checked = false;
    if (getFromMessage(store, kEnable, checked))
        m_page->_enableWebServer->setChecked(checked);
    int port = 0;
    if (getFromMessage(store, kPort, port)) {
        m_page->_port->setValue(port);
        m_loaded.loaded(kPort, m_page->_port, port);
    }
    if (getFromMessage(store, kSslPort, port)) {
        m_page->_sslPort->setValue(port);
        m_loaded.loaded(kSslPort, m_page->_sslPort, port);
    }
    if (getFromMessage(store, kLocalhostOnly, checked))
        m_page->_localhostOnly->setChecked(checked);
    if (getFromMessage(store, kDebugMode, checked))
        m_page->_debugMode->setChecked(checked);
    if (getFromMessage(store, kUseWhiteList, checked))
        m_page->_whiteList->setChecked(checked);
    std::string whiteList;
    if (getFromMessage(store, kWhiteList, whiteList)) {
        m_page->_whiteListText->clear();
        m_page->_whiteListText->insertPlainText(QString::fromStdString(whiteList));
        m_loaded.loaded(kWhiteList, m_page->_whiteListText, whiteList);
    }
    if (getFromMessage(store, kSecurePython, checked))
        m_page->_securePython->setChecked(checked);

    m_suppressConfirmation = false;
}

void lmWebInterfacePreferencesGUII::storeGUI()
{
    lmMessage &store = getData();
    auto write = [this, &store](const char *key, const auto &value) {
        if (!setToMessage(store, key, value, true))
            addUnchanged(key);
    };
    write(kEnable, m_page->_enableWebServer->isChecked());
    write(kPort, m_loaded.value(kPort, m_page->_port, m_page->_port->value()));
    write(kSslPort, m_loaded.value(kSslPort, m_page->_sslPort, m_page->_sslPort->value()));
    write(kLocalhostOnly, m_page->_localhostOnly->isChecked());
    write(kDebugMode, m_page->_debugMode->isChecked());
    write(kUseWhiteList, m_page->_whiteList->isChecked());
    write(kWhiteList,
          m_loaded.value(kWhiteList, m_page->_whiteListText, m_page->_whiteListText->toPlainText().toStdString()));
    write(kSecurePython, m_page->_securePython->isChecked());
}

void lmWebInterfacePreferencesGUII::toggledEnable(bool checked)
{
    if (!m_page || m_disabled || m_suppressConfirmation || !checked)
        return;

    QMessageBox box(QMessageBox::Warning, tr("Enable Web Server"),
                    tr("Do you really want to enable the Web Server?\n"
                       "The Web Server allows the execution of Python commands from remote locations!"),
                    QMessageBox::NoButton, m_page);
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
        const QSignalBlocker blocker(m_page->_enableWebServer);
        m_page->_enableWebServer->setChecked(false);
    }
}

void lmWebInterfacePreferencesGUII::toggledLocalhostOnly(bool checked)
{
    // Only local requests are served: a list of allowed hosts means nothing.
    m_page->_whiteList->setEnabled(!checked);
}

void lmWebInterfacePreferencesGUII::toggledWhiteList(bool checked)
{
    m_page->_whiteListText->setEnabled(checked);
}

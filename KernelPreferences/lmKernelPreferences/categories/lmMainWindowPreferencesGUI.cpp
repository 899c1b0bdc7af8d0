#include "lmMainWindowPreferencesGUI.h"

#include "lmController.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"

#include <QMessageBox>

namespace {

// Read by the host at start-up only; it has no control on the page.
const char *const kShowToolButtonsText = "MainWindow show tool buttons text";
// Bound to the "Show Toolbutton Text" box, despite the similar name above.
const char *const kShowButtonText = "MainWindow show button text";
const char *const kShowFPS = "MainWindow show fps";
const char *const kRedirectOsgLog = "MainWindow redirect osg log";
const char *const kWindowOpacity = "MainWindow window opacity";
const char *const kDisableDocking = "MainWindow disable docking";
// Index of the language combo; -1: none chosen.
const char *const kUserLanguage = "MainWindow user language";

const lmKeyTable kKeys{
    lmKeyComputed<bool>(kShowToolButtonsText,
                        [] { return lmController::isDesignEdition() || lmController::isEssentialsEdition(); }),
    lmKey<bool>(kShowButtonText, true),
    lmKey<bool>(kShowFPS, false),
    lmKey<bool>(kRedirectOsgLog, false),
    lmKey<double>(kWindowOpacity, 1.0),
    lmKey<bool>(kDisableDocking, false),
    lmKey<int>(kUserLanguage, -1),
};

// No choice, or one out of range, means the interface's own English.
lmController::ELanguage languageOf(int userLanguage)
{
    switch (userLanguage) {
    case lmController::Chinese:
    case lmController::Japanese:
    case lmController::Korean:
        return static_cast<lmController::ELanguage>(userLanguage);
    default:
        return lmController::English;
    }
}

} // namespace

lmMainWindowPreferencesGUII::lmMainWindowPreferencesGUII()
    : QObject(nullptr), lmPreferences(tr("MainWindow"), QString()), m_page(new lmMainWindowPreferencesGUIW)
{
    // An opacity is a fraction; a window fully transparent could not be
    // found again to undo it.
    m_page->_opacity->setRange(0.1, 1.0);
    m_page->_opacity->setSteps(0.01, 0.1);
    m_page->_opacity->setDecimals(2);
    m_page->_opacity->setValue(1.0);

    addPreferencesGUI(m_page);
}

lmMainWindowPreferencesGUII::~lmMainWindowPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmMainWindowPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    lmMessage &store = getData();
    kKeys.writeDefaults(store, overwrite);

    // The language takes effect at the next start only.
    int userLanguage = -1;
    if (!getFromMessage(store, kUserLanguage, userLanguage))
        return;
    if (languageOf(userLanguage) != lmController::getDisplayLanguage())
        showRestartNotice();
}

void lmMainWindowPreferencesGUII::apply()
{
    const lmMessage &store = getData();

    // An unreadable key pushes its fallback.
    if (isChanged(kShowFPS)) {
        bool show = false;
        getFromMessage(store, kShowFPS, show);
        lmController::showFPS(show);
    }
    if (isChanged(kWindowOpacity)) {
        double opacity = 1.0;
        getFromMessage(store, kWindowOpacity, opacity);
        lmController::setWindowOpacity(opacity);
    }
    if (isChanged(kDisableDocking)) {
        bool disable = false;
        getFromMessage(store, kDisableDocking, disable);
        // The store says "disable", the host takes "enable".
        lmController::setMainWindowDocking(!disable);
    }
    if (isChanged(kShowButtonText)) {
        bool show = false;
        getFromMessage(store, kShowButtonText, show);
        lmController::showButtonText(show);
    }
}

void lmMainWindowPreferencesGUII::updateGUI()
{
    const lmMessage &store = getData();
    bool flag = false;
    double opacity = 0.0;
    int userLanguage = -1;
    m_loaded.clear();

    if (getFromMessage(store, kShowFPS, flag))
        m_page->_show_fps->setChecked(flag);
    if (getFromMessage(store, kRedirectOsgLog, flag))
        m_page->_redirect_osg_log->setChecked(flag);
    if (getFromMessage(store, kShowButtonText, flag))
        m_page->_show_tool_buttons_text->setChecked(flag);
    if (getFromMessage(store, kWindowOpacity, opacity)) {
        m_page->_opacity->setValue(opacity);
        m_loaded.loaded(kWindowOpacity, m_page->_opacity, opacity);
    }
    if (getFromMessage(store, kDisableDocking, flag))
        m_page->_disableDocking->setChecked(flag);
    // -1 clears the selection.
    if (getFromMessage(store, kUserLanguage, userLanguage)) {
        m_page->_user_language_options->setCurrentIndex(userLanguage);
        m_loaded.loaded(kUserLanguage, m_page->_user_language_options, userLanguage);
    }
}

void lmMainWindowPreferencesGUII::storeGUI()
{
    lmMessage &store = getData();
    auto write = [this, &store](const char *key, const auto &value) {
        if (!setToMessage(store, key, value, true))
            addUnchanged(key);
    };

    write(kShowFPS, m_page->_show_fps->isChecked());
    write(kRedirectOsgLog, m_page->_redirect_osg_log->isChecked());
    write(kShowButtonText, m_page->_show_tool_buttons_text->isChecked());

    // Never pushed, so never marked unchanged; a new choice needs a restart.
    int previous = -1;
    getFromMessage(store, kUserLanguage, previous);
    const int chosen = m_loaded.value(kUserLanguage, m_page->_user_language_options,
                                      m_page->_user_language_options->currentIndex());
    store.set(kUserLanguage, chosen, true);
    if (chosen != previous)
        showRestartNotice();

    write(kWindowOpacity, m_loaded.value(kWindowOpacity, m_page->_opacity, m_page->_opacity->value()));
    write(kDisableDocking, m_page->_disableDocking->isChecked());
}

void lmMainWindowPreferencesGUII::showRestartNotice()
{
    QMessageBox::information(m_page, tr("Language Preferences Change"),
                             tr("Please restart LUMO so that your language changes can take effect."),
                             QMessageBox::Ok, QMessageBox::NoButton);
}

#include "lmMainWindowPreferencesGUI.h"

#include "lmController.h"
#include "QLMSlider.h"

#include <QMessageBox>

namespace {

// Read by the host at start-up only; it has no control on the page.
const char *const kShowToolButtonsText = "MainWindow show tool buttons text";
// Bound to the "Show Toolbutton Text" box, despite the similar name above.
const lmTypedKey<bool> kShowButtonText{"MainWindow show button text", true};
const lmTypedKey<bool> kShowFPS{"MainWindow show fps", false};
const lmTypedKey<bool> kRedirectOsgLog{"MainWindow redirect osg log", false};
const lmTypedKey<double> kWindowOpacity{"MainWindow window opacity", 1.0};
const lmTypedKey<bool> kDisableDocking{"MainWindow disable docking", false};
// Index of the language combo; -1: none chosen.
const lmTypedKey<int> kUserLanguage{"MainWindow user language", -1};

const lmKeyTable kKeys{
    lmKeyComputed<bool>(kShowToolButtonsText,
                        [] { return lmController::isDesignEdition() || lmController::isEssentialsEdition(); }),
    kShowButtonText,
    kShowFPS,
    kRedirectOsgLog,
    kWindowOpacity,
    kDisableDocking,
    kUserLanguage,
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
    : QObject(nullptr), lmPreferencesPage(this, tr("MainWindow"), QString(), kKeys)
{
    // An opacity is a fraction; a window fully transparent could not be
    // found again to undo it.
    page()->_opacity->setRange(0.1, 1.0);
    page()->_opacity->setSteps(0.01, 0.1);
    page()->_opacity->setDecimals(2);
    page()->_opacity->setValue(1.0);

    bindings.bind(kShowFPS, page()->_show_fps);
    bindings.bind(kRedirectOsgLog, page()->_redirect_osg_log);
    bindings.bind(kShowButtonText, page()->_show_tool_buttons_text);
    bindings.bind(kWindowOpacity, page()->_opacity);
    bindings.bind(kDisableDocking, page()->_disableDocking);
    // The language is stored by hand: never marked unchanged, and a new
    // choice asks for a restart.

    addPreferencesGUI(page());
}

void lmMainWindowPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    lmMessage &store = getData();
    lmPreferencesPage::setDefault(store, overwrite);

    // The language takes effect at the next start only.
    int userLanguage = -1;
    if (!kUserLanguage.read(store, userLanguage))
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
        kShowFPS.read(store, show);
        lmController::showFPS(show);
    }
    if (isChanged(kWindowOpacity)) {
        double opacity = 1.0;
        kWindowOpacity.read(store, opacity);
        lmController::setWindowOpacity(opacity);
    }
    if (isChanged(kDisableDocking)) {
        bool disable = false;
        kDisableDocking.read(store, disable);
        // The store says "disable", the host takes "enable".
        lmController::setMainWindowDocking(!disable);
    }
    if (isChanged(kShowButtonText)) {
        bool show = false;
        kShowButtonText.read(store, show);
        lmController::showButtonText(show);
    }
}

void lmMainWindowPreferencesGUII::updateGUI()
{
    loadBound();
    // -1 clears the selection.
    int userLanguage = -1;
    if (kUserLanguage.read(getData(), userLanguage)) {
        lmSelectIndex(page()->_user_language_options, userLanguage, lmIfNoItem::Clear);
        bindings.loaded().loaded(kUserLanguage.name, page()->_user_language_options, userLanguage);
    }
}

void lmMainWindowPreferencesGUII::storeGUI()
{
    storeBound();

    // Never pushed, so never marked unchanged; a new choice needs a restart.
    int previous = -1;
    kUserLanguage.read(getData(), previous);
    const int chosen = bindings.loaded().value(kUserLanguage.name, page()->_user_language_options,
                                               page()->_user_language_options->currentIndex());
    storePlain(kUserLanguage, chosen);
    if (chosen != previous)
        showRestartNotice();
}

void lmMainWindowPreferencesGUII::showRestartNotice()
{
    QMessageBox::information(page(), tr("Language Preferences Change"),
                             tr("Please restart LUMO so that your language changes can take effect."),
                             QMessageBox::Ok, QMessageBox::NoButton);
}

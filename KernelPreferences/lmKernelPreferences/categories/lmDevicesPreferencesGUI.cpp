#include "lmDevicesPreferencesGUI.h"

#include "lmController.h"
#include "lmOSGWidget.h"
#include "lmSpacemouse.h"
#include "QLMWheelPrec.h"

#include <QCoreApplication>

namespace {

// The first default is the unrestricted edition's; the table asks the edition.
const lmTypedKey<bool> kSearchSpacemouse{"Devices search spacemouse", false};
const lmTypedKey<int> kViewMode{"Devices spacemouse view", 0};
const lmTypedKey<int> kRotationPivot{"Devices spacemouse rotation pivot", 0};
const lmTypedKey<bool> kTwoAxis{"Devices spacemouse two axis", false};
const lmTypedKey<bool> kHelicopter{"Devices spacemouse helicopter", false};
const lmTypedKey<bool> kUseFixedHeight{"Devices spacemouse fixed height", false};
const lmTypedKey<float> kHeight{"Devices spacemouse height", 0.0f};
const lmTypedKey<bool> kJoystick{"Devices joystick", false};
const lmTypedKey<int> kJoystickId{"Devices joystick id", 0};

// The restricted edition navigates by space mouse in its simplest modes.
bool restricted()
{
    return lmController::isRestrictedEdition();
}

const lmKeyTable kKeys{
    lmKeyComputed<bool>(kSearchSpacemouse, restricted),
    kViewMode,
    kRotationPivot,
    lmKeyComputed<bool>(kTwoAxis, restricted),
    lmKeyComputed<bool>(kHelicopter, restricted),
    kUseFixedHeight,
    kHeight,
    kJoystick,
    kJoystickId,
};

// A check box that a restricted edition always stores as on.
void bindForcedInRestricted(lmPageBindings &bindings, const lmTypedKey<bool> &key, QCheckBox *box)
{
    bindings.bind(key, box, [](QCheckBox *b, bool on) { b->setChecked(on); },
                  [](const QCheckBox *b) { return b->isChecked(); }, [](bool on) { return on || restricted(); });
}

} // namespace

lmDevicesPreferencesGUII::lmDevicesPreferencesGUII()
    : QObject(nullptr),
      lmPreferencesPage(this, QCoreApplication::translate("lmPreferences", "Devices"),
                        QCoreApplication::translate("lmPreferences", "Devices"), kKeys)
{
    // Written unconditionally: apply does not look at change marks.
    bindings.writeFromHere(lmPageBindings::Plain);
    bindForcedInRestricted(bindings, kSearchSpacemouse, page()->_search_spacemouse);
    bindings.bind(kViewMode, page()->_viewMode, lmIfNoItem::Clear);
    bindings.bind(kRotationPivot, page()->_rotationPivot, lmIfNoItem::Clear);
    bindForcedInRestricted(bindings, kTwoAxis, page()->_twoAxisMode);
    bindForcedInRestricted(bindings, kHelicopter, page()->_helicopterMode);
    bindings.bind(kUseFixedHeight, page()->_useFixedHeight);
    bindings.bind(kHeight, page()->_height);
    bindings.bind(kJoystick, page()->_joystick);
    bindings.bind(kJoystickId, page()->_joystick_id);

    addPreferencesGUI(page());
}

void lmDevicesPreferencesGUII::apply()
{
    const lmMessage &store = getData();

    bool searchSpacemouse = false;
    if (kSearchSpacemouse.read(store, searchSpacemouse)) {
        if (searchSpacemouse)
            lmSpacemouse::init();
        else
            lmSpacemouse::terminate();
    }

    bool twoAxis = false;
    if (restricted())
        lmOSGWidget::setSpacemouseTwoAxis(true);
    else if (kTwoAxis.read(store, twoAxis))
        lmOSGWidget::setSpacemouseTwoAxis(twoAxis);

    bool helicopter = false;
    if (restricted())
        lmOSGWidget::setSpacemouseHelicopter(true);
    else if (kHelicopter.read(store, helicopter))
        lmOSGWidget::setSpacemouseHelicopter(helicopter);

    bool useFixedHeight = false;
    if (kUseFixedHeight.read(store, useFixedHeight))
        lmOSGWidget::setSpacemouseUseFixedHeight(useFixedHeight);

    float height = 0.0f;
    if (kHeight.read(store, height))
        lmOSGWidget::setSpacemouseFixedHeight(height);

    int viewMode = 0;
    if (kViewMode.read(store, viewMode))
        lmOSGWidget::setSpacemouseViewMode(viewMode);

    int rotationPivot = 0;
    if (kRotationPivot.read(store, rotationPivot))
        lmOSGWidget::setSpacemousePivotMode(rotationPivot);

    // An unreadable id still lets the flag through, with joystick 0.
    int joystickId = 0;
    kJoystickId.read(store, joystickId);
    bool joystick = false;
    if (kJoystick.read(store, joystick))
        lmController::setJoystickNavigation(joystickId, joystick);
}

void lmDevicesPreferencesGUII::updateGUI()
{
    loadBound();
}

void lmDevicesPreferencesGUII::storeGUI()
{
    storeBound();
}

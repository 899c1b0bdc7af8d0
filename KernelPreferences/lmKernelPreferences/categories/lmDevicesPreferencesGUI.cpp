#include "lmDevicesPreferencesGUI.h"

#include "lmController.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "lmOSGWidget.h"
#include "lmSpacemouse.h"

#include <QCoreApplication>

namespace {

const char *const kSearchSpacemouse = "Devices search spacemouse";
const char *const kViewMode = "Devices spacemouse view";
const char *const kRotationPivot = "Devices spacemouse rotation pivot";
const char *const kTwoAxis = "Devices spacemouse two axis";
const char *const kHelicopter = "Devices spacemouse helicopter";
const char *const kUseFixedHeight = "Devices spacemouse fixed height";
const char *const kHeight = "Devices spacemouse height";
const char *const kJoystick = "Devices joystick";
const char *const kJoystickId = "Devices joystick id";

// The restricted edition navigates by space mouse in its simplest modes.
bool restricted()
{
    return lmController::isRestrictedEdition();
}

const lmKeyTable kKeys{
    lmKeyComputed<bool>(kSearchSpacemouse, restricted),
    lmKey<int>(kViewMode, 0),
    lmKey<int>(kRotationPivot, 0),
    lmKeyComputed<bool>(kTwoAxis, restricted),
    lmKeyComputed<bool>(kHelicopter, restricted),
    lmKey<bool>(kUseFixedHeight, false),
    lmKey<float>(kHeight, 0.0f),
    lmKey<bool>(kJoystick, false),
    lmKey<int>(kJoystickId, 0),
};

} // namespace

lmDevicesPreferencesGUII::lmDevicesPreferencesGUII()
    : QObject(nullptr),
      lmPreferences(QCoreApplication::translate("lmPreferences", "Devices"),
                    QCoreApplication::translate("lmPreferences", "Devices")),
      m_page(new lmDevicesPreferencesGUIW)
{
    addPreferencesGUI(m_page);
}

lmDevicesPreferencesGUII::~lmDevicesPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmDevicesPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmDevicesPreferencesGUII::apply()
{
    const lmMessage &store = getData();

    bool searchSpacemouse = false;
    if (getFromMessage(store, kSearchSpacemouse, searchSpacemouse)) {
        if (searchSpacemouse)
            lmSpacemouse::init();
        else
            lmSpacemouse::terminate();
    }

    bool twoAxis = false;
    if (restricted())
        lmOSGWidget::setSpacemouseTwoAxis(true);
    else if (getFromMessage(store, kTwoAxis, twoAxis))
        lmOSGWidget::setSpacemouseTwoAxis(twoAxis);

    bool helicopter = false;
    if (restricted())
        lmOSGWidget::setSpacemouseHelicopter(true);
    else if (getFromMessage(store, kHelicopter, helicopter))
        lmOSGWidget::setSpacemouseHelicopter(helicopter);

    bool useFixedHeight = false;
    if (getFromMessage(store, kUseFixedHeight, useFixedHeight))
        lmOSGWidget::setSpacemouseUseFixedHeight(useFixedHeight);

    float height = 0.0f;
    if (getFromMessage(store, kHeight, height))
        lmOSGWidget::setSpacemouseFixedHeight(height);

    int viewMode = 0;
    if (getFromMessage(store, kViewMode, viewMode))
        lmOSGWidget::setSpacemouseViewMode(viewMode);

    int rotationPivot = 0;
    if (getFromMessage(store, kRotationPivot, rotationPivot))
        lmOSGWidget::setSpacemousePivotMode(rotationPivot);

    // An unreadable id still lets the flag through, with joystick 0.
    int joystickId = 0;
    getFromMessage(store, kJoystickId, joystickId);
    bool joystick = false;
    if (getFromMessage(store, kJoystick, joystick))
        lmController::setJoystickNavigation(joystickId, joystick);
}

void lmDevicesPreferencesGUII::updateGUI()
{
    const lmMessage &store = getData();
    const std::pair<const char *, QCheckBox *> checkBoxes[] = {
        {kSearchSpacemouse, m_page->_search_spacemouse}, {kTwoAxis, m_page->_twoAxisMode},
        {kHelicopter, m_page->_helicopterMode},          {kUseFixedHeight, m_page->_useFixedHeight},
        {kJoystick, m_page->_joystick},
    };
    for (const auto &entry : checkBoxes) {
        bool checked = false;
        if (getFromMessage(store, entry.first, checked))
            entry.second->setChecked(checked);
    }

    m_loaded.clear();
    int index = 0;
    if (getFromMessage(store, kViewMode, index)) {
        m_page->_viewMode->setCurrentIndex(index);
        m_loaded.loaded(kViewMode, m_page->_viewMode, index);
    }
    if (getFromMessage(store, kRotationPivot, index)) {
        m_page->_rotationPivot->setCurrentIndex(index);
        m_loaded.loaded(kRotationPivot, m_page->_rotationPivot, index);
    }

    float height = 0.0f;
    if (getFromMessage(store, kHeight, height)) {
        m_page->_height->setValue(height);
        m_loaded.loaded(kHeight, m_page->_height, height);
    }

    int joystickId = 0;
    if (getFromMessage(store, kJoystickId, joystickId)) {
        m_page->_joystick_id->setValue(joystickId);
        m_loaded.loaded(kJoystickId, m_page->_joystick_id, joystickId);
    }
}

void lmDevicesPreferencesGUII::storeGUI()
{
    // Written unconditionally: apply does not look at change marks.
    lmMessage &store = getData();
    const bool forced = restricted();
    store.set(kSearchSpacemouse, boost::any(m_page->_search_spacemouse->isChecked() || forced), true);
    store.set(kViewMode, boost::any(m_loaded.value(kViewMode, m_page->_viewMode, m_page->_viewMode->currentIndex())),
              true);
    store.set(kRotationPivot,
              boost::any(m_loaded.value(kRotationPivot, m_page->_rotationPivot, m_page->_rotationPivot->currentIndex())),
              true);
    store.set(kTwoAxis, boost::any(m_page->_twoAxisMode->isChecked() || forced), true);
    store.set(kHelicopter, boost::any(m_page->_helicopterMode->isChecked() || forced), true);
    store.set(kUseFixedHeight, boost::any(m_page->_useFixedHeight->isChecked()), true);
    store.set(kHeight, boost::any(m_loaded.value(kHeight, m_page->_height, float(m_page->_height->value()))), true);
    store.set(kJoystick, boost::any(m_page->_joystick->isChecked()), true);
    store.set(kJoystickId,
              boost::any(m_loaded.value(kJoystickId, m_page->_joystick_id, m_page->_joystick_id->value())), true);
}

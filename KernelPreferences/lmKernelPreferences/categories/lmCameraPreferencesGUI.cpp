#include "lmCameraPreferencesGUI.h"

#include "lmController.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "lmOSGWidget.h"
#include "lmScopedUndoBlocker.h"

#include <QDoubleValidator>

namespace {

const char *const kFov = "Camera fov";
const char *const kEyeSeparation = "Stereo eye separation";
const char *const kZeroParallax = "Stereo zero plane parallaxe";
const char *const kPowerwallWidth = "Powerwall width";
const char *const kPowerwallHeight = "Powerwall height";
const char *const kPowerwallDistance = "Powerwall distance";

const lmKeyTable kKeys{
    lmKey<float>(kFov, 45.0f),
    lmKey<float>(kEyeSeparation, 63.0f),
    lmKey<float>(kZeroParallax, 1500.0f),
    lmKey<float>(kPowerwallWidth, 1600.0f),
    lmKey<float>(kPowerwallHeight, 1200.0f),
    lmKey<float>(kPowerwallDistance, 1000.0f),
};

QString numberText(float value)
{
    return QString::number(value, 'g', 6);
}

} // namespace

lmCameraPreferencesGUII::lmCameraPreferencesGUII()
    : QObject(nullptr), lmPreferences(tr("Camera"), QString()), m_page(new lmCameraPreferencesGUIW)
{
    m_page->_fov->setRange(1.0, 100.0);
    m_page->_fov->setSteps(1.0, 10.0);
    for (QLineEdit *edit : {m_page->_es, m_page->_zpp, m_page->_pwWidth, m_page->_pwHeight, m_page->_pwDist})
        edit->setValidator(new QDoubleValidator(edit));

    // The keys exist in every edition; the page is only offered in full ones.
    if (!lmController::isRestrictedEdition())
        addPreferencesGUI(m_page);
}

lmCameraPreferencesGUII::~lmCameraPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmCameraPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmCameraPreferencesGUII::apply()
{
    const lmMessage &store = getData();

    float fov = 0.0f;
    if (isChanged(kFov) && getFromMessage(store, kFov, fov)) {
        lmScopedUndoBlocker undoBlocker(true);
        lmOSGWidget::setFov(-1, fov);
    }

    float eyeSeparation = 0.0f;
    if (isChanged(kEyeSeparation) && getFromMessage(store, kEyeSeparation, eyeSeparation))
        lmOSGWidget::setGlobalEyeSeparation(eyeSeparation);

    float zeroParallax = 0.0f;
    if (isChanged(kZeroParallax) && getFromMessage(store, kZeroParallax, zeroParallax))
        lmOSGWidget::setGlobalZeroParallaxDistance(zeroParallax);

    // One host call carries all three powerwall values.
    if (isChanged(kPowerwallWidth) || isChanged(kPowerwallHeight) || isChanged(kPowerwallDistance)) {
        float width = 0.0f, height = 0.0f, distance = 0.0f;
        const bool readWidth = getFromMessage(store, kPowerwallWidth, width);
        const bool readHeight = getFromMessage(store, kPowerwallHeight, height);
        const bool readDistance = getFromMessage(store, kPowerwallDistance, distance);
        if (readWidth && readHeight && readDistance)
            lmOSGWidget::setPowerwallWindow(-1, width, height, distance);
    }
}

void lmCameraPreferencesGUII::updateGUI()
{
    const lmMessage &store = getData();
    float value = 0.0f;
    if (getFromMessage(store, kFov, value))
        m_page->_fov->setValue(value);
    if (getFromMessage(store, kEyeSeparation, value))
        m_page->_es->setText(numberText(value));
    if (getFromMessage(store, kZeroParallax, value))
        m_page->_zpp->setText(numberText(value));
    if (getFromMessage(store, kPowerwallWidth, value))
        m_page->_pwWidth->setText(numberText(value));
    if (getFromMessage(store, kPowerwallHeight, value))
        m_page->_pwHeight->setText(numberText(value));
    if (getFromMessage(store, kPowerwallDistance, value))
        m_page->_pwDist->setText(numberText(value));
}

void lmCameraPreferencesGUII::storeGUI()
{
    lmMessage &store = getData();
    // Text that is no number converts to 0.
    const std::pair<const char *, float> values[] = {
        {kFov, float(m_page->_fov->value())},
        {kEyeSeparation, m_page->_es->text().toFloat()},
        {kZeroParallax, m_page->_zpp->text().toFloat()},
        {kPowerwallWidth, m_page->_pwWidth->text().toFloat()},
        {kPowerwallHeight, m_page->_pwHeight->text().toFloat()},
        {kPowerwallDistance, m_page->_pwDist->text().toFloat()},
    };
    for (const auto &entry : values)
        if (!setToMessage(store, entry.first, entry.second, true))
            addUnchanged(entry.first);
}

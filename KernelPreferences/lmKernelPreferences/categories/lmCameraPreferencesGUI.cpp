#include "lmCameraPreferencesGUI.h"

#include "lmController.h"
#include "lmOSGWidget.h"
#include "lmScopedUndoBlocker.h"
#include "QLMSlider.h"

#include <QDoubleValidator>

namespace {

const lmTypedKey<float> kFov{"Camera fov", 45.0f};
const lmTypedKey<float> kEyeSeparation{"Stereo eye separation", 63.0f};
const lmTypedKey<float> kZeroParallax{"Stereo zero plane parallaxe", 1500.0f};
const lmTypedKey<float> kPowerwallWidth{"Powerwall width", 1600.0f};
const lmTypedKey<float> kPowerwallHeight{"Powerwall height", 1200.0f};
const lmTypedKey<float> kPowerwallDistance{"Powerwall distance", 1000.0f};

const lmKeyTable kKeys{kFov, kEyeSeparation, kZeroParallax, kPowerwallWidth, kPowerwallHeight, kPowerwallDistance};

} // namespace

lmCameraPreferencesGUII::lmCameraPreferencesGUII()
    : QObject(nullptr), lmPreferencesPage(this, tr("Camera"), QString(), kKeys)
{
    page()->_fov->setRange(1.0, 100.0);
    page()->_fov->setSteps(1.0, 10.0);
    for (QLineEdit *edit : {page()->_es, page()->_zpp, page()->_pwWidth, page()->_pwHeight, page()->_pwDist})
        edit->setValidator(new QDoubleValidator(edit));

    bindings.bind(kFov, page()->_fov);
    bindings.bind(kEyeSeparation, page()->_es);
    bindings.bind(kZeroParallax, page()->_zpp);
    bindings.bind(kPowerwallWidth, page()->_pwWidth);
    bindings.bind(kPowerwallHeight, page()->_pwHeight);
    bindings.bind(kPowerwallDistance, page()->_pwDist);

    // The keys exist in every edition; the page is only offered in full ones.
    if (!lmController::isRestrictedEdition())
        addPreferencesGUI(page());
}

void lmCameraPreferencesGUII::apply()
{
    const lmMessage &store = getData();

    float fov = 0.0f;
    if (isChanged(kFov) && kFov.read(store, fov)) {
        lmScopedUndoBlocker undoBlocker(true);
        lmOSGWidget::setFov(-1, fov);
    }

    float eyeSeparation = 0.0f;
    if (isChanged(kEyeSeparation) && kEyeSeparation.read(store, eyeSeparation))
        lmOSGWidget::setGlobalEyeSeparation(eyeSeparation);

    float zeroParallax = 0.0f;
    if (isChanged(kZeroParallax) && kZeroParallax.read(store, zeroParallax))
        lmOSGWidget::setGlobalZeroParallaxDistance(zeroParallax);

    // One host call carries all three powerwall values.
    if (isChanged(kPowerwallWidth) || isChanged(kPowerwallHeight) || isChanged(kPowerwallDistance)) {
        float width = 0.0f, height = 0.0f, distance = 0.0f;
        const bool readWidth = kPowerwallWidth.read(store, width);
        const bool readHeight = kPowerwallHeight.read(store, height);
        const bool readDistance = kPowerwallDistance.read(store, distance);
        if (readWidth && readHeight && readDistance)
            lmOSGWidget::setPowerwallWindow(-1, width, height, distance);
    }
}

void lmCameraPreferencesGUII::updateGUI()
{
    loadBound();
}

void lmCameraPreferencesGUII::storeGUI()
{
    storeBound();
}

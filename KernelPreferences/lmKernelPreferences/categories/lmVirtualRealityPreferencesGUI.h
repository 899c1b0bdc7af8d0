#pragma once

#include "lmPreferencesCategory.h"
#include "lmServiceKeys.h"
#include "ui_lmVirtualRealityPreferencesGUI.h"

class lmHMDService;

// Headset sessions: teleport and interaction defaults, eye tracking and
// foveated rendering of the HMD, and native foveated rendering of StarVR.
// The category is its own page; its values go through the preference service.
class lmVirtualRealityPreferencesGUII : public lmPreferencesCategory, public Ui_lmVirtualRealityPreferencesGUI
{
    Q_OBJECT

public:
    lmVirtualRealityPreferencesGUII();
    ~lmVirtualRealityPreferencesGUII() override;

public Q_SLOTS:
    void setDefault(bool overwrite) override;
    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

private Q_SLOTS:
    void indexChangedShadingQuality(int index);
    void indexChangedCustomQuality(int index);
    void toggledNativeFoveatedRendering(bool on);

private:
    void updateShadingQualityWarning();
    void applyStarVR(const lmPreferencesService &prefs, lmHMDService &hmd);

    lmServiceBindings m_bindings;
};

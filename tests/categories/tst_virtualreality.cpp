// The virtual reality page driven as the host and a user drive it: defaults
// through the preference service into the shared store, the page, the store
// with unchanged marks, and the calls apply makes to the headset services.
#include "categories/lmVirtualRealityPreferencesGUI.h"
#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmKernelServicesHost.h"
#include "lmMessageHelpers.h"
#include "lmOSGWidget.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QtTest>

#include <algorithm>

namespace {

using Value = boost::any;

// Key, type and default as the host's store must hold them.
const std::vector<std::pair<std::string, Value>> kDefaults = {
    {"VR Teleport Ground Mode", 1},
    {"VR Teleport Range", 15000.0f},
    {"VR Visualise Hands", 1},
    {"VR Auto Create Collision Objects", true},
    {"VR Show Tooltips on start", true},
    {"StarVR Foveated Rendering Enabled", false},
    {"StarVR Foveated FOV Factor", 0.35f},
    {"StarVR Foveated Resolution Scale", 0.6f},
    {"StarVR Non-Foveated Resolution Scale", 0.4f},
    {"StarVR Front View Resolution Scale", 1.0f},
    {"StarVR Side View Resolution Scale", 1.0f},
    {"StarVR Single Texture Per Eye", false},
    {"HMD Eye Tracking", false},
    {"HMD Foveated Rendering", false},
    {"HMD Foveal Region Size", 0.3f},
    {"HMD Foveated Quality Preset", 0},
    {"HMD Foveated Custom Quality Inner", 3},
    {"HMD Foveated Custom Quality Middle", 1},
    {"HMD Foveated Custom Quality Periphery", 2},
};


template <class T>
void store(const char *key, T value)
{
    lmPreferences::getData().set(key, boost::any(value), true);
}

bool sameValue(const Value &a, const Value &b)
{
    if (!lmHoldsType(a, b.type()))
        return false;
    if (lmHoldsType(a, typeid(int)))
        return boost::any_cast<int>(a) == boost::any_cast<int>(b);
    if (lmHoldsType(a, typeid(float)))
        return boost::any_cast<float>(a) == boost::any_cast<float>(b);
    return boost::any_cast<bool>(a) == boost::any_cast<bool>(b);
}

std::vector<std::string> unchangedKeys()
{
    return lmPreferencesHost::unchangedKeys(lmPreferencesHost::categories().front());
}

QString starVRSettings(const char *fovFactor, const char *sideScale, bool native = false)
{
    return QStringLiteral("lmHMDService::setStarVRRenderSettings(useNativeFoveatedRendering=%1, foveatedFovFactor=%2, "
                          "foveatedResolutionScale=0.6, nonFoveatedResolutionScale=0.4, frontViewResolutionScale=1, "
                          "sideViewResolutionScale=%3, useSingleTexture=false)")
        .arg(native ? "true" : "false", fovFactor, sideScale);
}

const QStringList kInitialApply = {
    "lmImmersiveInteractionService::setTeleportGroundMode(1)",
    "lmImmersiveInteractionService::setTeleportRange(15000)",
    "lmImmersiveInteractionService::setDefaultControllerVisualization(1)",
    "lmImmersiveInteractionService::setAutoCreateCollisionObjects(true)",
    "lmImmersiveInteractionService::setShowTooltipsOnStart(true)",
    "lmHMDService::setEyeTrackingEnabled(false)",
    "lmHMDService::setFoveatedRenderingEnabled(false)",
    "lmHMDService::setFovealRegionSize(0.3)",
    "lmHMDService::setFoveatedQualityPreset(0)",
    "lmHMDService::setFoveatedCustomQuality(3, 1, 2)",
};

// What the host does when the dialog is accepted.
void accept(lmVirtualRealityPreferencesGUII &vr)
{
    lmPreferencesHost::resetUnchanged();
    vr.storeGUI();
    vr.apply();
}

// A started host: defaults written, initial apply done, page filled.
void start(lmVirtualRealityPreferencesGUII &vr)
{
    vr.setDefault(false);
    vr.apply();
    vr.updateGUI();
    lmCallLog::clear();
}

void setDisplay(int type)
{
    lmOSGWidget::setDisplayType(static_cast<lmOSGWidget::lmDisplay>(type));
    lmCallLog::clear();
}

} // namespace

class tst_VirtualReality : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void defaultsLandInTheSharedStoreWithTheirTypes()
    {
        {
            store("HMD Foveal Region Size", 0.5f); // loaded before the defaults
            lmVirtualRealityPreferencesGUII vr;
            vr.setDefault(false);
            QCOMPARE(lmStored<float>("HMD Foveal Region Size"), 0.5f);
            vr.setDefault(true);
            const lmMessage &data = lmPreferences::getData();
            QCOMPARE(data.size(), kDefaults.size());
            for (const auto &entry : kDefaults)
                QVERIFY2(sameValue(data.get(entry.first), entry.second), entry.first.c_str());

            const auto pages = lmPreferencesHost::pages();
            QCOMPARE(pages.size(), std::size_t(1));
            QCOMPARE(pages[0].group, QStringLiteral("Virtual Reality"));
            QVERIFY(pages[0].page.isEmpty());
            QCOMPARE(pages[0].widget, static_cast<QWidget *>(&vr));
            QCOMPARE(vr.objectName(), QStringLiteral("lmVirtualRealityPreferencesGUI"));
        }
        QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
        QVERIFY(lmPreferencesHost::pages().empty());
        QVERIFY(lmPreferencesHost::categories().empty());
    }

    void pageOffersTheShadingQualitiesAsItemData()
    {
        lmVirtualRealityPreferencesGUII vr;
        const QStringList rings = {"1 Sample", "1 Sample per 4 pixel", "1 Sample per 16 pixel",
                                   "2 Samples", "4 Samples", "8 Samples"};
        for (QComboBox *ring : {vr._innerQuality, vr._middleQuality, vr._peripheryQuality}) {
            QCOMPARE(ring->count(), rings.size());
            for (int i = 0; i < ring->count(); ++i) {
                QCOMPARE(ring->itemText(i), rings[i]);
                QCOMPARE(ring->itemData(i).toInt(), i);
            }
        }
        const QStringList presets = {"Highest Performance", "Balanced", "Highest Quality", "Custom"};
        for (int i = 0; i < presets.size(); ++i) {
            QCOMPARE(vr._shadingQuality->itemText(i), presets[i]);
            QCOMPARE(vr._shadingQuality->itemData(i).toInt(), i);
        }
        QVERIFY(vr._middleQuality->toolTip().startsWith("Defines the quality for the middle ring:\n\n1 Sample: Native"));
        QVERIFY(vr._peripheryQuality->toolTip().startsWith("Defines the quality for the peripheral ring:"));
        QVERIFY(vr._innerQuality->toolTip().endsWith("with a minimum corresponding Multisampling sample amount.\n\n"));
    }

    void updateGUIShowsTheStoreWithSignalsBlocked()
    {
        lmVirtualRealityPreferencesGUII vr;
        vr.setDefault(false);
        store("VR Teleport Ground Mode", 0);
        store("VR Teleport Range", 2500.0f);
        store("VR Visualise Hands", 0);
        store("VR Show Tooltips on start", false);
        store("StarVR Foveated Rendering Enabled", true);
        store("StarVR Foveated FOV Factor", 0.5f);
        store("HMD Eye Tracking", true);
        store("HMD Foveal Region Size", 0.45f);
        store("HMD Foveated Quality Preset", 3);
        store("HMD Foveated Custom Quality Inner", 0);
        store("HMD Foveated Custom Quality Periphery", 4);

        QSignalSpy preset(vr._shadingQuality, QOverload<int>::of(&QComboBox::currentIndexChanged));
        QSignalSpy inner(vr._innerQuality, QOverload<int>::of(&QComboBox::currentIndexChanged));
        QSignalSpy native(vr._starVRFoveatedRendering, &QCheckBox::toggled);
        QSignalSpy region(vr._fovealRegionSize, &QLMSlider::valueChanged);
        QSignalSpy range(vr._teleportRange, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
        vr.updateGUI();
        QCOMPARE(preset.count() + inner.count() + native.count() + region.count() + range.count(), 0);

        QCOMPARE(vr._groundMode->currentIndex(), 0);
        QCOMPARE(vr._teleportRange->value(), 2500.0);
        QCOMPARE(vr._visualization->currentIndex(), 0);
        QVERIFY(vr._createCollisionObjects->isChecked());
        QVERIFY(!vr._showTooltips->isChecked());
        QVERIFY(vr._starVRFoveatedRendering->isChecked());
        QCOMPARE(float(vr._starVRFovFactor->value()), 0.5f);
        QCOMPARE(float(vr._starVRNonFoveatedResolutionScale->value()), 0.4f);
        QVERIFY(vr._eyeTracking->isChecked());
        QCOMPARE(float(vr._fovealRegionSize->value()), 0.45f);
        QCOMPARE(vr._shadingQuality->currentText(), QStringLiteral("Custom"));
        QCOMPARE(vr._innerQuality->currentText(), QStringLiteral("1 Sample"));
        QCOMPARE(vr._middleQuality->currentText(), QStringLiteral("1 Sample per 4 pixel"));
        QCOMPARE(vr._peripheryQuality->currentText(), QStringLiteral("4 Samples"));

        // What the blocked signals would have updated is updated all the same.
        QVERIFY(vr._starVRFovFactor->isEnabled());
        QVERIFY(!vr._shadingQualityWarning->isHidden());
        QCOMPARE(vr._shadingQualityWarning->text(), QStringLiteral("Requires RT-AA with 4x Multisampling"));
        QVERIFY(vr._shadingRateImageNote->isHidden());
        QCOMPARE(lmCallLog::lines(), QStringList());
    }

    void updateGUIFallsBackOnValuesThePageCannotShow()
    {
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        vr._teleportRange->setValue(100.0);
        store("VR Teleport Ground Mode", 7);
        store("HMD Foveated Custom Quality Middle", 9);
        store("VR Teleport Range", 2500); // int under a float key
        lmPreferences::getData().remove("HMD Foveal Region Size");
        vr._fovealRegionSize->setValue(0.8);

        lmStderrCapture capture;
        vr.updateGUI();
        const QString printed = capture.text();
        QVERIFY(printed.contains("getFromMessage : Attribute 'VR Teleport Range' has wrong type"));
        QCOMPARE(vr._teleportRange->value(), 15000.0);
        QCOMPARE(float(vr._fovealRegionSize->value()), 0.3f);
        // Combos keep the selection they had.
        QCOMPARE(vr._groundMode->currentIndex(), 1);
        QCOMPARE(vr._middleQuality->currentText(), QStringLiteral("1 Sample per 4 pixel"));
        QVERIFY(lmPreferences::getData().get("VR Teleport Range").type() == typeid(int));
    }

    void untouchedPageMarksEveryKeyUnchangedAndAppliesNothing()
    {
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        setDisplay(6);
        accept(vr);
        QCOMPARE(lmCallLog::lines(), QStringList());
        std::vector<std::string> keys;
        for (const auto &entry : kDefaults)
            keys.push_back(entry.first);
        std::sort(keys.begin(), keys.end());
        QCOMPARE(unchangedKeys(), keys);
    }

    void initialApplyPushesEveryStepInOrder()
    {
        lmVirtualRealityPreferencesGUII vr;
        setDisplay(6);
        vr.setDefault(false);
        vr.apply();
        QStringList expected = kInitialApply;
        expected << "lmOSGWidget::setDisplayType(0)" << starVRSettings("0.35", "1") << "lmOSGWidget::setDisplayType(6)";
        QCOMPARE(lmCallLog::lines(), expected);
        QCOMPARE(int(lmOSGWidget::getDisplayType()), 6);
    }

    void changedControlsAreStoredTypedAndPushedAlone()
    {
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        vr._groundMode->setCurrentIndex(0);
        vr._teleportRange->setValue(2500.5);
        vr._createCollisionObjects->setChecked(false);
        vr._shadingQuality->setCurrentIndex(3);
        vr._innerQuality->setCurrentIndex(5);
        accept(vr);

        QCOMPARE(lmStored<int>("VR Teleport Ground Mode"), 0);
        QCOMPARE(lmStored<float>("VR Teleport Range"), 2500.5f);
        QCOMPARE(lmStored<bool>("VR Auto Create Collision Objects"), false);
        QCOMPARE(lmStored<int>("HMD Foveated Quality Preset"), 3);
        QCOMPARE(lmStored<int>("HMD Foveated Custom Quality Inner"), 5);
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmImmersiveInteractionService::setTeleportGroundMode(0)",
                                         "lmImmersiveInteractionService::setTeleportRange(2500.5)",
                                         "lmImmersiveInteractionService::setAutoCreateCollisionObjects(false)",
                                         "lmHMDService::setFoveatedQualityPreset(3)",
                                         "lmHMDService::setFoveatedCustomQuality(5, 1, 2)",
                                     }));
        QCOMPARE(unchangedKeys().size(), kDefaults.size() - 5);
    }

    void onePeripheryChangePushesAllThreeRings()
    {
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        vr._peripheryQuality->setCurrentIndex(0);
        accept(vr);
        QCOMPARE(lmCallLog::lines(), QStringList({"lmHMDService::setFoveatedCustomQuality(3, 1, 0)"}));
    }

    void eyeTrackingTheHeadsetRefusesIsReverted()
    {
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        lmKernelServicesHost::setEyeTrackingSupported(false);
        vr._eyeTracking->setChecked(true);
        vr._foveatedRendering->setChecked(true);
        accept(vr);
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmHMDService::setEyeTrackingEnabled(true)",
                                         "lmHMDService::setFoveatedRenderingEnabled(true)",
                                     }));
        QCOMPARE(lmStored<bool>("HMD Eye Tracking"), false);
        QVERIFY(!vr._eyeTracking->isChecked());

        // The reverted request stays off on the next accept.
        lmCallLog::clear();
        accept(vr);
        QCOMPARE(lmCallLog::lines(), QStringList());

        // A confirmed request persists.
        lmKernelServicesHost::setEyeTrackingSupported(true);
        vr._eyeTracking->setChecked(true);
        accept(vr);
        QCOMPARE(lmCallLog::lines(), QStringList({"lmHMDService::setEyeTrackingEnabled(true)"}));
        QCOMPARE(lmStored<bool>("HMD Eye Tracking"), true);
        QVERIFY(vr._eyeTracking->isChecked());
    }

    void starVRKeysReinitialiseOnlyAnActiveStarVRDisplay()
    {
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        // Changed behind the page: the headset keeps its own side scale.
        store("StarVR Side View Resolution Scale", 1.5f);
        vr.updateGUI();

        setDisplay(6);
        vr._starVRFovFactor->setValue(0.5);
        accept(vr);
        QCOMPARE(lmCallLog::lines(), QStringList({"lmOSGWidget::setDisplayType(0)", starVRSettings("0.5", "1"),
                                                  "lmOSGWidget::setDisplayType(6)"}));

        setDisplay(2);
        vr._starVRFoveatedRendering->setChecked(true);
        accept(vr);
        QCOMPARE(lmCallLog::lines(), QStringList({starVRSettings("0.5", "1", true)}));
        QCOMPARE(int(lmOSGWidget::getDisplayType()), 2);

        setDisplay(6);
        vr._fovealRegionSize->setValue(0.5);
        accept(vr);
        QCOMPARE(lmCallLog::lines(), QStringList({"lmHMDService::setFovealRegionSize(0.5)"}));
    }

    void withoutStarVRSupportTheStarVRKeysStayInTheStore()
    {
        lmKernelServicesHost::setStarVRHandlerPresent(false);
        lmVirtualRealityPreferencesGUII vr;
        setDisplay(6);
        vr.setDefault(false);
        vr.apply();
        QCOMPARE(lmCallLog::lines(), kInitialApply);

        lmCallLog::clear();
        vr.updateGUI();
        vr._starVRSingleTexture->setChecked(true);
        accept(vr);
        QCOMPARE(lmCallLog::lines(), QStringList());
        QCOMPARE(lmStored<bool>("StarVR Single Texture Per Eye"), true);
    }

    void nativeFoveatedRenderingEnablesTheFoveationSliders()
    {
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        QVERIFY(!vr._starVRFovFactor->isEnabled());
        QVERIFY(!vr._starVRNonFoveatedResolutionScale->isEnabled());
        QVERIFY(vr._starVRFrontViewResolutionScale->isEnabled());
        vr._starVRFoveatedRendering->setChecked(true);
        QVERIFY(vr._starVRFovFactor->isEnabled());
        QVERIFY(vr._starVRFoveatedResolutionScale->isEnabled());
    }

    void shadingQualityWarningNamesTheSamplesNeeded()
    {
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        QLabel *warning = vr._shadingQualityWarning;
        QVERIFY(warning->isHidden()); // "Highest Performance" needs one sample

        vr._shadingQuality->setCurrentIndex(3); // custom rings 2 Samples / 4 pixel / 16 pixel
        QVERIFY(!warning->isHidden());
        QCOMPARE(warning->text(), QStringLiteral("Requires RT-AA with 2x Multisampling"));

        vr._innerQuality->setCurrentIndex(5);
        QCOMPARE(warning->text(), QStringLiteral("Requires RT-AA with 8x Multisampling"));
        QCOMPARE(warning->toolTip(),
                 QStringLiteral("The selected shading quality requires Realtime Antialiasing with at least 8 "
                                "Multisampling samples.\nCheck the number of samples used by the Realtime "
                                "Antialising levels in \nPreferences > Render Options > Visualization Advanced > "
                                "Realtime Antialiasing Presets."));

        // The largest ring wins, wherever it is.
        vr._innerQuality->setCurrentIndex(0);
        vr._peripheryQuality->setCurrentIndex(4);
        QCOMPARE(warning->text(), QStringLiteral("Requires RT-AA with 4x Multisampling"));

        vr._shadingQuality->setCurrentIndex(2); // the host's "Highest Quality" supersamples twice
        QVERIFY(!warning->isHidden());
        QCOMPARE(warning->text(), QStringLiteral("Requires RT-AA with 2x Multisampling"));
        vr._shadingQuality->setCurrentIndex(1);
        QVERIFY(warning->isHidden());
        QCOMPARE(lmCallLog::lines(), QStringList());
    }

    void missingServicesAreReportedAndNothingCrashes()
    {
        lmVirtualRealityPreferencesGUII vr;
        {
            lmKernelServicesHost::setServicePresence("lmPreferencesService", lmKernelServicesHost::UnknownClass);
            lmStderrCapture capture;
            vr.setDefault(false);
            vr.updateGUI();
            accept(vr);
            QCOMPARE(capture.text().count("lmKernelServiceFactory: couldn't find class 'lmPreferencesService'!\n"), 4);
            QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
            QCOMPARE(lmCallLog::lines(), QStringList());
        }

        lmKernelServicesHost::setServicePresence("lmPreferencesService", lmKernelServicesHost::Present);
        lmKernelServicesHost::setServicePresence("lmHMDService", lmKernelServicesHost::NullService);
        setDisplay(6);
        {
            lmStderrCapture capture;
            vr.setDefault(false);
            vr.apply();
            vr.updateGUI(); // the preset asks the headset, the note asks the driver
            QCOMPARE(capture.text(), QString("lmKernelServiceFactory: service 'lmHMDService' is NULL!\n").repeated(3));
            QCOMPARE(lmCallLog::lines(), kInitialApply.mid(0, 5));
            QVERIFY(vr._shadingQualityWarning->isHidden());
        }

        lmKernelServicesHost::setServicePresence("lmHMDService", lmKernelServicesHost::Present);
        lmKernelServicesHost::setServicePresence("lmImmersiveInteractionService", lmKernelServicesHost::UnknownClass);
        lmKernelServicesHost::setShadingRateImageSupported(false);
        setDisplay(0);
        {
            lmStderrCapture capture;
            vr.apply();
            vr.updateGUI();
            QCOMPARE(capture.text(),
                     QStringLiteral("lmKernelServiceFactory: couldn't find class 'lmImmersiveInteractionService'!\n"));
            QCOMPARE(lmCallLog::lines(), kInitialApply.mid(5) << starVRSettings("0.35", "1"));
            QVERIFY(!vr._shadingRateImageNote->isHidden());
        }
    }
};

QTEST_MAIN(tst_VirtualReality)
#include "tst_virtualreality.moc"

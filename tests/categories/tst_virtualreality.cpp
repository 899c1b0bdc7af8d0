// The virtual reality page driven as the host and a user drive it: defaults
// through the preference service into the shared store, the page, the store
// with unchanged marks, and the calls apply makes to the headset services.
#include "categories/lmVirtualRealityPreferencesGUI.h"
#include "lmKernelServicesHost.h"
#include "lmOSGWidget.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QtTest>

#include <functional>

namespace {

// Every key of the page, in key order.
const std::vector<std::string> kKeys = {
    "HMD Eye Tracking", "HMD Foveal Region Size", "HMD Foveated Custom Quality Inner",
    "HMD Foveated Custom Quality Middle", "HMD Foveated Custom Quality Periphery", "HMD Foveated Quality Preset",
    "HMD Foveated Rendering", "StarVR Foveated FOV Factor", "StarVR Foveated Rendering Enabled",
    "StarVR Foveated Resolution Scale", "StarVR Front View Resolution Scale", "StarVR Non-Foveated Resolution Scale",
    "StarVR Side View Resolution Scale", "StarVR Single Texture Per Eye", "VR Auto Create Collision Objects",
    "VR Show Tooltips on start", "VR Teleport Ground Mode", "VR Teleport Range", "VR Visualise Hands",
};

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

    void updateGUIShowsTheStoreWithSignalsBlocked()
    {
        lmVirtualRealityPreferencesGUII vr;
        vr.setDefault(false);
        setStored("VR Teleport Ground Mode", 0);
        setStored("VR Teleport Range", 2500.0f);
        setStored("VR Visualise Hands", 0);
        setStored("VR Show Tooltips on start", false);
        setStored("StarVR Foveated Rendering Enabled", true);
        setStored("StarVR Foveated FOV Factor", 0.5f);
        setStored("HMD Eye Tracking", true);
        setStored("HMD Foveal Region Size", 0.45f);
        setStored("HMD Foveated Quality Preset", 3);
        setStored("HMD Foveated Custom Quality Inner", 0);
        setStored("HMD Foveated Custom Quality Periphery", 4);

        QSignalSpy preset(vr._shadingQuality, QOverload<int>::of(&QComboBox::currentIndexChanged));
        QSignalSpy inner(vr._innerQuality, QOverload<int>::of(&QComboBox::currentIndexChanged));
        QSignalSpy native(vr._starVRFoveatedRendering, &QCheckBox::toggled);
        QSignalSpy region(vr._fovealRegionSize, &QLMSlider::valueChanged);
        QSignalSpy range(vr._teleportRange, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
        vr.updateGUI();
        QCOMPARE(preset.count() + inner.count() + native.count() + region.count() + range.count(), 0);

        QCOMPARE(vr._shadingQuality->currentText(), QStringLiteral("Custom"));
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
        setStored("VR Teleport Ground Mode", 7);
        setStored("HMD Foveated Custom Quality Middle", 9);
        setStored("VR Teleport Range", 2500); // int under a float key
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
        QCOMPARE(acceptLog(vr), QStringList());
        QCOMPARE(unchangedKeys(), kKeys);
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

    void eachChangedControlIsPushedAlone_data()
    {
        QTest::addColumn<int>("control");
        QTest::addColumn<QString>("call");
        QTest::newRow("ground mode") << 0 << "lmImmersiveInteractionService::setTeleportGroundMode(0)";
        QTest::newRow("teleport range") << 1 << "lmImmersiveInteractionService::setTeleportRange(2500.5)";
        QTest::newRow("hands") << 2 << "lmImmersiveInteractionService::setDefaultControllerVisualization(0)";
        QTest::newRow("collision objects")
            << 3 << "lmImmersiveInteractionService::setAutoCreateCollisionObjects(false)";
        QTest::newRow("tooltips") << 4 << "lmImmersiveInteractionService::setShowTooltipsOnStart(false)";
        QTest::newRow("foveated rendering") << 5 << "lmHMDService::setFoveatedRenderingEnabled(true)";
        QTest::newRow("foveal region") << 6 << "lmHMDService::setFovealRegionSize(0.5)";
        QTest::newRow("preset") << 7 << "lmHMDService::setFoveatedQualityPreset(3)";
        // One ring changed pushes all three.
        QTest::newRow("inner ring") << 8 << "lmHMDService::setFoveatedCustomQuality(5, 1, 2)";
        QTest::newRow("periphery ring") << 9 << "lmHMDService::setFoveatedCustomQuality(3, 1, 0)";
    }

    void eachChangedControlIsPushedAlone()
    {
        QFETCH(int, control);
        QFETCH(QString, call);
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        const std::function<void()> edits[] = {
            [&] { vr._groundMode->setCurrentIndex(0); },
            [&] { vr._teleportRange->setValue(2500.5); },
            [&] { vr._visualization->setCurrentIndex(0); },
            [&] { vr._createCollisionObjects->setChecked(false); },
            [&] { vr._showTooltips->setChecked(false); },
            [&] { vr._foveatedRendering->setChecked(true); },
            [&] { vr._fovealRegionSize->setValue(0.5); },
            [&] { vr._shadingQuality->setCurrentIndex(3); },
            [&] { vr._innerQuality->setCurrentIndex(5); },
            [&] { vr._peripheryQuality->setCurrentIndex(0); },
        };
        edits[control]();
        QCOMPARE(acceptLog(vr), QStringList(call));
        QCOMPARE(unchangedKeys().size(), kKeys.size() - 1);
    }

    void eyeTrackingTheHeadsetRefusesIsReverted()
    {
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        lmKernelServicesHost::setEyeTrackingSupported(false);
        vr._eyeTracking->setChecked(true);
        vr._foveatedRendering->setChecked(true);
        QCOMPARE(acceptLog(vr), QStringList({
                                    "lmHMDService::setEyeTrackingEnabled(true)",
                                    "lmHMDService::setFoveatedRenderingEnabled(true)",
                                }));
        QCOMPARE(lmStored<bool>("HMD Eye Tracking"), false);
        QVERIFY(!vr._eyeTracking->isChecked());

        // The reverted request stays off on the next accept.
        QCOMPARE(acceptLog(vr), QStringList());

        // A confirmed request persists.
        lmKernelServicesHost::setEyeTrackingSupported(true);
        vr._eyeTracking->setChecked(true);
        QCOMPARE(acceptLog(vr), QStringList({"lmHMDService::setEyeTrackingEnabled(true)"}));
        QCOMPARE(lmStored<bool>("HMD Eye Tracking"), true);
        QVERIFY(vr._eyeTracking->isChecked());
    }

    void starVRKeysReinitialiseOnlyAnActiveStarVRDisplay()
    {
        lmVirtualRealityPreferencesGUII vr;
        start(vr);
        // Changed behind the page: the headset keeps its own side scale.
        setStored("StarVR Side View Resolution Scale", 1.5f);
        vr.updateGUI();

        setDisplay(6);
        vr._starVRFovFactor->setValue(0.5);
        QCOMPARE(acceptLog(vr), QStringList({"lmOSGWidget::setDisplayType(0)", starVRSettings("0.5", "1"),
                                             "lmOSGWidget::setDisplayType(6)"}));

        setDisplay(2);
        vr._starVRFoveatedRendering->setChecked(true);
        QCOMPARE(acceptLog(vr), QStringList({starVRSettings("0.5", "1", true)}));
        QCOMPARE(int(lmOSGWidget::getDisplayType()), 2);

        setDisplay(6);
        vr._fovealRegionSize->setValue(0.5);
        QCOMPARE(acceptLog(vr), QStringList({"lmHMDService::setFovealRegionSize(0.5)"}));
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
        QCOMPARE(acceptLog(vr), QStringList());
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
        QVERIFY(warning->toolTip().contains("with at least 8 Multisampling samples."));

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
            acceptPage(vr);
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

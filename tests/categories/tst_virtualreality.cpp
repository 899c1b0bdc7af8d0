// What the virtual reality page owns beyond the invariants every page keeps:
// its values go through the preference service, apply pushes them to the
// headset services (StarVR with a display switch), a refused eye-tracking
// request is reverted, and the page's own enabling and warning rules.
#include "categories/lmVirtualRealityPreferencesGUI.h"
#include "lmKernelServicesHost.h"
#include "lmOSGWidget.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QtTest>

#include <functional>

namespace {

using Page = lmVirtualRealityPreferencesGUII;
using Edit = std::function<void(Page &)>;

QStringList initialApply()
{
    return expectedCalls("virtualreality-initial-apply.txt");
}

QString starVRSettings(const char *fovFactor, bool native = false)
{
    return QStringLiteral("lmHMDService::setStarVRRenderSettings(useNativeFoveatedRendering=%1, foveatedFovFactor=%2, "
                          "foveatedResolutionScale=0.6, nonFoveatedResolutionScale=0.4, frontViewResolutionScale=1, "
                          "sideViewResolutionScale=1, useSingleTexture=false)")
        .arg(native ? "true" : "false", fovFactor);
}

void setDisplay(int type)
{
    lmOSGWidget::setDisplayType(static_cast<lmOSGWidget::lmDisplay>(type));
    lmCallLog::clear();
}

} // namespace

Q_DECLARE_METATYPE(Edit)

class tst_VirtualReality : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void eachChangedControlIsPushedAlone_data()
    {
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QString>("call");
        const auto row = [](const char *name, Edit edit, const char *call) { QTest::newRow(name) << edit << call; };
        row("ground mode", [](Page &vr) { vr._groundMode->setCurrentIndex(0); },
            "lmImmersiveInteractionService::setTeleportGroundMode(0)");
        row("teleport range", [](Page &vr) { vr._teleportRange->setValue(2500.5); },
            "lmImmersiveInteractionService::setTeleportRange(2500.5)");
        row("hands", [](Page &vr) { vr._visualization->setCurrentIndex(0); },
            "lmImmersiveInteractionService::setDefaultControllerVisualization(0)");
        row("collision objects", [](Page &vr) { vr._createCollisionObjects->setChecked(false); },
            "lmImmersiveInteractionService::setAutoCreateCollisionObjects(false)");
        row("tooltips", [](Page &vr) { vr._showTooltips->setChecked(false); },
            "lmImmersiveInteractionService::setShowTooltipsOnStart(false)");
        row("foveated rendering", [](Page &vr) { vr._foveatedRendering->setChecked(true); },
            "lmHMDService::setFoveatedRenderingEnabled(true)");
        row("foveal region", [](Page &vr) { vr._fovealRegionSize->setValue(0.5); },
            "lmHMDService::setFovealRegionSize(0.5)");
        row("preset", [](Page &vr) { vr._shadingQuality->setCurrentIndex(3); },
            "lmHMDService::setFoveatedQualityPreset(3)");
        // One ring changed pushes all three.
        row("inner ring", [](Page &vr) { vr._innerQuality->setCurrentIndex(5); },
            "lmHMDService::setFoveatedCustomQuality(5, 1, 2)");
        row("middle ring", [](Page &vr) { vr._middleQuality->setCurrentIndex(4); },
            "lmHMDService::setFoveatedCustomQuality(3, 4, 2)");
        row("periphery ring", [](Page &vr) { vr._peripheryQuality->setCurrentIndex(0); },
            "lmHMDService::setFoveatedCustomQuality(3, 1, 0)");
    }

    void eachChangedControlIsPushedAlone()
    {
        QFETCH(Edit, edit);
        QFETCH(QString, call);
        Page vr;
        startPage(vr);
        edit(vr);
        QCOMPARE(acceptLog(vr), QStringList(call));
    }

    // Signals blocked, and what they would have updated updated all the same;
    // through the service a value that does not read shows the key's default,
    // and a combo keeps its item for a value none of its items holds.
    void updateGUIShowsTheStoreQuietly()
    {
        Page vr;
        startPage(vr);
        vr._teleportRange->setValue(100.0);
        vr._fovealRegionSize->setValue(0.8);
        setStored("StarVR Foveated Rendering Enabled", true);
        setStored("HMD Foveated Quality Preset", 3);
        setStored("HMD Foveated Custom Quality Inner", 0);
        setStored("HMD Foveated Custom Quality Middle", 9);
        setStored("HMD Foveated Custom Quality Periphery", 4);
        setStored("VR Teleport Ground Mode", 7);
        setStored("VR Teleport Range", 2500);
        lmPreferences::getData().remove("HMD Foveal Region Size");
        QSignalSpy preset(vr._shadingQuality, QOverload<int>::of(&QComboBox::currentIndexChanged));
        QSignalSpy inner(vr._innerQuality, QOverload<int>::of(&QComboBox::currentIndexChanged));
        QSignalSpy native(vr._starVRFoveatedRendering, &QCheckBox::toggled);
        QSignalSpy region(vr._fovealRegionSize, &QLMSlider::valueChanged);
        vr.updateGUI();
        QCOMPARE(preset.count() + inner.count() + native.count() + region.count(), 0);
        QVERIFY(vr._starVRFovFactor->isEnabled());
        QCOMPARE(vr._shadingQualityWarning->text(), QStringLiteral("Requires RT-AA with 4x Multisampling"));
        QVERIFY(!vr._shadingQualityWarning->isHidden());
        QVERIFY(vr._shadingRateImageNote->isHidden());
        QCOMPARE(vr._teleportRange->value(), 15000.0);
        QCOMPARE(float(vr._fovealRegionSize->value()), 0.3f);
        QCOMPARE(vr._groundMode->currentIndex(), 1);
        QCOMPARE(vr._middleQuality->currentText(), QStringLiteral("1 Sample per 4 pixel"));
        QCOMPARE(lmCallLog::lines(), QStringList());
    }

    void eyeTrackingTheHeadsetRefusesIsReverted()
    {
        Page vr;
        startPage(vr);
        lmKernelServicesHost::setEyeTrackingSupported(false);
        vr._eyeTracking->setChecked(true);
        vr._foveatedRendering->setChecked(true);
        QCOMPARE(acceptLog(vr), QStringList({"lmHMDService::setEyeTrackingEnabled(true)",
                                             "lmHMDService::setFoveatedRenderingEnabled(true)"}));
        QCOMPARE(lmStored<bool>("HMD Eye Tracking"), false);
        QVERIFY(!vr._eyeTracking->isChecked());
        QCOMPARE(acceptLog(vr), QStringList()); // it stays off

        lmKernelServicesHost::setEyeTrackingSupported(true);
        vr._eyeTracking->setChecked(true);
        QCOMPARE(acceptLog(vr), QStringList({"lmHMDService::setEyeTrackingEnabled(true)"}));
        QCOMPARE(lmStored<bool>("HMD Eye Tracking"), true);
        QVERIFY(vr._eyeTracking->isChecked());
    }

    void starVRKeysReinitialiseOnlyAnActiveStarVRDisplay()
    {
        Page vr;
        startPage(vr);
        // Changed behind the page: the headset keeps its own side scale.
        setStored("StarVR Side View Resolution Scale", 1.5f);
        vr.updateGUI();
        setDisplay(6);
        vr._starVRFovFactor->setValue(0.5);
        QCOMPARE(acceptLog(vr), QStringList({"lmOSGWidget::setDisplayType(0)", starVRSettings("0.5"),
                                             "lmOSGWidget::setDisplayType(6)"}));
        setDisplay(2);
        vr._starVRFoveatedRendering->setChecked(true);
        QCOMPARE(acceptLog(vr), QStringList({starVRSettings("0.5", true)}));
        QCOMPARE(int(lmOSGWidget::getDisplayType()), 2);
        setDisplay(6);
        vr._fovealRegionSize->setValue(0.5);
        QCOMPARE(acceptLog(vr), QStringList({"lmHMDService::setFovealRegionSize(0.5)"}));
    }

    void withoutStarVRSupportTheStarVRKeysStayInTheStore()
    {
        lmKernelServicesHost::setStarVRHandlerPresent(false);
        Page vr;
        setDisplay(6);
        vr.setDefault(false);
        QCOMPARE(applyLog(vr), initialApply());
        vr.updateGUI();
        vr._starVRSingleTexture->setChecked(true);
        QCOMPARE(acceptLog(vr), QStringList());
        QCOMPARE(lmStored<bool>("StarVR Single Texture Per Eye"), true);
    }

    void nativeFoveatedRenderingEnablesTheFoveationSliders()
    {
        Page vr;
        startPage(vr);
        for (bool on : {false, true}) {
            vr._starVRFoveatedRendering->setChecked(on);
            for (QWidget *slider : {vr._starVRFovFactor, vr._starVRFoveatedResolutionScale,
                                    vr._starVRNonFoveatedResolutionScale})
                QCOMPARE(slider->isEnabled(), on);
            QVERIFY(vr._starVRFrontViewResolutionScale->isEnabled() && vr._starVRSideViewResolutionScale->isEnabled());
        }
    }

    void shadingQualityWarningNamesTheSamplesNeeded()
    {
        Page vr;
        startPage(vr);
        QLabel *warning = vr._shadingQualityWarning;
        QVERIFY(warning->isHidden()); // "Highest Performance" needs one sample
        // Preset index, inner and periphery ring index, samples the host's quality needs.
        const int steps[][4] = {{3, 3, 2, 2}, {3, 5, 2, 8}, {3, 0, 4, 4}, {2, 0, 4, 2}, {1, 0, 4, 1}};
        for (const auto &step : steps) {
            vr._innerQuality->setCurrentIndex(step[1]);
            vr._peripheryQuality->setCurrentIndex(step[2]);
            vr._shadingQuality->setCurrentIndex(step[0]);
            QCOMPARE(warning->isHidden(), step[3] < 2);
            if (step[3] >= 2) {
                QCOMPARE(warning->text(), QStringLiteral("Requires RT-AA with %1x Multisampling").arg(step[3]));
                QVERIFY(warning->toolTip().contains(QStringLiteral("with at least %1 Multisampling").arg(step[3])));
            }
        }
        QCOMPARE(lmCallLog::lines(), QStringList());
    }

    void missingServicesAreReportedAndNothingCrashes()
    {
        Page vr;
        lmKernelServicesHost::setServicePresence("lmPreferencesService", lmKernelServicesHost::UnknownClass);
        lmStderrCapture noPreferences;
        vr.setDefault(false);
        vr.updateGUI();
        acceptPage(vr);
        const QString unknown = "lmKernelServiceFactory: couldn't find class 'lmPreferencesService'!\n";
        QCOMPARE(noPreferences.text().count(unknown), 4);
        QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
        QCOMPARE(lmCallLog::lines(), QStringList());

        lmKernelServicesHost::setServicePresence("lmPreferencesService", lmKernelServicesHost::Present);
        lmKernelServicesHost::setServicePresence("lmHMDService", lmKernelServicesHost::NullService);
        setDisplay(6);
        lmStderrCapture noHeadset;
        vr.setDefault(false);
        vr.apply();
        vr.updateGUI(); // the preset asks the headset, the note asks the driver
        QCOMPARE(noHeadset.text(), QString("lmKernelServiceFactory: service 'lmHMDService' is NULL!\n").repeated(3));
        QCOMPARE(lmCallLog::lines(), initialApply().mid(0, 5));
        QVERIFY(vr._shadingQualityWarning->isHidden());

        lmKernelServicesHost::setServicePresence("lmHMDService", lmKernelServicesHost::Present);
        lmKernelServicesHost::setServicePresence("lmImmersiveInteractionService", lmKernelServicesHost::UnknownClass);
        lmKernelServicesHost::setShadingRateImageSupported(false);
        setDisplay(0);
        lmStderrCapture noInteraction;
        vr.apply();
        vr.updateGUI();
        QCOMPARE(noInteraction.text(),
                 QStringLiteral("lmKernelServiceFactory: couldn't find class 'lmImmersiveInteractionService'!\n"));
        QCOMPARE(lmCallLog::lines(), initialApply().mid(5) << starVRSettings("0.35"));
        QVERIFY(!vr._shadingRateImageNote->isHidden());
    }
};

QTEST_MAIN(tst_VirtualReality)
#include "tst_virtualreality.moc"

// The virtual reality page's updateGUI, where only signal spies see the
// difference: the controls are filled with their signals blocked, and what
// those signals would have updated is updated all the same. Through the
// service a value that does not read shows the key's default, and a combo
// keeps its item for a value none of its items holds.
#include "categories/lmVirtualRealityPreferencesGUI.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QtTest>

class tst_VirtualReality : public QObject
{
    Q_OBJECT

private slots:
    void updateGUIShowsTheStoreQuietly()
    {
        lmResetHost();
        lmVirtualRealityPreferencesGUII vr;
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
};

QTEST_MAIN(tst_VirtualReality)
#include "tst_virtualreality.moc"

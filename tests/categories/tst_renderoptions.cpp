// The render options page driven as the host and a user drive it: defaults,
// page and store round trip, the apply sequence with its host calls, the
// background table with its colour dialog, new scenes and bad store values.
#include "categories/lmRenderOptionsPreferencesGUI.h"
#include "lmHostSettings.h"
#include "lmOSGWidget.h"
#include "lmPageTestSupport.h"
#include "lmRenderHostState.h"
#include "lmTestSupport.h"

#include <QColorDialog>
#include <QtTest>

#include <algorithm>

namespace {

using Colors = std::vector<osg::Color3f>;

const Colors kGreyBackground = {osg::Color3f(0.207843f, 0.207843f, 0.207843f),
                                osg::Color3f(0.749020f, 0.749020f, 0.749020f)};

// The apply of the default values, every key counting as changed.
const QStringList kInitialApply = {
    "lmOSGWidget::enableRender(0)",
    "lmOSGWidget::enableAntialiasing(0)",
    "lmOSGWidget::setPostprocessAntialiasing(0)",
    "lmOSGWidget::setAntialiasing(0.2, 2, 1)",
    "lmOSGWidget::setAllGradientBackgrounds([Color3f(0.207843, 0.207843, 0.207843), "
    "Color3f(0.74902, 0.74902, 0.74902)], [1, 0])",
    "lmOSGWidget::setSortTrans(1)",
    "lmOSGWidget::setZWriteTrans(0)",
    "lmOSGWidget::showCoordinateSystem(0)",
    "lmOSGWidget::showViewCube(true)",
    "lmOSGWidget::setAuxiliaryNodesVisibleDuringAntialiasing(true)",
    "lmOSGWidget::setHdrReferenceWhite(250)",
    "lmOSGWidget::setRGB10(false)",
    "lmOSGWidget::setRGB16F(false)",
    "lmOSGWidget::setUseSinglePassStereo(false)",
    "lmOSGWidget::setOcclusionCulling(0)",
    "lmLights::changeLightType(\"Headlight\", \"DirectionalLight\")",
    "lmScenegraph::setHeadlightMode(3)",
    "lmOSGWidget::setCameraZUp(true, true)",
    "lmOSGWidget::showLogo(false)",
    "lmOSGWidget::setForceGLFinish(false)",
    "lmOSGWidget::setAutoSuperSampling(false)",
    "lmOSGWidget::setVariableRateShadingQualityLow(1)",
    "lmOSGWidget::setVariableRateShadingQualityMedium(2)",
    "lmOSGWidget::setVariableRateShadingQualityHigh(3)",
    "lmOSGWidget::setVariableRateShadingQualityUltra(2)",
    "lmOSGWidget::setAntialiasingQualityLow(2, true, false, 2)",
    "lmOSGWidget::setAntialiasingQualityMedium(4, true, false, 4)",
    "lmOSGWidget::setAntialiasingQualityHigh(8, true, false, 8)",
    "lmOSGWidget::setAntialiasingQualityUltra(4, true, true, 16)",
    "lmOSGWidget::setSuperSampling(false)",
    "lmOSGWidget::setSuperSamplingQuality(0)",
    "lmOSGWidget::setSLI(false)",
    "lmOSGWidget::setSLIMode(1)",
    "lmController::setSleepTime(1)",
    "lmOSGWidget::setNearFarPlaneLimit(false, 10, 1e+05)",
    "lmOSGWidget::enableRaytracingDownscale(0)",
    "lmOSGWidget::setRaytracingDownscaleFactor(2)",
    "lmOSGWidget::setFixedRenderWindowSize(-1, -1)",
    "lmOSGWidget::showInteractiveMaterialPreview(true)",
    "exCursorProgress::setPreferredSize(32)",
    "exCursorProgress::setPreferredPosition(0)",
    "exCursorProgress::setPreferredVisibility(true)",
    "lmOSGWidget::setCamerasVisible(true)",
    "lmOSGWidget::setLightsVisible(true)",
    "lmOSGWidget::setJointsVisible(false)",
    "lmOSGWidget::setActiveGpuRaytracingMask(4294967295)",
    "lmOSGWidget::enableRender(1)",
    "lmOSGWidget::updateAllMGLW()",
};

// An accepted page pushes what changed inside the render bracket, with the
// logo switched off on the way.
QStringList acceptedLog(const QStringList &beforeLogo, const QStringList &beforeSli = {},
                        const QStringList &afterSli = {})
{
    return QStringList{"lmOSGWidget::enableRender(0)"} + beforeLogo + QStringList{"lmOSGWidget::showLogo(false)"}
           + beforeSli + afterSli + QStringList{"lmOSGWidget::enableRender(1)", "lmOSGWidget::updateAllMGLW()"};
}

QStringList tableRows(const QTableWidget *table)
{
    QStringList rows;
    for (int row = 0; row < table->rowCount(); ++row)
        rows << table->item(row, 0)->text() + " | " + table->item(row, 1)->text();
    return rows;
}

lmDialogAnswerer::Answer chooseColor(const QColor &color)
{
    return [color](QDialog *dialog) {
        if (auto *colorDialog = qobject_cast<QColorDialog *>(dialog))
            colorDialog->setCurrentColor(color);
        dialog->accept();
    };
}

} // namespace

class tst_RenderOptions : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void defaultsDependOnTheApplicationName_data()
    {
        QTest::addColumn<QString>("application");
        QTest::addColumn<bool>("black");
        QTest::newRow("LUMO") << "LUMO" << false;
        QTest::newRow("lumomed") << "lumomed" << true;
        QTest::newRow("case matters") << "LumoMed" << false;
    }

    void defaultsDependOnTheApplicationName()
    {
        QFETCH(QString, application);
        QFETCH(bool, black);
        lmHostSettings::setApplicationName(application);
        lmRenderOptionsPreferencesGUII render;
        render.setDefault(lmPreferences::getData(), true);
        QCOMPARE(lmStored<Colors>("RenderOptions background colors"),
                 black ? Colors(2, osg::Color3f(0, 0, 0)) : kGreyBackground);
    }

    void pageShowsCursorSizeAsPercentAndKeepsCombosForUnknownValues()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        lmRenderOptionsPreferencesGUIW *page = render.page();
        QVERIFY(!page->_fixedResX->isEnabled()); // follows "Use Fixed Resolution"
        setStored("RenderOptions progress cursor size", 48);
        setStored("RenderOptions fixed res", true);
        render.updateGUI();
        QCOMPARE(page->_progressSize->value(), 150);
        QVERIFY(page->_fixedResX->isEnabled());

        setStored("RenderOptions headlight mode", 7);
        setStored("RenderOptions multisample quality low", 3);
        render.updateGUI();
        QCOMPARE(page->_headlightMode->currentText(), QStringLiteral("Ignore"));
        QCOMPARE(page->_multisamplingLow->currentText(), QStringLiteral("2 Samples"));
    }

    void initialApplyPushesEverything()
    {
        lmRenderOptionsPreferencesGUII render;
        render.setDefault(lmPreferences::getData(), false);
        render.apply();
        QCOMPARE(lmCallLog::lines(), kInitialApply);
    }

    // A value written behind the page, then an untouched OK with every key
    // counting as changed (as after --set): the page shows and keeps the
    // stored text, not the host's mask.
    void storedGpuTextSurvivesAnUntouchedOkAndBecomesItsMask()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        lmRenderHostState::state().camerasVisible = false;
        setStored("RenderOptions active raytracing GPUs", std::string("1,3"));
        render.updateGUI();
        QCOMPARE(render.page()->_activeGpus->text(), QStringLiteral("1,3"));
        QVERIFY(render.page()->_showCameras->isChecked()); // the store, not the host
        render.storeGUI();
        lmPreferencesHost::resetUnchanged();
        render.apply();
        QCOMPARE(lmStored<std::string>("RenderOptions active raytracing GPUs"), std::string("1,3"));
        QCOMPARE(lmCallLog::lines().filter("setActiveGpuRaytracingMask"),
                 QStringList({"lmOSGWidget::setActiveGpuRaytracingMask(5)"}));
    }

    // Shown as the last item, so an untouched OK keeps supersampling on.
    void antialiasingQualityBeyondTheItemsShowsAsTheLast()
    {
        setStored("RenderOptions hardware antialiasing quality", 9);
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        QCOMPARE(render.page()->_aaQuality->currentText(), QStringLiteral("Ultra High"));
        QCOMPARE(acceptLog(render).filter("setSuperSampling"),
                 QStringList({"lmOSGWidget::setSuperSampling(true)", "lmOSGWidget::setSuperSamplingQuality(16)"}));
        QCOMPARE(lmStored<int>("RenderOptions hardware antialiasing quality"), 4);
    }

    void renderStateIsRestoredAndHighQualityAntialiasingSwitchedOff()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        lmRenderHostState::state().renderEnabled = false;
        lmRenderHostState::state().highQualityAntialiasing = true;
        // The stored high-quality flag itself is never pushed.
        render.page()->_openGLInteractive->setChecked(true);
        QCOMPARE(acceptLog(render), QStringList({
                                        "lmOSGWidget::enableRender(0)",
                                        "lmOSGWidget::setHighQualityAntialiasing(false)",
                                        "lmOSGWidget::showLogo(false)",
                                        "lmOSGWidget::enableRender(0)",
                                        "lmOSGWidget::updateAllMGLW()",
                                    }));
        QCOMPARE(lmStored<bool>("RenderOptions antialiase high quality"), true);
        QVERIFY(!lmOSGWidget::getHighQualityAntialiasing());
        QVERIFY(!lmOSGWidget::isRenderEnabled());
    }

    void restrictedEditionForcesAntialiasingAndDownscale()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        lmRenderOptionsPreferencesGUII render;
        QCOMPARE(lmPreferencesHost::pages().size(), std::size_t(1));
        startPage(render);
        render.page()->_stillframeAA->setChecked(true);
        render.page()->_downscale->setChecked(true);
        acceptPage(render);
        render.page()->_stillframeAA->setChecked(false);
        render.page()->_downscale->setChecked(false);
        acceptPage(render);
        QCOMPARE(lmCallLog::lines().filter("enableAntialiasing"),
                 QStringList({"lmOSGWidget::enableAntialiasing(1)", "lmOSGWidget::enableAntialiasing(1)"}));
        QCOMPARE(lmCallLog::lines().filter("enableRaytracingDownscale"),
                 QStringList({"lmOSGWidget::enableRaytracingDownscale(1)",
                              "lmOSGWidget::enableRaytracingDownscale(1)"}));

        // The forced keys are not even read.
        lmCallLog::clear();
        setStored("RenderOptions enable antialiase", 1);
        setStored("RenderOptions downscale", 1);
        lmPreferencesHost::resetUnchanged();
        lmStderrCapture capture;
        render.apply();
        QCOMPARE(capture.text(), QString());
        QVERIFY(lmCallLog::lines().contains("lmOSGWidget::enableAntialiasing(1)"));
    }

    void storeConvertsThePageValues()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        lmRenderOptionsPreferencesGUIW *page = render.page();
        page->_postprocessAA->setChecked(true);
        page->_aaTime->setText("2.5");
        page->_hdrReferenceWhite->setValue(320.5);
        page->_multisamplingHigh->setCurrentIndex(4);
        page->_vrsHigh->setCurrentIndex(0);
        page->_raytracingHigh->setCurrentIndex(6);
        page->_headlightMode->setCurrentIndex(1);
        page->_nearPlane->setText("0.5");
        page->_farPlane->setText("abc");
        page->_activeGpus->setText("2,4");
        page->_progressSize->setValue(150);
        acceptPage(render);
        QCOMPARE(lmStored<unsigned int>("RenderOptions enable postprocess antialias"), 1u);
        QCOMPARE(lmStored<double>("RenderOptions antialiase time"), 2.5);
        QCOMPARE(lmStored<float>("RenderOptions HDR Reference White"), 320.5f);
        QCOMPARE(lmStored<int>("RenderOptions multisample quality high"), 16);
        QCOMPARE(lmStored<int>("RenderOptions vrs quality high"), 0);
        QCOMPARE(lmStored<int>("RenderOptions raytracing supersampling quality high"), 64);
        QCOMPARE(lmStored<int>("RenderOptions headlight mode"), 1);
        QCOMPARE(lmStored<float>("RenderOptions near plane"), 0.5f);
        QCOMPARE(lmStored<float>("RenderOptions far plane"), 0.0f);
        QCOMPARE(lmStored<std::string>("RenderOptions active raytracing GPUs"), std::string("2,4"));
        QCOMPARE(lmStored<int>("RenderOptions progress cursor size"), 48);
    }

    void progressCursorSizeIsAPercentageOfTheBaseSize_data()
    {
        QTest::addColumn<int>("baseSize");
        QTest::addColumn<int>("percent");
        QTest::addColumn<int>("stored");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("150 %") << 32 << 150 << 48 << QStringList({"exCursorProgress::setPreferredSize(48)"});
        QTest::newRow("truncated") << 30 << 155 << 46 << QStringList({"exCursorProgress::setPreferredSize(46)"});
        QTest::newRow("below 100 % is the base size") << 32 << 50 << 32 << QStringList();
        QTest::newRow("99 % of 40") << 40 << 99 << 40 << QStringList({"exCursorProgress::setPreferredSize(40)"});
    }

    void progressCursorSizeIsAPercentageOfTheBaseSize()
    {
        QFETCH(int, baseSize);
        QFETCH(int, percent);
        QFETCH(int, stored);
        QFETCH(QStringList, calls);
        lmRenderHostState::state().cursorBaseSize = baseSize;
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        render.page()->_progressSize->setValue(percent);
        acceptPage(render);
        QCOMPARE(lmStored<int>("RenderOptions progress cursor size"), stored);
        QCOMPARE(lmCallLog::lines().filter("setPreferredSize"), calls);
    }

    void backgroundTableEditsReachTheRenderer()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        lmRenderOptionsPreferencesGUIW *page = render.page();
        QTableWidget *table = page->_backgroundTable;

        // Without a selected row there is nothing to colour.
        table->setCurrentCell(-1, -1);
        {
            lmDialogAnswerer answerer;
            page->_chooseBackgroundColor->click();
            QCOMPARE(answerer.count(), 0);
        }

        page->_addBackground->click();
        QCOMPARE(table->rowCount(), 3);
        QCOMPARE(table->item(2, 0)->text(), QStringLiteral("0.0 0.0 0.0"));
        QCOMPARE(table->currentRow(), 2);
        table->item(2, 1)->setText("0.5");
        {
            lmDialogAnswerer answerer({chooseColor(QColor(51, 102, 255))});
            page->_chooseBackgroundColor->click();
            QCOMPARE(answerer.count(), 1);
            QCOMPARE(answerer.seen()[0].className, QStringLiteral("QColorDialog"));
        }
        QCOMPARE(table->item(2, 0)->text(), QStringLiteral("0.200000 0.400000 1.000000"));
        {
            // Cancelling keeps the colour.
            lmDialogAnswerer answerer({lmDialogAnswerer::reject()});
            page->_chooseBackgroundColor->click();
            QCOMPARE(answerer.count(), 1);
        }
        QCOMPARE(table->item(2, 0)->text(), QStringLiteral("0.200000 0.400000 1.000000"));

        table->setCurrentCell(0, 0);
        page->_deleteBackground->click();
        QCOMPARE(tableRows(table), QStringList({"0.749020 0.749020 0.749020 | 0", "0.200000 0.400000 1.000000 | 0.5"}));

        acceptPage(render);
        QCOMPARE(lmStored<Colors>("RenderOptions background colors"),
                 Colors({osg::Color3f(0.749020f, 0.749020f, 0.749020f), osg::Color3f(0.2f, 0.4f, 1.0f)}));
        QCOMPARE(lmStored<std::vector<float>>("RenderOptions background ints"), std::vector<float>({0.0f, 0.5f}));
        QCOMPARE(lmCallLog::lines(),
                 acceptedLog({"lmOSGWidget::setAllGradientBackgrounds([Color3f(0.74902, 0.74902, 0.74902), "
                              "Color3f(0.2, 0.4, 1)], [0, 0.5])"}));

        // Typed colours with missing parts read the missing ones as 0.
        table->item(0, 0)->setText("0.5  0.25");
        table->item(1, 1)->setText("x");
        render.storeGUI();
        QCOMPARE(lmStored<Colors>("RenderOptions background colors")[0], osg::Color3f(0.5f, 0.25f, 0.0f));
        QCOMPARE(lmStored<std::vector<float>>("RenderOptions background ints"), std::vector<float>({0.0f, 0.0f}));
    }

    void headlightTypeAndMode_data()
    {
        QTest::addColumn<bool>("point");
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("point, always on") << true << 1
                                          << QStringList({"lmLights::changeLightType(\"Headlight\", \"PointLight\")",
                                                          "lmScenegraph::setHeadlightMode(1)",
                                                          "lmOSGWidget::enableHeadlight(1)"});
        QTest::newRow("always off") << false << 2
                                    << QStringList({"lmScenegraph::setHeadlightMode(2)",
                                                    "lmOSGWidget::enableHeadlight(0)"});
        QTest::newRow("auto leaves the switch") << false << 0 << QStringList({"lmScenegraph::setHeadlightMode(0)"});
    }

    void headlightTypeAndMode()
    {
        QFETCH(bool, point);
        QFETCH(int, mode);
        QFETCH(QStringList, calls);
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        render.page()->_pointHeadlight->setChecked(point);
        render.page()->_headlightMode->setCurrentIndex(mode);
        QCOMPARE(acceptLog(render), acceptedLog(calls));
    }

    void newSceneGivesItsHeadlightThePageSettings()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        render.page()->_pointHeadlight->setChecked(true);
        acceptPage(render); // marks every bound key but the headlight type unchanged
        render.storeGUI();
        lmCallLog::clear();
        lmPreferencesHost::newSceneAll();
        QCOMPARE(lmCallLog::lines(), QStringList({"lmLights::changeLightType(\"Headlight\", \"PointLight\")",
                                                  "lmScenegraph::setHeadlightMode(3)"}));

        // Before a scene exists there is no headlight to change.
        lmRenderHostState::state().headlight = nullptr;
        lmCallLog::clear();
        lmPreferencesHost::newSceneAll();
        render.page()->_pointHeadlight->setChecked(false);
        acceptPage(render);
        QCOMPARE(lmCallLog::lines(), QStringList({"lmScenegraph::setHeadlightMode(3)"}) + acceptedLog({}));
    }

    void changedPresetValueRepushesItsLevel()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        render.page()->_pixelfilterMedium->setChecked(false);
        render.page()->_vrsUltra->setCurrentIndex(3);
        QCOMPARE(acceptLog(render), acceptedLog({}, {"lmOSGWidget::setVariableRateShadingQualityUltra(3)",
                                                     "lmOSGWidget::setAntialiasingQualityMedium(4, false, false, 4)"}));
    }

    void antialiasingQualityPushesClampedSampleCounts_data()
    {
        QTest::addColumn<int>("quality");
        QTest::addColumn<QStringList>("calls");
        const QStringList off = {"lmOSGWidget::setSuperSampling(false)", "lmOSGWidget::setSuperSamplingQuality(0)"};
        const auto on = [](int samples) {
            return QStringList({"lmOSGWidget::setSuperSampling(true)",
                                QStringLiteral("lmOSGWidget::setSuperSamplingQuality(%1)").arg(samples)});
        };
        QTest::newRow("Off") << 0 << off;
        QTest::newRow("Low") << 1 << on(2);
        QTest::newRow("High") << 3 << on(8);
        QTest::newRow("Ultra High") << 4 << on(16);
        QTest::newRow("one beyond the items") << 5 << on(16);
        QTest::newRow("far beyond the items") << 9 << on(16);
        QTest::newRow("negative") << -3 << off;
    }

    void antialiasingQualityPushesClampedSampleCounts()
    {
        QFETCH(int, quality);
        QFETCH(QStringList, calls);
        lmRenderOptionsPreferencesGUII render;
        render.setDefault(lmPreferences::getData(), false);
        setStored("RenderOptions hardware antialiasing quality", quality);
        render.apply();
        QCOMPARE(lmCallLog::lines().filter("lmOSGWidget::setSuperSampling"), calls);
    }

    void sleepClippingDownscaleAndFixedResolution()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        lmRenderOptionsPreferencesGUIW *page = render.page();
        page->_disableSleep->setChecked(true);
        page->_farPlane->setText("5000");
        page->_downscaleQuality->setCurrentIndex(2);
        page->_fixedRes->setChecked(true);
        page->_fixedResX->setValue(1920);
        page->_fixedResY->setValue(1080);
        QCOMPARE(acceptLog(render),
                 acceptedLog({}, {},
                             {"lmController::setSleepTime(0)", "lmOSGWidget::setNearFarPlaneLimit(false, 10, 5000)",
                              "lmOSGWidget::setRaytracingDownscaleFactor(8)",
                              "lmOSGWidget::setFixedRenderWindowSize(1920, 1080)"}));

        // Switching the fixed size off releases it, whatever width and height hold.
        lmCallLog::clear();
        page->_disableSleep->setChecked(false);
        page->_fixedRes->setChecked(false);
        page->_downscaleQuality->setCurrentIndex(1);
        QCOMPARE(acceptLog(render),
                 acceptedLog({}, {},
                             {"lmController::setSleepTime(1)", "lmOSGWidget::setRaytracingDownscaleFactor(4)",
                              "lmOSGWidget::setFixedRenderWindowSize(-1, -1)"}));
        QCOMPARE(lmStored<int>("RenderOptions fixed resx"), 1920);

        // Qualities no item stands for give factor 2.
        for (int quality : {5, -1}) {
            setStored("RenderOptions downscale quality", quality);
            lmPreferencesHost::resetUnchanged();
            QCOMPARE(applyLog(render).filter("DownscaleFactor"),
                     QStringList("lmOSGWidget::setRaytracingDownscaleFactor(2)"));
        }
    }

    void gpuListBecomesAMask_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("mask");
        QTest::newRow("1,3") << "1,3" << "5";
        QTest::newRow("empty") << "" << "4294967295";
        QTest::newRow("all") << "all" << "4294967295";
        QTest::newRow("ALL is no keyword") << "ALL" << "0";
        QTest::newRow("blanks") << " 2 , 4" << "10";
        QTest::newRow("stops at text") << "1,x,4" << "1";
        QTest::newRow("stops inside a piece") << "2;3" << "2";
        QTest::newRow("32") << "32" << "2147483648";
        QTest::newRow("33 wraps") << "33" << "1";
        QTest::newRow("0 wraps") << "0" << "2147483648";
    }

    void gpuListBecomesAMask()
    {
        QFETCH(QString, text);
        QFETCH(QString, mask);
        setStored("RenderOptions active raytracing GPUs", std::string("7"));
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        render.page()->_activeGpus->setText(text);
        QCOMPARE(acceptLog(render).filter("setActiveGpuRaytracingMask"),
                 QStringList({"lmOSGWidget::setActiveGpuRaytracingMask(" + mask + ")"}));
        QCOMPARE(QString::number(lmRenderOptionsPreferencesGUII::parseGpuMask(text.toStdString())), mask);
    }

    void wrongTypedKeysUseFallbacksOrSkipThePush()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        setStored("RenderOptions antialiase scale", 2.0);             // double: fallback 1
        setStored("RenderOptions sort trans", 0);                     // int: fallback true
        setStored("RenderOptions headlight mode", 1.0f);              // gated
        setStored("RenderOptions show cameras", std::string("no"));   // gated
        setStored("RenderOptions fixed res", true);
        setStored("RenderOptions fixed resx", 800.0f);                // fallback 1280
        setStored("RenderOptions background colors", osg::Color3f()); // fallback empty list
        setStored("RenderOptions active raytracing GPUs", QString("1")); // fallback: every GPU

        lmPreferencesHost::resetUnchanged();
        render.apply();
        QStringList expected = withCalls(kInitialApply, {"lmOSGWidget::setAntialiasing(0.2, 1, 1)",
                                                         "lmOSGWidget::setAllGradientBackgrounds([], [1, 0])",
                                                         "lmOSGWidget::setFixedRenderWindowSize(1280, 720)"});
        expected.removeAll("lmScenegraph::setHeadlightMode(3)");
        expected.removeAll("lmOSGWidget::setCamerasVisible(true)");
        QCOMPARE(lmCallLog::lines(), expected);
    }
};

QTEST_MAIN(tst_RenderOptions)
#include "tst_renderoptions.moc"

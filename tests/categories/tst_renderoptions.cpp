// What the render options page owns beyond the invariants every page keeps:
// the apply sequence and its conversions, the edition rule, the background
// table with its colour dialog, the enabling rules and new scenes.
#include "categories/lmRenderOptionsPreferencesGUI.h"
#include "lmHostSettings.h"
#include "lmPageTestSupport.h"
#include "lmRenderHostState.h"
#include "lmTestSupport.h"

#include <QColorDialog>
#include <QtTest>

#include <functional>
#include <utility>

namespace {

using Colors = std::vector<osg::Color3f>;
using Stored = std::vector<std::pair<std::string, boost::any>>;
using Page = lmRenderOptionsPreferencesGUIW;
using Edit = std::function<void(Page *)>;

const QString kLogo = "lmOSGWidget::showLogo(false)";

QStringList initialApply()
{
    return expectedCalls("renderoptions-initial-apply.txt");
}

// An accepted page's calls: what changed, inside the render bracket.
QStringList bracketed(const QStringList &calls, int renderAfter = 1)
{
    return QStringList{"lmOSGWidget::enableRender(0)"} + calls
           + QStringList{QStringLiteral("lmOSGWidget::enableRender(%1)").arg(renderAfter),
                         "lmOSGWidget::updateAllMGLW()"};
}

QStringList superSampling(int samples)
{
    return {QStringLiteral("lmOSGWidget::setSuperSampling(%1)").arg(samples ? "true" : "false"),
            QStringLiteral("lmOSGWidget::setSuperSamplingQuality(%1)").arg(samples)};
}

QStringList tableRows(const QTableWidget *table)
{
    QStringList rows;
    for (int row = 0; row < table->rowCount(); ++row)
        rows << table->item(row, 0)->text() + " | " + table->item(row, 1)->text();
    return rows;
}

} // namespace

Q_DECLARE_METATYPE(Stored)
Q_DECLARE_METATYPE(Edit)

class tst_RenderOptions : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void defaultBackgroundIsBlackOnlyForLumomed()
    {
        const Colors grey = {osg::Color3f(0.207843f, 0.207843f, 0.207843f),
                             osg::Color3f(0.749020f, 0.749020f, 0.749020f)};
        const Colors black(2, osg::Color3f(0, 0, 0));
        for (const auto &application :
             {std::make_pair("LUMO", grey), std::make_pair("lumomed", black), std::make_pair("LumoMed", grey)}) {
            lmResetHost();
            lmHostSettings::setApplicationName(application.first);
            lmRenderOptionsPreferencesGUII render;
            render.setDefault(lmPreferences::getData(), true);
            QCOMPARE(lmStored<Colors>("RenderOptions background colors"), application.second);
        }
    }

    // Stored values, every key counting as changed: the calls that differ
    // from the initial apply, and the gated calls an unreadable key drops.
    void applyConvertsStoredValues_data()
    {
        QTest::addColumn<Stored>("stored");
        QTest::addColumn<QStringList>("calls");
        QTest::addColumn<QStringList>("dropped");
        const auto row = [](const char *name, Stored stored, QStringList calls, QStringList dropped = {}) {
            QTest::newRow(name) << stored << calls << dropped;
        };
        row("defaults", {}, {});
        const std::pair<int, int> qualities[] = {{1, 2}, {3, 8}, {4, 16}, {5, 16}, {9, 16}, {-3, 0}};
        for (const auto &quality : qualities)
            row(qPrintable(QStringLiteral("AA quality %1").arg(quality.first)),
                {{"RenderOptions hardware antialiasing quality", quality.first}}, superSampling(quality.second));
        row("sleep disabled", {{"RenderOptions disable sleep", true}}, {"lmController::setSleepTime(0)"});
        row("fixed size", {{"RenderOptions fixed res", true}, {"RenderOptions fixed resx", 1920}},
            {"lmOSGWidget::setFixedRenderWindowSize(1920, 720)"});
        row("no fixed size whatever its width", {{"RenderOptions fixed resx", 1920}}, {});
        const std::pair<int, int> downscales[] = {{1, 4}, {2, 8}, {5, 2}, {-1, 2}};
        for (const auto &downscale : downscales)
            row(qPrintable(QStringLiteral("downscale %1").arg(downscale.first)),
                {{"RenderOptions downscale quality", downscale.first}},
                {QStringLiteral("lmOSGWidget::setRaytracingDownscaleFactor(%1)").arg(downscale.second)});
        const std::pair<const char *, const char *> gpus[] = {
            {"1,3", "5"},      {"all", "4294967295"}, {"ALL", "0"},         {" 2 , 4", "10"}, {"1,x,4", "1"},
            {"2;3", "2"},      {"32", "2147483648"},  {"33", "1"},          {"0", "2147483648"}};
        for (const auto &gpu : gpus)
            row(qPrintable(QStringLiteral("GPUs \"%1\"").arg(gpu.first)),
                {{"RenderOptions active raytracing GPUs", std::string(gpu.first)}},
                {QStringLiteral("lmOSGWidget::setActiveGpuRaytracingMask(%1)").arg(gpu.second)});
        row("mistyped keys take fallbacks or skip their push",
            {{"RenderOptions antialiase scale", 2.0},             // fallback 1
             {"RenderOptions sort trans", 0},                     // fallback true
             {"RenderOptions headlight mode", 1.0f},              // gated
             {"RenderOptions show cameras", std::string("no")},   // gated
             {"RenderOptions fixed res", true},
             {"RenderOptions fixed resx", 800.0f},                // fallback 1280
             {"RenderOptions background colors", osg::Color3f()}, // fallback empty list
             {"RenderOptions active raytracing GPUs", QString("1")}},
            {"lmOSGWidget::setAntialiasing(0.2, 1, 1)", "lmOSGWidget::setAllGradientBackgrounds([], [1, 0])",
             "lmOSGWidget::setFixedRenderWindowSize(1280, 720)"},
            {"lmScenegraph::setHeadlightMode(3)", "lmOSGWidget::setCamerasVisible(true)"});
    }

    void applyConvertsStoredValues()
    {
        QFETCH(Stored, stored);
        QFETCH(QStringList, calls);
        QFETCH(QStringList, dropped);
        lmRenderOptionsPreferencesGUII render;
        render.setDefault(lmPreferences::getData(), false);
        for (const auto &value : stored)
            setStored(value.first, value.second);
        QStringList expected = withCalls(initialApply(), calls);
        for (const QString &call : dropped)
            QVERIFY(expected.removeAll(call) == 1);
        QCOMPARE(applyLog(render), expected);
    }

    void restrictedEditionForcesAntialiasingAndDownscaleUnread()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        lmRenderOptionsPreferencesGUII render;
        QCOMPARE(lmPreferencesHost::pages().size(), std::size_t(1));
        render.setDefault(lmPreferences::getData(), false);
        setStored("RenderOptions enable antialiase", 1);
        setStored("RenderOptions downscale", 1);
        lmStderrCapture capture;
        QCOMPARE(applyLog(render), withCalls(initialApply(), {"lmOSGWidget::enableAntialiasing(1)",
                                                              "lmOSGWidget::enableRaytracingDownscale(1)"}));
        QCOMPARE(capture.text(), QString());
    }

    // Page edits, accepted: what changed is pushed, converted, in apply order.
    void acceptPushesWhatChanged_data()
    {
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QStringList>("calls");
        const auto row = [](const char *name, Edit edit, QStringList calls) { QTest::newRow(name) << edit << calls; };
        row("point headlight, always on",
            [](Page *p) { p->_pointHeadlight->setChecked(true); p->_headlightMode->setCurrentIndex(1); },
            bracketed({"lmLights::changeLightType(\"Headlight\", \"PointLight\")", "lmScenegraph::setHeadlightMode(1)",
                       "lmOSGWidget::enableHeadlight(1)", kLogo}));
        row("always off", [](Page *p) { p->_headlightMode->setCurrentIndex(2); },
            bracketed({"lmScenegraph::setHeadlightMode(2)", "lmOSGWidget::enableHeadlight(0)", kLogo}));
        row("auto leaves the switch", [](Page *p) { p->_headlightMode->setCurrentIndex(0); },
            bracketed({"lmScenegraph::setHeadlightMode(0)", kLogo}));
        // One preset value re-pushes its level; line edits read their text.
        row("conversions",
            [](Page *p) {
                p->_postprocessAA->setChecked(true); p->_aaTime->setText("2.5"); p->_hdrReferenceWhite->setValue(320.5);
                p->_multisamplingHigh->setCurrentIndex(4); p->_raytracingHigh->setCurrentIndex(6);
                p->_pixelfilterMedium->setChecked(false); p->_vrsUltra->setCurrentIndex(3);
                p->_nearPlane->setText("0.5"); p->_farPlane->setText("abc"); p->_activeGpus->setText("2,4");
            },
            bracketed({"lmOSGWidget::setPostprocessAntialiasing(1)", "lmOSGWidget::setAntialiasing(0.2, 2, 2.5)",
                       "lmOSGWidget::setHdrReferenceWhite(320.5)", kLogo,
                       "lmOSGWidget::setVariableRateShadingQualityUltra(3)",
                       "lmOSGWidget::setAntialiasingQualityMedium(4, false, false, 4)",
                       "lmOSGWidget::setAntialiasingQualityHigh(16, true, false, 64)",
                       "lmOSGWidget::setNearFarPlaneLimit(false, 0.5, 0)",
                       "lmOSGWidget::setActiveGpuRaytracingMask(10)"}));
        row("sleep, downscale, fixed size",
            [](Page *p) {
                p->_disableSleep->setChecked(true); p->_downscaleQuality->setCurrentIndex(2);
                p->_fixedRes->setChecked(true); p->_fixedResX->setValue(1920); p->_fixedResY->setValue(1080);
            },
            bracketed({kLogo, "lmController::setSleepTime(0)", "lmOSGWidget::setRaytracingDownscaleFactor(8)",
                       "lmOSGWidget::setFixedRenderWindowSize(1920, 1080)"}));
        // The stored flag is never pushed; the host's mode is switched off.
        row("high-quality antialiasing, render paused",
            [](Page *p) {
                lmRenderHostState::state().renderEnabled = false;
                lmRenderHostState::state().highQualityAntialiasing = true;
                p->_openGLInteractive->setChecked(true);
            },
            bracketed({"lmOSGWidget::setHighQualityAntialiasing(false)", kLogo}, 0));
    }

    void acceptPushesWhatChanged()
    {
        QFETCH(Edit, edit);
        QFETCH(QStringList, calls);
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        edit(render.page());
        QCOMPARE(acceptLog(render), calls);
    }

    void progressCursorSizeIsAPercentageOfTheBaseSize_data()
    {
        QTest::addColumn<int>("baseSize");
        QTest::addColumn<int>("percent");
        QTest::addColumn<int>("stored");
        QTest::newRow("150 %") << 32 << 150 << 48;
        QTest::newRow("truncated") << 30 << 155 << 46;
        QTest::newRow("below 100 % is the base size") << 32 << 50 << 32;
        QTest::newRow("99 % of 40") << 40 << 99 << 40;
    }

    void progressCursorSizeIsAPercentageOfTheBaseSize()
    {
        QFETCH(int, baseSize);
        QFETCH(int, percent);
        QFETCH(int, stored);
        lmRenderHostState::state().cursorBaseSize = baseSize;
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        render.page()->_progressSize->setValue(percent);
        const QStringList pushed = acceptLog(render).filter("setPreferredSize");
        // The default 32 stays unchanged and is not pushed.
        const QString push = QStringLiteral("exCursorProgress::setPreferredSize(%1)").arg(stored);
        QCOMPARE(pushed, stored == 32 ? QStringList() : QStringList(push));
        QCOMPARE(lmStored<int>("RenderOptions progress cursor size"), stored);
        setStored("RenderOptions progress cursor size", 48);
        render.updateGUI();
        QCOMPARE(render.page()->_progressSize->value(), qRound(48.0 / baseSize * 100.0));
    }

    void valuesTheCombosDoNotHold()
    {
        setStored("RenderOptions hardware antialiasing quality", 9);
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        // Shown as the last item, so an untouched OK keeps supersampling on.
        QCOMPARE(render.page()->_aaQuality->currentText(), QStringLiteral("Ultra High"));
        QCOMPARE(acceptLog(render), bracketed(QStringList{kLogo} + superSampling(16)));
        QCOMPARE(lmStored<int>("RenderOptions hardware antialiasing quality"), 4);
        // Other combos keep their item.
        setStored("RenderOptions headlight mode", 7);
        setStored("RenderOptions multisample quality low", 3);
        render.updateGUI();
        QCOMPARE(render.page()->_headlightMode->currentText(), QStringLiteral("Ignore"));
        QCOMPARE(render.page()->_multisamplingLow->currentText(), QStringLiteral("2 Samples"));
    }

    void switchesEnableTheirSettings()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        Page *page = render.page();
        const std::pair<QAbstractButton *, QWidget *> rules[] = {
            {page->_fixedRes, page->_fixedResX},         {page->_fixedRes, page->_fixedResY},
            {page->_limitNearFar, page->_nearPlane},     {page->_limitNearFar, page->_farPlane},
            {page->_downscale, page->_downscaleQuality}, {page->_occlusionCulling, page->_occlusionCullingMode}};
        for (const auto &rule : rules) {
            for (bool on : {true, false}) {
                rule.first->setChecked(on);
                QVERIFY2(rule.second->isEnabled() == on, qPrintable(rule.second->objectName()));
            }
        }
    }

    void backgroundTableEditsReachTheRenderer()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        Page *page = render.page();
        QTableWidget *table = page->_backgroundTable;
        table->setCurrentCell(-1, -1);
        {
            lmDialogAnswerer none; // without a selected row there is nothing to colour
            page->_chooseBackgroundColor->click();
            QCOMPARE(none.count(), 0);
        }

        page->_addBackground->click();
        QCOMPARE(table->currentRow(), 2);
        table->item(2, 1)->setText("0.5");
        const lmDialogAnswerer::Answer choose = [](QDialog *dialog) {
            qobject_cast<QColorDialog *>(dialog)->setCurrentColor(QColor(51, 102, 255));
            dialog->accept();
        };
        lmDialogAnswerer answerer({choose, lmDialogAnswerer::reject()});
        page->_chooseBackgroundColor->click();
        page->_chooseBackgroundColor->click(); // cancelled: the colour stays
        QCOMPARE(answerer.count(), 2);
        table->setCurrentCell(0, 0);
        page->_deleteBackground->click();
        QCOMPARE(tableRows(table), QStringList({"0.749020 0.749020 0.749020 | 0", "0.200000 0.400000 1.000000 | 0.5"}));
        QCOMPARE(acceptLog(render), bracketed({"lmOSGWidget::setAllGradientBackgrounds([Color3f(0.74902, 0.74902, "
                                               "0.74902), Color3f(0.2, 0.4, 1)], [0, 0.5])",
                                               kLogo}));

        // A new row is black at 0; missing colour parts and unreadable positions read as 0.
        page->_addBackground->click();
        QCOMPARE(tableRows(table).last(), QStringLiteral("0.0 0.0 0.0 | 0"));
        table->item(0, 0)->setText("0.5  0.25");
        table->item(1, 1)->setText("x");
        render.storeGUI();
        QCOMPARE(lmStored<Colors>("RenderOptions background colors"),
                 Colors({osg::Color3f(0.5f, 0.25f, 0.0f), osg::Color3f(0.2f, 0.4f, 1.0f), osg::Color3f(0, 0, 0)}));
        QCOMPARE(lmStored<std::vector<float>>("RenderOptions background ints"), std::vector<float>(3, 0.0f));
    }

    void newSceneGivesItsHeadlightThePageSettings()
    {
        lmRenderOptionsPreferencesGUII render;
        startPage(render);
        render.page()->_pointHeadlight->setChecked(true);
        acceptPage(render);
        render.storeGUI(); // every key unchanged: a new scene pushes all the same
        lmCallLog::clear();
        lmPreferencesHost::newSceneAll();
        QCOMPARE(lmCallLog::lines(), QStringList({"lmLights::changeLightType(\"Headlight\", \"PointLight\")",
                                                  "lmScenegraph::setHeadlightMode(3)"}));
        // Before a scene exists there is no headlight to change.
        lmRenderHostState::state().headlight = nullptr;
        lmCallLog::clear();
        lmPreferencesHost::newSceneAll();
        QCOMPARE(lmCallLog::lines(), QStringList({"lmScenegraph::setHeadlightMode(3)"}));
    }
};

QTEST_MAIN(tst_RenderOptions)
#include "tst_renderoptions.moc"

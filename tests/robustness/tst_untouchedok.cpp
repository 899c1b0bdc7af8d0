// An OK on pages nobody touched changes nothing: started as lmprefs-host
// starts, from a store in which every key holds a value other than its
// default, an accept saves the values it loaded, bit for bit, and makes only
// the host calls that categories make on every apply.
#include "lmPreferencesSession.h"
#include "lmStoreFile.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmRandomValues.h"
#include "lmTestSupport.h"

#include <QLibrary>
#include <QTemporaryDir>
#include <QtTest>

#include <map>
#include <memory>
#include <set>
#include <string>

namespace {

using Colors = std::vector<osg::Color3f>;

// Keys whose controls have a fixed range, item list or text conversion: the
// awkward value would not be one the control can hold, so these get a value
// it can (a number with six significant digits for a line edit, an item of a
// combo, a sorted list for a sorted table).
const std::map<std::string, boost::any> &valuesControlsCanHold()
{
    static const std::map<std::string, boost::any> values{
        {"Camera fov", 72.5f},
        {"Stereo eye separation", 65.5f},
        {"Stereo zero plane parallaxe", 1234.5f},
        {"Powerwall width", 1920.25f},
        {"Powerwall height", 1080.5f},
        {"Powerwall distance", 2500.75f},
        {"Marker size", 2.5f},
        {"MainWindow window opacity", 0.0512345678},
        {"Navigator mode", 1},
        {"Interaction mode", 2},
        {"Navigator dolly speed", 2.5f},
        {"Navigator panning speed", 7.25f},
        {"Navigator orbit detection area", 12345},
        {"Navigator orbit detection time", 54321},
        {"RenderOptions enable postprocess antialias", 1u},
        {"RenderOptions antialiase time", 2.5},
        {"RenderOptions near plane", 12.5f},
        {"RenderOptions far plane", 50000.5f},
        {"RenderOptions background colors", Colors{{0.25f, 0.5f, 0.75f}, {0.125f, 0.375f, 0.625f}}},
        {"RenderOptions background ints", std::vector<float>{0.75f, 0.25f}},
        {"RenderOptions hardware antialiasing quality", 3},
        {"RenderOptions progress cursor size", 48}, // 150 % of the host's base size 32
        {"FileIO dialog reference behavior", 0},
        {"FileIO converter output format", std::string("LUMO")},
        {"texture search paths", std::vector<std::string>{"/data/a textures", "/data/b\xc3\xa9"}},
        {"OsbFileIO compression type", 3},
        {"VpbFileIO Maximal number of increments", 1234u},
        {"LUMOOptions import smart reference behavior", 3},
        {"KovaFileIO units", std::string("inch")},
        {"KovaFileIO import units", std::string("meter")},
        {"Optimizer Topology Tolerance", 0.0125f},
        {"Optimizer Offset Factor", 2.5f},
        {"Optimizer Teselation Quality", std::vector<float>{0.0123457f, 0.3f, 2.71828f}},
    };
    return values;
}

// Keys an untouched OK may change, because a rule of their page says so.
struct Rewritten
{
    const char *key; // a suffix for the keys of every CAD page
    bool suffix;
    bool restrictedOnly;
    const char *reason;
};
const Rewritten kRewritten[] = {
    {"STLOptions import source reference behavior", false, false, "the STL page pins it to 1"},
    {"OsbFileIO force compression", false, false, "derived from the stored compression type"},
    {"OpenSGOptions import smart reference behavior", false, false, "written from the LUMO combo"},
    {"OpenSGOptions import create as smart", false, false, "written from the LUMO check box"},
    {"NXOptions import empty layers", false, false, "shown on the NX page but never loaded there"},
    {"Options import invisible surfaces", true, false, "a geometry combo keeps invisible only with import"},
    {"Options import invisible meshes", true, false, "a geometry combo keeps invisible only with import"},
    {"Devices search spacemouse", false, true, "always on in a restricted edition"},
    {"Devices spacemouse two axis", false, true, "always on in a restricted edition"},
    {"Devices spacemouse helicopter", false, true, "always on in a restricted edition"},
};

bool endsWith(const std::string &text, const std::string &end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

const Rewritten *rewritten(const std::string &key, bool restricted)
{
    for (const Rewritten &rule : kRewritten)
        if ((rule.suffix ? endsWith(key, rule.key) : key == rule.key) && (restricted || !rule.restrictedOnly))
            return &rule;
    return nullptr;
}

// What categories push on every apply, changed or not: devices, file I/O,
// the navigator but its mode, the marker but its three shared keys, OSB/VPB,
// Kova, WRL, JT and every CAD page; and the render options' bracket around
// its apply.
const std::set<QString> kPushedOnEveryApply{
    // Devices (the driver starts or stops as the stored flag says)
    "lmOSGWidget::setSpacemouseTwoAxis", "lmOSGWidget::setSpacemouseHelicopter",
    "lmOSGWidget::setSpacemouseUseFixedHeight", "lmOSGWidget::setSpacemouseFixedHeight",
    "lmOSGWidget::setSpacemouseViewMode", "lmOSGWidget::setSpacemousePivotMode", "lmController::setJoystickNavigation",
    // File I/O
    "lmTexSearch::set", "lmFileIO::enableVerifyGeometry", "lmFileIO::enableOptimizeGeometry",
    "lmFileIO::enableOptimizeTransparencies", "lmFileIO::setShowFileIOProgress", "lmController::setShowImportOptions",
    "lmFileIO::setImportCreateReferences", "lmFileIO::setImportMergeMaterials",
    "lmController::setImportOptionsCenterInOrigin", "lmController::setImportOptionsPutOnGround",
    "lmFileIO::setMaxParallelImportTasks", "lmFileIO::setConverterOutputFormat",
    // Navigator
    "lmOSGWidget::setNavAutoCenter", "lmOSGWidget::setInteractionMode", "lmOSGWidget::setNavInvertDollyAxis",
    "lmOSGWidget::setNavInvertWheelDolly", "lmOSGWidget::setNavUsePivotBasedPanning", "lmOSGWidget::setNavPanningSpeed",
    "lmOSGWidget::setNavSpeedMode", "lmOSGWidget::setNavDollySpeed", "lmOSGWidget::setNavDollyAxis",
    "lmOSGWidget::setNavDollyToPivot", "lmOSGWidget::setAnimateNavCam", "lmOSGWidget::setAnimateNavCamDuration",
    "lmOSGWidget::setNavOrbitMode", "lmOSGWidget::setNavOrbitDetectionArea", "lmOSGWidget::setNavOrbitDetectionTime",
    // Marker
    "lmScenegraph::setMarkerSize", "lmScenegraph::setLODSelection", "lmScenegraph::setAutoScroll",
    "osg::Selection::setForceTransparentObjectSelection", "lmScenegraph::setPreselectionEnabled",
    "lmScenegraph::setPreselectionColor",
    // OSB/VPB
    "OpenSGFileIO::setCompressionType", "OpenSGFileIO::setNewFormat", "lmFileIO::setReaderCRCTest",
    "lmFileIO::setWriterCRCTest", "lmFileIO::enableIncrementalSave", "lmFileIO::setIncrementalSaveLimit",
    "lmFileIO::setExecuteEmbeddedScript", "lmFileIO::setShowPreviewHint",
    // Option strings (OSB, Kova, WRL, KBX) and import records (CAD pages, JT, Rhino, OSB)
    "osg::SceneFileHandler::setOptions", "lmImportOptions::write", "lmFileIO::setUseLegacyJtLoader",
    "lmFileIO::setUseLegacyRhinoLoader",
    // Render options: rendering off and back on, the logo, one redraw
    "lmOSGWidget::enableRender", "lmOSGWidget::showLogo", "lmOSGWidget::updateAllMGLW"};
const std::set<QString> kDriverSwitch{"lmSpacemouse::init", "lmSpacemouse::terminate"};

QString operationOf(const QString &line)
{
    return line.left(line.indexOf(QLatin1Char('(')));
}

QString describe(const boost::any &value)
{
    if (value.empty())
        return QStringLiteral("<missing>");
    return lmStoreDocument::typeName(value) + QLatin1Char(' ')
        + QString::fromStdString(lmStoreDocument::valueJson(value));
}

} // namespace

class tst_UntouchedOk : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QLibrary m_library;
    std::unique_ptr<lmPreferencesSession> m_session;

    QString storePath() const { return m_dir.filePath(QStringLiteral("prefs.json")); }

    bool loadModule() { return lmRunPluginEntry(m_library, QStringLiteral(LM_PLUGIN_PATH)); }

    // Every key the categories give a default, with that default.
    lmMessage defaults()
    {
        lmDialogAnswerer dialogs;
        lmMessage scratch;
        lmMessage *store = lmPreferencesHost::swapStore(&scratch);
        lmPreferencesHost::setDefaultAll(true);
        lmPreferencesHost::swapStore(store);
        return scratch;
    }

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void cleanup()
    {
        m_session.reset();
        if (m_library.isLoaded())
            QVERIFY(m_library.unload());
    }

    void savesWhatItLoadedAndPushesOnlyWhatEveryApplyPushes_data()
    {
        QTest::addColumn<int>("edition");
        for (lmHostSettings::Edition edition : {lmHostSettings::Professional, lmHostSettings::Restricted})
            QTest::newRow(qPrintable(lmHostSettings::editionName(edition))) << int(edition);
    }

    void savesWhatItLoadedAndPushesOnlyWhatEveryApplyPushes()
    {
        QFETCH(int, edition);
        const bool restricted = edition == lmHostSettings::Restricted;

        // The keys and defaults of this edition, from the module itself.
        lmResetHost();
        lmHostSettings::setEdition(lmHostSettings::Edition(edition));
        QVERIFY2(loadModule(), qPrintable(m_library.errorString()));
        lmMessage loaded;
        {
            // Values copied from the module's store run its code when they
            // go: gone before the module is unloaded.
            const lmMessage defaultValues = defaults();
            for (const auto &entry : defaultValues.values()) {
                const auto held = valuesControlsCanHold().find(entry.first);
                const boost::any value =
                    held != valuesControlsCanHold().end() ? held->second : lmAwkwardNonDefault(entry.second);
                QVERIFY2(!value.empty() && value.type() == entry.second.type()
                             && !lmStoreDocument::sameValue(value, entry.second),
                         entry.first.c_str());
                loaded.set(entry.first, value, true);
            }
        }
        loaded.set("texture search paths", valuesControlsCanHold().at("texture search paths"), true);
        QVERIFY(m_library.unload());
        lmResetHost();
        lmHostSettings::setEdition(lmHostSettings::Edition(edition));
        QFile::remove(storePath());
        QFile::remove(storePath() + ".bak");
        QVERIFY(lmStoreFile(storePath()).save(loaded));

        // Started as lmprefs-host starts, then OK.
        m_session = std::make_unique<lmPreferencesSession>(storePath());
        m_session->loadStore();
        QVERIFY2(loadModule(), qPrintable(m_library.errorString()));
        lmDialogAnswerer dialogs;
        m_session->startUp();
        lmCallLog::clear();
        QVERIFY2(m_session->accept(), qPrintable(m_session->errorString()));
        QCOMPARE(dialogs.count(), 0);

        lmMessage saved;
        QString error;
        QVERIFY2(lmStoreFile::readFile(storePath(), saved, &error), qPrintable(error));
        std::set<std::string> keys;
        for (const lmMessage *store : {&loaded, &saved})
            for (const auto &entry : store->values())
                keys.insert(entry.first);
        for (const std::string &key : keys) {
            const boost::any &before = loaded.get(key);
            const boost::any &after = saved.get(key);
            if (lmStoreDocument::sameValue(before, after) || (rewritten(key, restricted) && !after.empty()))
                continue;
            QFAIL(qPrintable(QStringLiteral("\"%1\" loaded as %2, saved as %3")
                                 .arg(QString::fromStdString(key), describe(before), describe(after))));
        }

        std::set<QString> made;
        QStringList unexpected;
        for (const QString &line : lmCallLog::lines()) {
            const QString operation = operationOf(line);
            if (!kPushedOnEveryApply.count(operation) && !kDriverSwitch.count(operation))
                unexpected << line;
            made.insert(operation);
        }
        QVERIFY2(unexpected.isEmpty(), qPrintable(QStringLiteral("an untouched OK made:\n") + unexpected.join('\n')));
        for (const QString &operation : kPushedOnEveryApply)
            QVERIFY2(made.count(operation), qPrintable(operation + QStringLiteral(" was not made")));
    }
};

QTEST_MAIN(tst_UntouchedOk)
#include "tst_untouchedok.moc"

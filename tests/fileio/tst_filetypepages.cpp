// What the CAD file-type base hands the host field by field where no page of
// the dialog shows it: the scene formats' smart references and the wiring of
// the host's tessellation widget. Everything else the CAD pages do is driven
// from tests/data/scenarios/cad*.txt.
#include "fileio/lmIgesFilePreferencesGUI.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QtTest>

namespace {

// The logged record with every field at its default except the given ones.
QString recordLine(const QString &typeName, const QMap<QString, QString> &changes = {})
{
    static const QStringList kFields = {
        "mergeGeometries=true", "keepSurfaceData=true", "createGroupsForLayers=true", "removeEmptyGroups=true",
        "unshareNodes=false", "chordDeviation=0.075", "normalTolerance=10", "maxChordLength=200", "stitching=true",
        "stitchingTolerance=0.1", "importSurfaces=true", "importInvisibleSurfaces=false", "unifySurfaceNormals=true",
        "importCurves=false", "importInvisibleCurves=false", "importMeshes=true", "importInvisibleMeshes=false",
        "importAssociativeMeshes=false", "importInvisibleInstances=false", "importTemplateGeometries=false",
        "importLights=false", "importCameras=false", "importVariants=false", "importReferencedFiles=true",
        "importMeshLODs=2", "jtToolkit=0", "importEmptyLayers=false", "importCoordSystems=false",
        "optimizeMaterials=true", "smartReferenceBehavior=2", "importAsSmartReference=false",
        "useLegacyRhinoLoader=false", "importNurbs=true", "jtUsePlugin=false", "jtActiveLayerFilter=true",
        "jtLoadBreps=0"};
    QString line = QStringLiteral("lmImportOptions::write(\"%1\"").arg(typeName);
    int used = 0;
    for (const QString &field : kFields) {
        const QString name = field.section('=', 0, 0);
        used += changes.contains(name);
        line += ", " + (changes.contains(name) ? name + '=' + changes.value(name) : field);
    }
    if (used != changes.size())
        qFatal("recordLine: unknown field among %s", qPrintable(QStringList(changes.keys()).join(' ')));
    return line + ')';
}

// Shown when the page is: nothing up to its tab is hidden, and the tab is
// still in the tab widget.
bool shown(lmFileTypePreferencesGUIW *page, const QWidget *widget)
{
    for (const QWidget *w = widget; w && w != page; w = w->parentWidget()) {
        if (w == page->m_importTab || w == page->m_exportTab)
            return page->m_tabWidget->indexOf(const_cast<QWidget *>(w)) >= 0;
        if (w->isHidden())
            return false;
    }
    return true;
}

} // namespace

class tst_FileTypePages : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    // LUMO has no page class of its own: the base stands for it.
    void smartReferencesOfTheSceneFormatsAreLossy()
    {
        lmFileTypePreferences lumo(lmCADFileTypes::LUMO, "LUMO", "FileIO");
        lumo.setDefault(lmPreferences::getData(), false);
        for (int behavior : {0, 1, 2, 3}) {
            setStored("LUMOOptions import smart reference behavior", behavior);
            setStored("LUMOOptions import create as smart", behavior == 3);
            const QString kept = behavior == 2 ? "2" : "3";
            QCOMPARE(applyLog(lumo), QStringList{recordLine("LUMO", {{"smartReferenceBehavior", kept},
                                                                     {"importAsSmartReference",
                                                                      behavior == 3 ? "true" : "false"}})});
            lumo.updateGUI();
            QCOMPARE(lumo.page()->m_importBehavior->currentIndex(), behavior == 2 ? 0 : 1);
            QCOMPARE(lumo.page()->m_importAsSmart->isChecked(), behavior == 3);
        }
        QVERIFY(shown(lumo.page(), lumo.page()->_project_settings));
        QVERIFY(shown(lumo.page(), lumo.page()->m_importBehavior));
        QVERIFY(!shown(lumo.page(), lumo.page()->m_tesselationSettings));
        for (int index : {0, 1}) {
            lumo.page()->m_importBehavior->setCurrentIndex(index);
            lumo.storeGUI();
            int stored = -1;
            getFromMessage(lmPreferences::getData(), "LUMOOptions import smart reference behavior", stored);
            QCOMPARE(stored, index == 0 ? 2 : 1);
        }
    }

    // The host's widget names none of its fields, so it is driven here.
    void tessellationWidgetIsWiredToTheRecord()
    {
        lmIgesFilePreferencesGUII iges;
        startPage(iges);
        lmTesselationSettings *tessellation = iges.page()->m_tesselationSettings;
        setStored("IgesOptions chord deviation", 0.2);
        setStored("IgesOptions normal tolerance", 20.0);
        setStored("IgesOptions max chord length", 500.0);
        iges.updateGUI();
        QCOMPARE(tessellation->qualityPreset(), lmTesselationSettings::LowQuality);
        QVERIFY(tessellation->isGroupEnabled(lmTesselationSettings::StitchingGroup));
        // A typed value leaves the preset.
        tessellation->chordDeviationField()->setValue(0.0125);
        QCOMPARE(tessellation->qualityPreset(), lmTesselationSettings::CustomQuality);
        tessellation->setStitchingTolerance(0.25);
        tessellation->unshareNodes()->setChecked(true);
        QCOMPARE(acceptLog(iges), QStringList{recordLine("Iges", {{"chordDeviation", "0.0125"},
            {"normalTolerance", "20"}, {"maxChordLength", "500"}, {"stitchingTolerance", "0.25"},
            {"unshareNodes", "true"}})});
    }
};

QTEST_MAIN(tst_FileTypePages)
#include "tst_filetypepages.moc"

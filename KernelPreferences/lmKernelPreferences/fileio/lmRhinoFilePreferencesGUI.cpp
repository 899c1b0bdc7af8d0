#include "lmRhinoFilePreferencesGUI.h"

#include "lmFileIO.h"
#include "lmImportOptions.h"
#include "lmKeyBinding.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"

#include <QCoreApplication>

namespace {

// "USEPLUGIN" selects the legacy loader; the persisted name stays.
const char *const kUsePlugin = "RhinoOptions USEPLUGIN";
const char *const kMergeGeometries = "RhinoOptions merge geometries";
const char *const kImportNurbs = "RhinoOptions import nurbs";

const lmKeyTable kKeys{
    lmKey<bool>(kUsePlugin, false),
    lmKey<bool>(kMergeGeometries, true),
    lmKey<bool>(kImportNurbs, true),
};

} // namespace

lmRhinoFilePreferencesGUII::lmRhinoFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::Rhino, QStringLiteral("Rhino"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
    enableLegacyOptions();
    // The common "merge geometries" key of this type is the legacy loader's
    // own; the legacy check box is stored after the common one and wins.
    lmBindKeys(page()->m_tesselationSettings->mergeGeometries(), {});
    connect(page()->m_useLegacyRhinoLoader, &QCheckBox::stateChanged, this,
            &lmRhinoFilePreferencesGUII::stateChangedUseLegacyRhinoLoader);
}

lmRhinoFilePreferencesGUII::~lmRhinoFilePreferencesGUII()
{
    kKeys.removeFrom(getData());
}

void lmRhinoFilePreferencesGUII::setFormatDefault(bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmRhinoFilePreferencesGUII::applyFormat(lmMessage &message)
{
    bool usePlugin = false;
    bool mergeGeometries = true;
    bool importNurbs = true;
    getFromMessage(message, kUsePlugin, usePlugin);
    getFromMessage(message, kMergeGeometries, mergeGeometries);
    getFromMessage(message, kImportNurbs, importNurbs);

    lmFileIO::setUseLegacyRhinoLoader(usePlugin);

    // A second record for "Rhino", on top of the one the common options just
    // wrote, carries the legacy loader's fields.
    lmImportOptions record(typeName(), true, true);
    record.m_useLegacyRhinoLoader = lmFileIO::getUseLegacyRhinoLoader();
    record.m_mergeGeometries = mergeGeometries;
    record.m_importNurbs = importNurbs;
    record.write();
}

void lmRhinoFilePreferencesGUII::updateFormatGUI()
{
    const lmMessage &store = getData();
    bool usePlugin = false;
    bool mergeGeometries = true;
    bool importNurbs = true;
    getFromMessage(store, kUsePlugin, usePlugin);
    getFromMessage(store, kMergeGeometries, mergeGeometries);
    getFromMessage(store, kImportNurbs, importNurbs);
    page()->m_useLegacyRhinoLoader->setChecked(usePlugin);
    page()->m_rhinoMergeGeometries->setChecked(mergeGeometries);
    page()->m_rhinoImportNurbs->setChecked(importNurbs);
    enableLegacyOptions();
}

void lmRhinoFilePreferencesGUII::storeFormatGUI()
{
    lmMessage &store = getData();
    store.set(kUsePlugin, boost::any(page()->m_useLegacyRhinoLoader->isChecked()), true);
    // The merge key is also the common switch of the advanced page, which the
    // base has just stored; the legacy box is written last and decides, also
    // while it is disabled.
    store.set(kMergeGeometries, boost::any(page()->m_rhinoMergeGeometries->isChecked()), true);
    store.set(kImportNurbs, boost::any(page()->m_rhinoImportNurbs->isChecked()), true);
}

void lmRhinoFilePreferencesGUII::stateChangedUseLegacyRhinoLoader(int)
{
    enableLegacyOptions();
}

// The legacy loader has its own merge and NURBS options and ignores the
// common advanced ones.
void lmRhinoFilePreferencesGUII::enableLegacyOptions()
{
    const bool legacy = page()->m_useLegacyRhinoLoader->isChecked();
    page()->m_rhinoMergeGeometries->setEnabled(legacy);
    page()->m_rhinoImportNurbs->setEnabled(legacy);
    page()->_advanced_settings->setEnabled(!legacy);
    page()->_file_specific_options->hide();
}

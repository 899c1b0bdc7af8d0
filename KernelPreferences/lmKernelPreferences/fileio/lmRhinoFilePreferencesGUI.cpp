#include "lmRhinoFilePreferencesGUI.h"

#include "lmFileIO.h"
#include "lmImportOptions.h"
#include "lmKeyBinding.h"
#include "lmKeyTable.h"

#include <QCoreApplication>

namespace {

// "USEPLUGIN" selects the legacy loader; the persisted name stays.
constexpr lmTypedKey<bool> kUsePlugin{"RhinoOptions USEPLUGIN", false};
// Also the common "merge geometries" key of this type.
constexpr lmTypedKey<bool> kMergeGeometries{"RhinoOptions merge geometries", true};
constexpr lmTypedKey<bool> kImportNurbs{"RhinoOptions import nurbs", true};

const lmKeyTable kKeys{kUsePlugin, kMergeGeometries, kImportNurbs};

// A key that does not read gives its default.
bool readOrDefault(const lmMessage &store, const lmTypedKey<bool> &key)
{
    bool value = key.defaultValue;
    key.read(store, value);
    return value;
}

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
    lmBindKeys(page()->m_useLegacyRhinoLoader, {kUsePlugin.name});
    lmBindKeys(page()->m_rhinoMergeGeometries, {kMergeGeometries.name});
    lmBindKeys(page()->m_rhinoImportNurbs, {kImportNurbs.name});
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
    const bool usePlugin = readOrDefault(message, kUsePlugin);
    const bool mergeGeometries = readOrDefault(message, kMergeGeometries);
    const bool importNurbs = readOrDefault(message, kImportNurbs);

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
    page()->m_useLegacyRhinoLoader->setChecked(readOrDefault(store, kUsePlugin));
    page()->m_rhinoMergeGeometries->setChecked(readOrDefault(store, kMergeGeometries));
    page()->m_rhinoImportNurbs->setChecked(readOrDefault(store, kImportNurbs));
    enableLegacyOptions();
}

void lmRhinoFilePreferencesGUII::storeFormatGUI()
{
    lmMessage &store = getData();
    kUsePlugin.writePlain(store, page()->m_useLegacyRhinoLoader->isChecked());
    // The merge key is also the common switch of the advanced page, which the
    // base has just stored; the legacy box is written last and decides, also
    // while it is disabled.
    kMergeGeometries.writePlain(store, page()->m_rhinoMergeGeometries->isChecked());
    kImportNurbs.writePlain(store, page()->m_rhinoImportNurbs->isChecked());
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

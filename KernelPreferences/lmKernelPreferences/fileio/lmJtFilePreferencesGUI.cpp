#include "lmJtFilePreferencesGUI.h"

#include "lmController.h"
#include "lmFileIO.h"
#include "lmImportOptions.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"

#include <QCoreApplication>

namespace {

// "USEPLUGIN" set means the legacy loader is used.
const char *const kUsePlugin = "JTOptions USEPLUGIN";
const char *const kActiveLayerFilter = "JTOptions ACTIVELAYERFILTER";
const char *const kLoadBreps = "JTOptions LOADBREPS";

const lmKeyTable kKeys{
    lmKey<bool>(kUsePlugin, false),
    lmKey<bool>(kActiveLayerFilter, true),
    lmKey<int>(kLoadBreps, 0),
};

} // namespace

lmJtFilePreferencesGUII::lmJtFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::JT, QStringLiteral("JT"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
    // Only the professional edition chooses how B-reps are loaded; the
    // stored choice still reaches the loader in every edition.
    if (!lmController::isProfessionalEdition()) {
        page()->_brepsLabel->hide();
        page()->m_legacyJtbreps->hide();
    }
    toggledUseLegacyJtLoader(page()->_useLegacyJtLoader->isChecked());
    connect(page()->_useLegacyJtLoader, &QCheckBox::toggled, this, &lmJtFilePreferencesGUII::toggledUseLegacyJtLoader);
}

lmJtFilePreferencesGUII::~lmJtFilePreferencesGUII()
{
    kKeys.removeFrom(getData());
}

void lmJtFilePreferencesGUII::setFormatDefault(bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmJtFilePreferencesGUII::applyFormat(lmMessage &message)
{
    bool usePlugin = false;
    bool activeLayerFilter = true;
    int loadBreps = 0;
    getFromMessage(message, kUsePlugin, usePlugin);
    getFromMessage(message, kActiveLayerFilter, activeLayerFilter);
    getFromMessage(message, kLoadBreps, loadBreps);

    lmImportOptions record(typeName(), true, true);
    record.m_jtUsePlugin = usePlugin;
    record.m_jtLoadBreps = loadBreps;
    record.m_jtActiveLayerFilter = activeLayerFilter;
    record.write();

    lmFileIO::setUseLegacyJtLoader(usePlugin);
}

void lmJtFilePreferencesGUII::updateFormatGUI()
{
    const lmMessage &store = getData();
    bool usePlugin = false;
    if (getFromMessage(store, kUsePlugin, usePlugin))
        page()->_useLegacyJtLoader->setChecked(usePlugin);
    bool activeLayerFilter = true;
    if (getFromMessage(store, kActiveLayerFilter, activeLayerFilter))
        page()->m_legacyJtActiveLayerfilter->setChecked(activeLayerFilter);
    int loadBreps = 0;
    if (getFromMessage(store, kLoadBreps, loadBreps)) {
        page()->m_legacyJtbreps->setCurrentIndex(loadBreps);
        m_loaded.loaded(kLoadBreps, page()->m_legacyJtbreps, loadBreps);
    }
}

void lmJtFilePreferencesGUII::storeFormatGUI()
{
    lmMessage &store = getData();
    store.set(kUsePlugin, boost::any(page()->_useLegacyJtLoader->isChecked()), true);
    store.set(kActiveLayerFilter, boost::any(page()->m_legacyJtActiveLayerfilter->isChecked()), true);
    store.set(kLoadBreps,
              boost::any(m_loaded.value(kLoadBreps, page()->m_legacyJtbreps, page()->m_legacyJtbreps->currentIndex())),
              true);
}

// The layer filter and the B-rep handling only concern the legacy loader.
void lmJtFilePreferencesGUII::toggledUseLegacyJtLoader(bool on)
{
    page()->m_legacyJtActiveLayerfilter->setEnabled(on);
    page()->_brepsLabel->setEnabled(on);
    page()->m_legacyJtbreps->setEnabled(on);
}

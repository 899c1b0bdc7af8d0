#include "lmJtFilePreferencesGUI.h"

#include "lmController.h"
#include "lmFileIO.h"
#include "lmImportOptions.h"
#include "lmKeyTable.h"

#include <QCoreApplication>

namespace {

// "USEPLUGIN" set means the legacy loader is used.
constexpr lmTypedKey<bool> kUsePlugin{"JTOptions USEPLUGIN", false};
constexpr lmTypedKey<bool> kActiveLayerFilter{"JTOptions ACTIVELAYERFILTER", true};
constexpr lmTypedKey<int> kLoadBreps{"JTOptions LOADBREPS", 0};

const lmKeyTable kKeys{kUsePlugin, kActiveLayerFilter, kLoadBreps};

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
    // Plain writes: the loader switch and its options count as changed on every OK.
    m_bindings.writeFromHere(lmPageBindings::Plain);
    m_bindings.bind(kUsePlugin, page()->_useLegacyJtLoader);
    m_bindings.bind(kActiveLayerFilter, page()->m_legacyJtActiveLayerfilter);
    m_bindings.bind(kLoadBreps, page()->m_legacyJtbreps, lmIfNoItem::Clear);
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
    kUsePlugin.read(message, usePlugin);
    kActiveLayerFilter.read(message, activeLayerFilter);
    kLoadBreps.read(message, loadBreps);

    lmImportOptions record(typeName(), true, true);
    record.m_jtUsePlugin = usePlugin;
    record.m_jtLoadBreps = loadBreps;
    record.m_jtActiveLayerFilter = activeLayerFilter;
    record.write();

    lmFileIO::setUseLegacyJtLoader(usePlugin);
}

void lmJtFilePreferencesGUII::updateFormatGUI()
{
    m_bindings.load(getData());
}

void lmJtFilePreferencesGUII::storeFormatGUI()
{
    m_bindings.store(getData(), [](const char *) {});
}

// The layer filter and the B-rep handling only concern the legacy loader.
void lmJtFilePreferencesGUII::toggledUseLegacyJtLoader(bool on)
{
    page()->m_legacyJtActiveLayerfilter->setEnabled(on);
    page()->_brepsLabel->setEnabled(on);
    page()->m_legacyJtbreps->setEnabled(on);
}

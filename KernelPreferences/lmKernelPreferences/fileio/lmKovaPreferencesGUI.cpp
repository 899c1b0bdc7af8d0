#include "lmKovaPreferencesGUI.h"

#include "OpenSG/OSGSceneFileHandler.h"
#include "lmController.h"
#include "lmFile.h"

#include <QCoreApplication>
#include <QFileDialog>

#include <string>

namespace {

const lmTypedKey<bool> kEnvCombiner{"KovaFileIO multitexture env combiner", false};
// The two edition-dependent defaults are the table's.
const lmTypedKey<bool> kGrayscaleShadowTexture{"KovaFileIO force grayscale shadow texture", true};
const lmTypedKey<QString> kKovaLocation{"KovaFileIO kova location", QString()};
const lmTypedKey<bool> kAutoloadShadowGeometry{"KovaFileIO autoload shadow geometry", true};
const lmTypedKey<bool> kShadowGeometry{"KovaFileIO shadow geometry", false};
const lmTypedKey<bool> kShadowMerge{"KovaFileIO shadow merge", true};
const lmTypedKey<bool> kLocalMaterialLibrary{"KovaFileIO local material library", true};
const lmTypedKey<std::string> kUnits{"KovaFileIO units", std::string("millimeter")};
const lmTypedKey<std::string> kImportUnits{"KovaFileIO import units", std::string("millimeter")};
// Retired: no longer written, still cleared from stores that carry it.
const char *const kKovaBinPath = "KovaFileIO kova bin path";

bool fullEditionOnly()
{
    return !lmController::isEssentialsEdition();
}

const lmKeyTable kKeys{
    kEnvCombiner,
    lmKeyComputed<bool>(kGrayscaleShadowTexture, fullEditionOnly),
    kKovaLocation,
    kAutoloadShadowGeometry,
    kShadowGeometry,
    kShadowMerge,
    lmKeyComputed<bool>(kLocalMaterialLibrary, fullEditionOnly),
    kUnits,
    kImportUnits,
    lmKeyWithoutDefault<QString>(kKovaBinPath),
};

// The unit combos' items, in order, beside the name the reader expects.
struct Unit
{
    const char *text;
    const char *stored;
};
const Unit kUnitItems[] = {
    {QT_TRANSLATE_NOOP("lmKovaPreferencesGUII", "Ignore"), "ignore"},
    {QT_TRANSLATE_NOOP("lmKovaPreferencesGUII", "KovaUnits"), "kovaunits"},
    {QT_TRANSLATE_NOOP("lmKovaPreferencesGUII", "Millimeter"), "millimeter"},
    {QT_TRANSLATE_NOOP("lmKovaPreferencesGUII", "Centimeter"), "centimeter"},
    {QT_TRANSLATE_NOOP("lmKovaPreferencesGUII", "Meter"), "meter"},
    {QT_TRANSLATE_NOOP("lmKovaPreferencesGUII", "Kilometer"), "kilometer"},
    {QT_TRANSLATE_NOOP("lmKovaPreferencesGUII", "Inch"), "inch"},
    {QT_TRANSLATE_NOOP("lmKovaPreferencesGUII", "Foot"), "foot"},
    {QT_TRANSLATE_NOOP("lmKovaPreferencesGUII", "Yard"), "yard"},
    {QT_TRANSLATE_NOOP("lmKovaPreferencesGUII", "Mile"), "mile"},
};
const char *const kIgnoreUnits = "ignore";

void fillUnits(QComboBox *combo)
{
    for (const Unit &unit : kUnitItems)
        combo->addItem(QCoreApplication::translate("lmKovaPreferencesGUII", unit.text), QString::fromLatin1(unit.stored));
}

const char *boolText(bool value)
{
    return value ? "true" : "false";
}

} // namespace

lmKovaPreferencesGUII::lmKovaPreferencesGUII()
    : QObject(nullptr),
      lmPreferencesPage(this, QCoreApplication::translate("lmPreferences", "FileIO"), QStringLiteral("Kova"), kKeys)
{
    fillUnits(page()->_import_units);
    fillUnits(page()->_export_units);

    // Plain writes: apply builds the reader's options from every key anyway.
    bindings.writeFromHere(lmPageBindings::Plain);
    bindings.bind(kEnvCombiner, page()->_env_combiner);
    bindings.bind(kGrayscaleShadowTexture, page()->_grayscale_texture);
    bindings.bind(kKovaLocation, page()->_kova_location);
    bindings.bind(kAutoloadShadowGeometry, page()->_autoload_shadow_geometry);
    bindings.bind(kShadowGeometry, page()->_shadow_geometry);
    bindings.bind(kShadowMerge, page()->_shadow_merge);
    bindings.bind(kLocalMaterialLibrary, page()->_use_local_material_library);
    // A name the combo does not offer leaves the choice as it is.
    bindings.bindData(kUnits, page()->_export_units, lmIfNoItem::Keep);
    bindings.bindData(kImportUnits, page()->_import_units, lmIfNoItem::Keep);

    addPreferencesGUI(page());

    connect(page()->_set_kova_location, &QAbstractButton::clicked, this,
            &lmKovaPreferencesGUII::clickedSetKovaLocation);
}

void lmKovaPreferencesGUII::apply()
{
    const lmMessage &data = getData();

    bool grayscaleShadowTexture = false;
    kGrayscaleShadowTexture.read(data, grayscaleShadowTexture);
    QString location;
    kKovaLocation.read(data, location);
    bool localMaterialLibrary = false;
    kLocalMaterialLibrary.read(data, localMaterialLibrary);
    std::string units = kIgnoreUnits;
    kUnits.read(data, units);
    std::string importUnits = kIgnoreUnits;
    kImportUnits.read(data, importUnits);

    // The reader's env-combiner and shadow switches are fixed; their keys are
    // kept for the page only.
    std::string options = "multitextureEnvCombiner=false";
    options += std::string(",forceGrayscaleShadowTexture=") + boolText(grayscaleShadowTexture);
    if (!location.isEmpty())
        options += ",kovaLocation=\"" + location.toUtf8().toStdString() + "\"";
    options += ",autoLoadShadowGeometry=true,shadowGeometry=false,shadowMerge=true";
    options += std::string(",useLocalMaterialLibrary=") + boolText(localMaterialLibrary);
    options += ",units=" + units;
    options += ",importunits=" + importUnits;

    osg::SceneFileHandler::the().setOptions("kb", options.c_str());
}

void lmKovaPreferencesGUII::updateGUI()
{
    loadBound();
}

void lmKovaPreferencesGUII::storeGUI()
{
    storeBound();
}

void lmKovaPreferencesGUII::clickedSetKovaLocation()
{
    const QString chosen =
        QFileDialog::getExistingDirectory(page(), tr("Set Kova Location"), page()->_kova_location->text());
    if (chosen.isEmpty())
        return;
    page()->_kova_location->setText(
        QString::fromStdString(lmFile::convertSeparators(chosen.toUtf8().toStdString())));
}

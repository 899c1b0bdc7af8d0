#include "lmKovaPreferencesGUI.h"

#include "OpenSG/OSGSceneFileHandler.h"
#include "lmController.h"
#include "lmFile.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "lmPageHelpers.h"

#include <QCoreApplication>
#include <QFileDialog>

#include <string>

namespace {

const char *const kEnvCombiner = "KovaFileIO multitexture env combiner";
const char *const kGrayscaleShadowTexture = "KovaFileIO force grayscale shadow texture";
const char *const kKovaLocation = "KovaFileIO kova location";
const char *const kAutoloadShadowGeometry = "KovaFileIO autoload shadow geometry";
const char *const kShadowGeometry = "KovaFileIO shadow geometry";
const char *const kShadowMerge = "KovaFileIO shadow merge";
const char *const kLocalMaterialLibrary = "KovaFileIO local material library";
const char *const kUnits = "KovaFileIO units";
const char *const kImportUnits = "KovaFileIO import units";
// Retired: no longer written, still cleared from stores that carry it.
const char *const kKovaBinPath = "KovaFileIO kova bin path";

bool fullEditionOnly()
{
    return !lmController::isEssentialsEdition();
}

const lmKeyTable kKeys{
    lmKey<bool>(kEnvCombiner, false),
    lmKeyComputed<bool>(kGrayscaleShadowTexture, fullEditionOnly),
    lmKey<QString>(kKovaLocation, QString()),
    lmKey<bool>(kAutoloadShadowGeometry, true),
    lmKey<bool>(kShadowGeometry, false),
    lmKey<bool>(kShadowMerge, true),
    lmKeyComputed<bool>(kLocalMaterialLibrary, fullEditionOnly),
    lmKey<std::string>(kUnits, std::string("millimeter")),
    lmKey<std::string>(kImportUnits, std::string("millimeter")),
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

// A name the combo does not offer leaves the choice as it is.
void selectUnit(QComboBox *combo, const char *key, lmLoadedValues &loaded)
{
    std::string stored;
    if (!getFromMessage(lmPreferences::getData(), key, stored))
        return;
    const int index = combo->findData(QString::fromStdString(stored));
    if (index >= 0)
        combo->setCurrentIndex(index);
    loaded.loaded(key, combo, stored);
}

std::string storedUnit(const QComboBox *combo)
{
    return combo->currentData().toString().toStdString();
}



const char *boolText(bool value)
{
    return value ? "true" : "false";
}

} // namespace

lmKovaPreferencesGUII::lmKovaPreferencesGUII()
    : QObject(nullptr),
      lmPreferences(QCoreApplication::translate("lmPreferences", "FileIO"), QStringLiteral("Kova")),
      m_page(new lmKovaPreferencesGUIW)
{
    fillUnits(m_page->_import_units);
    fillUnits(m_page->_export_units);

    addPreferencesGUI(m_page);

    connect(m_page->_set_kova_location, &QAbstractButton::clicked, this,
            &lmKovaPreferencesGUII::clickedSetKovaLocation);
}

lmKovaPreferencesGUII::~lmKovaPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmKovaPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmKovaPreferencesGUII::apply()
{
    const lmMessage &data = getData();

    bool grayscaleShadowTexture = false;
    getFromMessage(data, kGrayscaleShadowTexture, grayscaleShadowTexture);
    QString location;
    getFromMessage(data, kKovaLocation, location);
    bool localMaterialLibrary = false;
    getFromMessage(data, kLocalMaterialLibrary, localMaterialLibrary);
    std::string units = kIgnoreUnits;
    getFromMessage(data, kUnits, units);
    std::string importUnits = kIgnoreUnits;
    getFromMessage(data, kImportUnits, importUnits);

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
    lmKovaPreferencesGUIW *page = m_page;

    lmCheckFromStore(page->_env_combiner, kEnvCombiner);
    lmCheckFromStore(page->_grayscale_texture, kGrayscaleShadowTexture);
    QString location;
    if (getFromMessage(getData(), kKovaLocation, location))
        page->_kova_location->setText(location);
    lmCheckFromStore(page->_autoload_shadow_geometry, kAutoloadShadowGeometry);
    lmCheckFromStore(page->_shadow_geometry, kShadowGeometry);
    lmCheckFromStore(page->_shadow_merge, kShadowMerge);
    lmCheckFromStore(page->_use_local_material_library, kLocalMaterialLibrary);
    m_loaded.clear();
    selectUnit(page->_export_units, kUnits, m_loaded);
    selectUnit(page->_import_units, kImportUnits, m_loaded);
}

void lmKovaPreferencesGUII::storeGUI()
{
    const lmKovaPreferencesGUIW *page = m_page;

    lmStorePlain(kEnvCombiner, page->_env_combiner->isChecked());
    lmStorePlain(kGrayscaleShadowTexture, page->_grayscale_texture->isChecked());
    lmStorePlain(kKovaLocation, page->_kova_location->text());
    lmStorePlain(kAutoloadShadowGeometry, page->_autoload_shadow_geometry->isChecked());
    lmStorePlain(kShadowGeometry, page->_shadow_geometry->isChecked());
    lmStorePlain(kShadowMerge, page->_shadow_merge->isChecked());
    lmStorePlain(kLocalMaterialLibrary, page->_use_local_material_library->isChecked());
    lmStorePlain(kUnits, m_loaded.value(kUnits, page->_export_units, storedUnit(page->_export_units)));
    lmStorePlain(kImportUnits, m_loaded.value(kImportUnits, page->_import_units, storedUnit(page->_import_units)));
}

void lmKovaPreferencesGUII::clickedSetKovaLocation()
{
    const QString chosen =
        QFileDialog::getExistingDirectory(m_page, tr("Set Kova Location"), m_page->_kova_location->text());
    if (chosen.isEmpty())
        return;
    m_page->_kova_location->setText(
        QString::fromStdString(lmFile::convertSeparators(chosen.toUtf8().toStdString())));
}

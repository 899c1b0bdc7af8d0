#include "lmWrlPreferencesGUI.h"

#include "OpenSG/OSGSceneFileHandler.h"

#include <QCoreApplication>

#include <string>

namespace {

const lmTypedKey<bool> kInlineTextures{"WrlFileIO inline textures", false};
const lmTypedKey<int> kReaderOptimization{"WrlFileIO reader optimization", 0};

const lmKeyTable kKeys{kInlineTextures, kReaderOptimization};

// Reader optimisation combo: "Auto", "Catia", "Pro Engineer".
const int kOptimizationCatia = 1;
const int kOptimizationProEngineer = 2;

} // namespace

lmWrlPreferencesGUII::lmWrlPreferencesGUII()
    : QObject(nullptr),
      lmPreferencesPage(this, QCoreApplication::translate("lmPreferences", "FileIO"), QStringLiteral("WRL"), kKeys)
{
    bindings.bind(kInlineTextures, page()->_inline_textures);
    // An index the combo does not offer leaves the choice as it is.
    bindings.bind(kReaderOptimization, page()->_optimization, lmIfNoItem::Keep);
    addPreferencesGUI(page());
}

void lmWrlPreferencesGUII::apply()
{
    const lmMessage &data = getData();

    bool inlineTextures = false;
    kInlineTextures.read(data, inlineTextures);
    std::string options = inlineTextures ? "inlineTextures=true" : "inlineTextures=false";

    int optimization = 0;
    kReaderOptimization.read(data, optimization);
    if (optimization == kOptimizationCatia)
        options += ",optimizationCatia=true";
    else if (optimization == kOptimizationProEngineer)
        options += ",optimizationProEngineer=true";

    // Both suffixes name the same format.
    osg::SceneFileHandler::the().setOptions("wrl", options.c_str());
    osg::SceneFileHandler::the().setOptions("vrml", options.c_str());
}

void lmWrlPreferencesGUII::updateGUI()
{
    loadBound();
}

void lmWrlPreferencesGUII::storeGUI()
{
    storeBound();
}

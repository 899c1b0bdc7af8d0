#include "lmWrlPreferencesGUI.h"

#include "OpenSG/OSGSceneFileHandler.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"

#include <QCoreApplication>

#include <string>

namespace {

const char *const kInlineTextures = "WrlFileIO inline textures";
const char *const kReaderOptimization = "WrlFileIO reader optimization";

const lmKeyTable kKeys{
    lmKey<bool>(kInlineTextures, false),
    lmKey<int>(kReaderOptimization, 0),
};

// Reader optimisation combo: "Auto", "Catia", "Pro Engineer".
const int kOptimizationCatia = 1;
const int kOptimizationProEngineer = 2;

} // namespace

lmWrlPreferencesGUII::lmWrlPreferencesGUII()
    : QObject(nullptr),
      lmPreferences(QCoreApplication::translate("lmPreferences", "FileIO"), QStringLiteral("WRL")),
      m_page(new lmWrlPreferencesGUIW)
{
    addPreferencesGUI(m_page);
}

lmWrlPreferencesGUII::~lmWrlPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmWrlPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmWrlPreferencesGUII::apply()
{
    const lmMessage &data = getData();

    bool inlineTextures = false;
    getFromMessage(data, kInlineTextures, inlineTextures);
    std::string options = inlineTextures ? "inlineTextures=true" : "inlineTextures=false";

    int optimization = 0;
    getFromMessage(data, kReaderOptimization, optimization);
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
    const lmMessage &data = getData();

    bool inlineTextures = false;
    if (getFromMessage(data, kInlineTextures, inlineTextures))
        m_page->_inline_textures->setChecked(inlineTextures);
    // An index the combo does not offer leaves the choice as it is.
    m_loaded.clear();
    int optimization = 0;
    if (getFromMessage(data, kReaderOptimization, optimization)) {
        if (optimization >= 0 && optimization < m_page->_optimization->count())
            m_page->_optimization->setCurrentIndex(optimization);
        m_loaded.loaded(kReaderOptimization, m_page->_optimization, optimization);
    }
}

void lmWrlPreferencesGUII::storeGUI()
{
    lmMessage &data = getData();
    if (!setToMessage(data, kInlineTextures, m_page->_inline_textures->isChecked(), true))
        addUnchanged(kInlineTextures);
    const int optimization =
        m_loaded.value(kReaderOptimization, m_page->_optimization, m_page->_optimization->currentIndex());
    if (!setToMessage(data, kReaderOptimization, optimization, true))
        addUnchanged(kReaderOptimization);
}

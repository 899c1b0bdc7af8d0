#include "lmKBXFilePreferencesGUI.h"

#include "lmKeyTable.h"
#include "OpenSG/OSGSceneFileHandler.h"

#include <QCoreApplication>

#include <string>

namespace {

// The version is the combo's item data; any format but 0 is ASCII.
constexpr lmTypedKey<int> kVersion{"KbxOptions version", 0};
constexpr lmTypedKey<int> kFormat{"KbxOptions format", 0};
constexpr lmTypedKey<bool> kExportVertexColors{"KbxOptions export vertex colors", false};

const lmKeyTable kKeys{kVersion, kFormat, kExportVertexColors};

// 0 stands for the current version. 2015 has no name: the writer then gets an
// empty version, which the combo never offers (its 2014/2015 item stores 2014).
const char *versionName(int version)
{
    switch (version) {
    case 2011:
        return "KBX2011";
    case 2012:
        return "KBX2012";
    case 2013:
        return "KBX2013";
    case 2014:
        return "KBX2014";
    case 0:
    case 2016:
        return "KBX2016";
    default:
        return "";
    }
}

} // namespace

lmKBXFilePreferencesGUII::lmKBXFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::KBX, QStringLiteral("KBX"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
    QComboBox *versions = page()->_export_version;
    versions->addItem(tr("KBX 2016/2017"), 0);
    versions->addItem(tr("KBX 2014/2015"), 2014);
    versions->addItem(tr("KBX 2013"), 2013);
    versions->addItem(tr("KBX 2012"), 2012);
    versions->addItem(tr("KBX 2011"), 2011);

    m_bindings.writeFromHere(lmPageBindings::Plain);
    // A version that no item stores leaves the combo without a selection.
    m_bindings.bindData(kVersion, versions, lmIfNoItem::Clear);
    m_bindings.bind(kFormat, page()->_export_format, lmIfNoItem::Clear);
    m_bindings.bind(kExportVertexColors, page()->_export_vertex_colors);
}

lmKBXFilePreferencesGUII::~lmKBXFilePreferencesGUII()
{
    kKeys.removeFrom(getData());
}

void lmKBXFilePreferencesGUII::setFormatDefault(bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmKBXFilePreferencesGUII::applyFormat(lmMessage &message)
{
    int version = 0;
    int format = 0;
    bool vertexColors = false;
    kVersion.read(message, version);
    kFormat.read(message, format);
    kExportVertexColors.read(message, vertexColors);

    std::string options = "kbx_version=";
    options += versionName(version);
    options += ",kbx_format=";
    options += format != 0 ? "ascii" : "binary";
    options += ",kbx_export_vertex_colors=";
    options += vertexColors ? "true" : "false";
    osg::SceneFileHandler::the().setOptions("kbx", options.c_str());
}

void lmKBXFilePreferencesGUII::updateFormatGUI()
{
    m_bindings.load(getData());
}

void lmKBXFilePreferencesGUII::storeFormatGUI()
{
    m_bindings.store(getData(), [](const char *) {});
}

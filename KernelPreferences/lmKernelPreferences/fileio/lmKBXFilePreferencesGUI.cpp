#include "lmKBXFilePreferencesGUI.h"

#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "OpenSG/OSGSceneFileHandler.h"

#include <QCoreApplication>

#include <string>

namespace {

const char *const kVersion = "KbxOptions version";
const char *const kFormat = "KbxOptions format";
const char *const kExportVertexColors = "KbxOptions export vertex colors";

const lmKeyTable kKeys{
    lmKey<int>(kVersion, 0),
    lmKey<int>(kFormat, 0),
    lmKey<bool>(kExportVertexColors, false),
};

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
    getFromMessage(message, kVersion, version);
    getFromMessage(message, kFormat, format);
    getFromMessage(message, kExportVertexColors, vertexColors);

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
    const lmMessage &store = getData();
    int version = 0;
    // A version that no item stores leaves the combo without a selection.
    if (getFromMessage(store, kVersion, version)) {
        page()->_export_version->setCurrentIndex(page()->_export_version->findData(version));
        m_loaded.loaded(kVersion, page()->_export_version, version);
    }
    int format = 0;
    if (getFromMessage(store, kFormat, format)) {
        page()->_export_format->setCurrentIndex(format);
        m_loaded.loaded(kFormat, page()->_export_format, format);
    }
    bool vertexColors = false;
    if (getFromMessage(store, kExportVertexColors, vertexColors))
        page()->_export_vertex_colors->setChecked(vertexColors);
}

void lmKBXFilePreferencesGUII::storeFormatGUI()
{
    lmMessage &store = getData();
    store.set(kVersion,
              boost::any(m_loaded.value(kVersion, page()->_export_version,
                                        page()->_export_version->currentData().toInt())),
              true);
    store.set(kFormat,
              boost::any(m_loaded.value(kFormat, page()->_export_format, page()->_export_format->currentIndex())),
              true);
    store.set(kExportVertexColors, boost::any(page()->_export_vertex_colors->isChecked()), true);
}

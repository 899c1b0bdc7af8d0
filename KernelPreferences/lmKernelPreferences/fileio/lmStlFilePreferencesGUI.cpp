#include "lmStlFilePreferencesGUI.h"

#include "lmMessageHelpers.h"

#include <QCoreApplication>

namespace {

// 0 text ("Ascii"), 1 binary.
const char *const kExport = "STLOptions export";
const char *const kSourceReferenceBehavior = "STLOptions import source reference behavior";

} // namespace

lmStlFilePreferencesGUII::lmStlFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::STL, QStringLiteral("STL"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmStlFilePreferencesGUII::~lmStlFilePreferencesGUII()
{
    lmMessage &store = getData();
    store.remove(kExport);
    store.remove(kSourceReferenceBehavior);
}

void lmStlFilePreferencesGUII::setFormatDefault(bool overwrite)
{
    lmMessage &store = getData();
    store.set(kExport, boost::any(0), overwrite);
    // Pinned: whatever was loaded, STL keeps source references as 1.
    store.set(kSourceReferenceBehavior, boost::any(1), true);
}

void lmStlFilePreferencesGUII::applyFormat(lmMessage &)
{
    storeFormatGUI();
}

void lmStlFilePreferencesGUII::updateFormatGUI()
{
    int format = 0;
    if (getFromMessage(getData(), kExport, format)) {
        page()->m_stlExportFormat->setCurrentIndex(format);
        m_loaded.loaded(kExport, page()->m_stlExportFormat, format);
    }
}

void lmStlFilePreferencesGUII::storeFormatGUI()
{
    lmMessage &store = getData();
    store.set(kExport,
              boost::any(m_loaded.value(kExport, page()->m_stlExportFormat, page()->m_stlExportFormat->currentIndex())),
              true);
    store.set(kSourceReferenceBehavior, boost::any(1), true);
}

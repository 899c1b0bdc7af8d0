#include "lmStlFilePreferencesGUI.h"

#include <QCoreApplication>

namespace {

// 0 text ("Ascii"), 1 binary.
constexpr lmTypedKey<int> kExport{"STLOptions export", 0};
// What STL keeps of source references, pinned whatever was loaded.
constexpr int kSourceReferences = 1;

} // namespace

lmStlFilePreferencesGUII::lmStlFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::STL, QStringLiteral("STL"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
    m_bindings.writeFromHere(lmPageBindings::Plain);
    m_bindings.bind(kExport, page()->m_stlExportFormat, lmIfNoItem::Clear);
}

lmStlFilePreferencesGUII::~lmStlFilePreferencesGUII()
{
    lmMessage &store = getData();
    store.remove(kExport.name);
    store.remove(sourceReferenceKey());
}

void lmStlFilePreferencesGUII::setFormatDefault(bool overwrite)
{
    lmMessage &store = getData();
    kExport.writeDefault(store, overwrite);
    store.set(sourceReferenceKey(), boost::any(kSourceReferences), true);
}

void lmStlFilePreferencesGUII::applyFormat(lmMessage &)
{
    storeFormatGUI();
}

void lmStlFilePreferencesGUII::updateFormatGUI()
{
    m_bindings.load(getData());
}

void lmStlFilePreferencesGUII::storeFormatGUI()
{
    lmMessage &store = getData();
    m_bindings.store(store, [](const char *) {});
    store.set(sourceReferenceKey(), boost::any(kSourceReferences), true);
}

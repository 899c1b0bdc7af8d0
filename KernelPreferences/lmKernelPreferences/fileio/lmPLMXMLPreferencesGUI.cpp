#include "lmPLMXMLPreferencesGUI.h"

#include <QCoreApplication>

lmPLMXMLPreferencesGUII::lmPLMXMLPreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::PLMXML, QStringLiteral("PLM XML"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmPLMXMLPreferencesGUII::~lmPLMXMLPreferencesGUII() = default;

#include "lmProEngineerFilePreferencesGUI.h"

#include <QCoreApplication>

lmProEngineerFilePreferencesGUII::lmProEngineerFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::ProEngineer, QStringLiteral("ProE / Creo"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmProEngineerFilePreferencesGUII::~lmProEngineerFilePreferencesGUII() = default;

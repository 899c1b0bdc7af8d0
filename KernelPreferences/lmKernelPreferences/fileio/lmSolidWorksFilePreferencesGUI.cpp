#include "lmSolidWorksFilePreferencesGUI.h"

#include <QCoreApplication>

lmSolidWorksFilePreferencesGUII::lmSolidWorksFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::SolidWorks, QStringLiteral("SolidWorks"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmSolidWorksFilePreferencesGUII::~lmSolidWorksFilePreferencesGUII() = default;

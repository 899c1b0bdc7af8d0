#include "lmFabricorFilePreferencesGUI.h"

#include <QCoreApplication>

lmFabricorFilePreferencesGUII::lmFabricorFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::Fabricor, QStringLiteral("Fabricor"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmFabricorFilePreferencesGUII::~lmFabricorFilePreferencesGUII() = default;

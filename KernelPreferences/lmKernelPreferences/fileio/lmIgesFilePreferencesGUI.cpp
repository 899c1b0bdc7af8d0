#include "lmIgesFilePreferencesGUI.h"

#include <QCoreApplication>

lmIgesFilePreferencesGUII::lmIgesFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::Iges, QStringLiteral("Iges"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmIgesFilePreferencesGUII::~lmIgesFilePreferencesGUII() = default;

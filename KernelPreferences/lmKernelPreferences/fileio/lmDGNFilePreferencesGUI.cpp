#include "lmDGNFilePreferencesGUI.h"

#include <QCoreApplication>

lmDGNFilePreferencesGUII::lmDGNFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::DGN, QStringLiteral("DGN"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmDGNFilePreferencesGUII::~lmDGNFilePreferencesGUII() = default;

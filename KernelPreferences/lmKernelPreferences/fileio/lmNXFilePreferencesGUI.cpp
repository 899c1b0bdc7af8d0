#include "lmNXFilePreferencesGUI.h"

#include <QCoreApplication>

lmNXFilePreferencesGUII::lmNXFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::NX, QStringLiteral("NX"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmNXFilePreferencesGUII::~lmNXFilePreferencesGUII() = default;

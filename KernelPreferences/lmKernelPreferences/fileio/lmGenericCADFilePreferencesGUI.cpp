#include "lmGenericCADFilePreferencesGUI.h"

#include <QCoreApplication>

lmGenericCADFilePreferencesGUII::lmGenericCADFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::BCAD, QStringLiteral("Base CAD"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmGenericCADFilePreferencesGUII::~lmGenericCADFilePreferencesGUII() = default;

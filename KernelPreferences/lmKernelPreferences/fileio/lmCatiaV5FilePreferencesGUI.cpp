#include "lmCatiaV5FilePreferencesGUI.h"

#include <QCoreApplication>

lmCatiaV5FilePreferencesGUII::lmCatiaV5FilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::CatiaV5, QStringLiteral("Catia V5"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmCatiaV5FilePreferencesGUII::~lmCatiaV5FilePreferencesGUII() = default;

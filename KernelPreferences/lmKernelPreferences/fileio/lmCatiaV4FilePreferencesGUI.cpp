#include "lmCatiaV4FilePreferencesGUI.h"

#include <QCoreApplication>

lmCatiaV4FilePreferencesGUII::lmCatiaV4FilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::CatiaV4, QStringLiteral("Catia V4"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmCatiaV4FilePreferencesGUII::~lmCatiaV4FilePreferencesGUII() = default;

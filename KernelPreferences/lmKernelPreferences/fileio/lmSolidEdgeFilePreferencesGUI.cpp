#include "lmSolidEdgeFilePreferencesGUI.h"

#include <QCoreApplication>

lmSolidEdgeFilePreferencesGUII::lmSolidEdgeFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::SolidEdge, QStringLiteral("SolidEdge"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmSolidEdgeFilePreferencesGUII::~lmSolidEdgeFilePreferencesGUII() = default;

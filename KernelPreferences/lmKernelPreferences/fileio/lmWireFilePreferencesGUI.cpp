#include "lmWireFilePreferencesGUI.h"

#include <QCoreApplication>

lmWireFilePreferencesGUII::lmWireFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::Ondra, QStringLiteral("Ondra"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmWireFilePreferencesGUII::~lmWireFilePreferencesGUII() = default;

#include "lmStepFilePreferencesGUI.h"

#include <QCoreApplication>

lmStepFilePreferencesGUII::lmStepFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::Step, QStringLiteral("Step"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmStepFilePreferencesGUII::~lmStepFilePreferencesGUII() = default;

#include "lmDraftexFilePreferencesGUI.h"

#include <QCoreApplication>

lmDraftexFilePreferencesGUII::lmDraftexFilePreferencesGUII()
    : QObject(nullptr),
      lmFileTypePreferences(lmCADFileTypes::Draftex, QStringLiteral("Draftex"),
                            QCoreApplication::translate("lmPreferences", "FileIO"))
{
}

lmDraftexFilePreferencesGUII::~lmDraftexFilePreferencesGUII() = default;

#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of Draftex drawings: the common CAD options only.
class lmDraftexFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmDraftexFilePreferencesGUII();
    ~lmDraftexFilePreferencesGUII() override;
};

#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of STEP files: the common CAD options only.
class lmStepFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmStepFilePreferencesGUII();
    ~lmStepFilePreferencesGUII() override;
};

#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of DGN drawings: the common CAD options only.
class lmDGNFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmDGNFilePreferencesGUII();
    ~lmDGNFilePreferencesGUII() override;
};
